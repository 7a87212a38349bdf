#include "fakes/MacJournal.h"

#include <thread>

#include "fakes/Journal.h"

namespace kestrelbay::macos {

namespace {

const std::thread::id mainThread = std::this_thread::get_id();

Journal &all() {
    static Journal journal;
    return journal;
}

Journal &offMainThread() {
    static Journal journal;
    return journal;
}

}  // namespace

void record(const QString &call) {
    all().add(call);
    if (std::this_thread::get_id() != mainThread)
        offMainThread().add(call);
}

QStringList takeCalls() {
    offMainThread().take();
    return all().take();
}

QStringList callsOffMainThread() {
    return offMainThread().lines();
}

}  // namespace kestrelbay::macos
