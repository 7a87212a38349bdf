#include "platform/linux/applications/launching/Launches.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "platform/linux/applications/matching/Processes.h"

namespace kestrelbay {

namespace {

QByteArray startupVariable(const QString &startupId) {
    return "DESKTOP_STARTUP_ID=" + startupId.toUtf8();
}

/// A program that forks leaves its session, or at least the id, to what goes on for it.
bool hasSurvivor(std::int64_t session, const QString &startupId) {
    const QByteArray variable = startupVariable(startupId);
    return std::ranges::any_of(allProcesses(), [&](std::int64_t pid) {
        return (sessionOfProcess(pid) == session || wasStartedWith(pid, variable)) &&
               processStartTime(pid) != 0;
    });
}

std::unordered_set<std::int64_t> livingSessions() {
    std::unordered_set<std::int64_t> sessions;
    for (const std::int64_t pid : allProcesses())
        sessions.insert(sessionOfProcess(pid));
    return sessions;
}

}  // namespace

bool Launches::isAlive(const Begun &launch) {
    return launch.startTime != 0 && processStartTime(launch.pid) == launch.startTime;
}

bool Launches::isUnderWay(const Begun &launch) const {
    const Clock::duration age = now_() - launch.when;
    if (launch.hasWindow || age > kLongestStart)
        return false;
    if (launch.pid == 0)
        return age <= kLongestAnswer;
    return isAlive(launch) || hasSurvivor(launch.pid, launch.startupId);
}

bool Launches::begin(const Launch &launch, Repeat repeat) {
    const std::lock_guard lock(mutex_);
    const bool isRepeated =
        repeat == Repeat::UnlessUnderWay && std::ranges::any_of(launches_, [&](const Begun &other) {
            return other.entryPath == launch.entryPath &&
                   (launch.uris.isEmpty() || other.uris == launch.uris) && isUnderWay(other);
        });
    if (isRepeated)
        return false;
    launches_.remove_if(
        [this](const Begun &other) { return other.pid == 0 && !isUnderWay(other); });
    launches_.push_back({launch, now_()});
    return true;
}

void Launches::started(const QString &startupId, std::int64_t pid) {
    const std::uint64_t startTime = processStartTime(pid);
    const std::unordered_set<std::int64_t> sessions = livingSessions();
    const std::lock_guard lock(mutex_);
    launches_.remove_if([&](const Begun &other) {
        if (other.startupId == startupId || other.pid == 0)
            return false;
        return !isAlive(other) && (other.pid == pid || !sessions.contains(other.pid));
    });
    auto launch = std::ranges::find(launches_, startupId, &Begun::startupId);
    if (launch == launches_.end())
        return;
    // Programs that take one file each are started once a file.
    if (launch->pid != 0)
        launch = launches_.insert(launches_.end(), *launch);
    launch->pid = pid;
    launch->startTime = startTime;
}

void Launches::failed(const QString &startupId) {
    const std::lock_guard lock(mutex_);
    launches_.remove_if([&](const Begun &launch) { return launch.startupId == startupId; });
}

bool Launches::isWindowAwaited() const {
    const std::lock_guard lock(mutex_);
    return !std::ranges::all_of(launches_, &Begun::hasWindow);
}

void Launches::windowAppeared(std::int64_t pid, const QStringList &entryPaths) {
    const std::int64_t session = sessionOfProcess(pid);
    const std::lock_guard lock(mutex_);
    for (Begun &launch : launches_) {
        const bool isOfSession = launch.pid != 0 && launch.pid == session;
        launch.hasWindow |= isOfSession || entryPaths.contains(launch.entryPath);
        launch.hasOwnWindow |= isOfSession && launch.pid == pid;
    }
}

QString Launches::entryOf(std::int64_t pid) const {
    const std::lock_guard lock(mutex_);
    const auto launch = std::ranges::find(launches_, pid, &Begun::pid);
    return pid > 0 && launch != launches_.end() && isAlive(*launch) ? launch->entryPath : QString();
}

QString Launches::entryOfSession(std::int64_t pid) const {
    const std::int64_t session = sessionOfProcess(pid);
    const std::lock_guard lock(mutex_);
    const auto launch = std::ranges::find(launches_, session, &Begun::pid);
    if (session < 1 || session == pid || launch == launches_.end() || launch->hasOwnWindow)
        return {};
    return isAlive(*launch) || wasStartedWith(pid, startupVariable(launch->startupId))
               ? launch->entryPath
               : QString();
}

}  // namespace kestrelbay
