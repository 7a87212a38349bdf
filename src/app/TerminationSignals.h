#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <functional>
#include <optional>

namespace kestrelbay {

/// Turns SIGTERM, SIGINT and SIGHUP into a call on the main loop, so that the end
/// of the session ends the program the way its menu does. One object a process.
class TerminationSignals final : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(std::function<void()> terminate);
    ~TerminationSignals() override;

private:
    std::optional<QSocketNotifier> notifier_;
};

}  // namespace kestrelbay
