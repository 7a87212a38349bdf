#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <functional>
#include <optional>

namespace kestrelbay {

/// Turns SIGTERM, SIGINT and SIGHUP into a call on the main loop, which need not be there yet, so
/// that the end of the session ends the program the way its menu does. A second such signal ends
/// it at once. One object a process.
class TerminationSignals final : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(std::function<void()> terminate);
    ~TerminationSignals() override;

private:
    void listen();

    const std::function<void()> terminate_;
    std::optional<QSocketNotifier> notifier_;
};

}  // namespace kestrelbay
