#pragma once

#include "fakes/Journal.h"
#include "platform/SystemLog.h"

namespace kestrelbay {

class FakeSystemLog final : public SystemLog {
public:
    void write(const QString &line) override { journal_.add(line); }

    // For the test:
    [[nodiscard]] QStringList lines() const { return journal_.lines(); }
    QStringList take() { return journal_.take(); }

private:
    Journal journal_;
};

}  // namespace kestrelbay
