#include "Contender.h"

#include <csignal>
#include <stdexcept>

#include "desktop/session/RulesFile.h"
#include "support/Poll.h"

namespace kestrelbay::bench {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using desktop::HomeFolder;
using desktop::Processes;
using testing::waitUntil;

double Contender::start(desktop::Desktop &desktop) {
    process_ = std::make_unique<desktop::PtyProcess>(program_, arguments_, environment_);
    const bool grabbed = waitUntil([&] {
        return desktop.view().client().grabIsTaken(XCB_MOD_MASK_4, key_.xKeycode) ||
               !process_->isRunning();
    });
    const Clock::time_point now = Clock::now();
    expectRunning();
    if (!grabbed)
        throw std::runtime_error(name_.toStdString() + " did not grab its key");
    return std::chrono::duration<double, std::milli>(now - process_->startedAt()).count();
}

void Contender::stop(desktop::Desktop &desktop) {
    const auto gone = [&] {
        // sxhkd does not see one that comes just before it waits for events.
        if (process_->isRunning())
            process_->sendSignal(SIGTERM);
        return !process_->isRunning() &&
               !desktop.view().client().grabIsTaken(XCB_MOD_MASK_4, key_.xKeycode);
    };
    if (!waitUntil(gone))
        throw std::runtime_error(name_.toStdString() + " did not end");
}

void Contender::expectRunning() {
    if (!process_ || !process_->isRunning())
        throw std::runtime_error(name_.toStdString() + " has ended: " +
                                 (process_ ? process_->lines().join(u' ').toStdString() : ""));
}

void Contender::settle(std::chrono::seconds quiet) {
    Clock::time_point lastChange = Clock::now();
    std::optional<qint64> wakeUps;
    (void)waitUntil(
        [&] {
            const Clock::time_point now = Clock::now();
            if (const auto newer = Processes::wakeUps(processId()); newer != wakeUps) {
                wakeUps = newer;
                lastChange = now;
            }
            return now - lastChange > quiet;
        },
        30s);
}

std::vector<Contender> makeContenders(const desktop::Desktop &desktop, const QString &kestrelbay,
                                      xcb_window_t target) {
    const HomeFolder &home = desktop.home();
    HomeFolder::write(
        home.rulesPath(),
        desktop::rulesJson(
            {{.appName = QStringLiteral("Terminal"),
              .appPath = QStringLiteral("/usr/share/applications/debian-xterm.desktop"),
              .key = kF1}}));
    const QString sxhkdConfig = home.config(QStringLiteral("sxhkd/sxhkdrc"));
    HomeFolder::write(sxhkdConfig, "super + F2\n\twmctrl -xa xterm.XTerm\n");
    std::vector<Contender> contenders;
    contenders.emplace_back(QStringLiteral("KestrelBay"), kF1, kestrelbay, QStringList(),
                            desktop.environment());
    contenders.emplace_back(QStringLiteral("sxhkd + wmctrl"), kF2, QStringLiteral("sxhkd"),
                            QStringList{QStringLiteral("-c"), sxhkdConfig}, desktop.environment());
    const auto addLimit = [&](const QString &name, desktop::Key key, const QStringList &more) {
        contenders.emplace_back(
            name, key, QStringLiteral(LIMIT_PROGRAM),
            QStringList{QString::number(target), QString::number(key.xKeycode)} + more,
            desktop.environment());
    };
    addLimit(QStringLiteral("limit that asks"), kF4, {QStringLiteral("asks")});
    addLimit(QStringLiteral("limit"), kF3, {});
    return contenders;
}

}  // namespace kestrelbay::bench
