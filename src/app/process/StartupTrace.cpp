#include "app/process/StartupTrace.h"

#include <cstdio>
#include <ctime>

namespace kestrelbay {

namespace {

double milliseconds(std::chrono::steady_clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

}  // namespace

StartupTrace::StartupTrace()
    : beforeMain_(std::chrono::microseconds(std::clock() * 1'000'000 / CLOCKS_PER_SEC)),
      main_(Clock::now()),
      last_(main_) {}

void StartupTrace::step(std::string_view done) {
    if (!isEnabled_)
        return;
    const auto write = [](Clock::duration own, Clock::duration all, std::string_view name) {
        static_cast<void>(std::fprintf(stderr, "%8.2f ms %8.2f ms  %.*s\n", milliseconds(own),
                                       milliseconds(all), static_cast<int>(name.size()),
                                       name.data()));
    };
    if (last_ == main_)
        write(beforeMain_, beforeMain_, "loaded and linked (processor time)");
    const Clock::time_point now = Clock::now();
    write(now - last_, beforeMain_ + (now - main_), done);
    last_ = now;
}

}  // namespace kestrelbay
