#pragma once

#include <QObject>

#include "tasks/DispatchQueue.h"

namespace kestrelbay {

/// Puts work off to the event loop of the thread that made it, which is the main
/// one. Work that is still waiting when the queue is destroyed never runs; the
/// queue has to outlive those who hand work in.
class MainQueue final : public DispatchQueue {
public:
    void async(std::function<void()> work) override;

private:
    QObject receiver_;
};

}  // namespace kestrelbay
