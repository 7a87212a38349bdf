#include "session/SwayBenchSession.h"

#include <stdexcept>

#include <poll.h>

namespace kestrelbay::bench {

using namespace std::chrono_literals;

SwayBenchSession::SwayBenchSession(const QString &program)
    : stage_({.program = program, .windowManager = QStringLiteral("sway")}),
      events_(stage_.desktop().environment().value(QStringLiteral("SWAYSOCK"))) {
    if (!events_.subscribe({QStringLiteral("window")}))
        throw std::runtime_error("sway does not tell of windows");
}

void SwayBenchSession::startOthers(Window target) {
    target_ = target;
    const QString name = QString::number(target);
    stage_.desktop().ipc().command(
        QStringLiteral("bindcode Mod4+%1 exec swaymsg \"[con_id=%2] focus\"")
            .arg(QString::number(kOwnKey.xKeycode), name));
    stage_.desktop().start(stage_.desktop().withinReach(QStringLiteral(SWAY_LIMIT_PROGRAM)),
                           {name, QString::number(kLimitsKey.xKeycode)});
}

std::optional<BenchSession::Focus> SwayBenchSession::nextFocus(std::chrono::milliseconds timeout) {
    const Clock::time_point end = Clock::now() + timeout;
    while (events_.isOpen()) {
        while (const auto event = events_.nextEvent()) {
            if (event->json[u"change"].toString() != u"focus")
                continue;
            const Clock::time_point now = Clock::now();
            const auto focused = static_cast<Window>(event->json[u"container"][u"id"].toInteger());
            return Focus{.isTargets = focused == target_, .when = now};
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        if (left <= 0ms)
            return std::nullopt;
        pollfd socket{.fd = events_.descriptor(), .events = POLLIN, .revents = 0};
        ::poll(&socket, 1, static_cast<int>(left.count()));
    }
    throw std::runtime_error("sway is gone");
}

}  // namespace kestrelbay::bench
