#include "BusyProcessors.h"

#include <csignal>
#include <cstdint>
#include <stdexcept>
#include <thread>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrelbay::bench {

namespace {

[[noreturn]] void compute() {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (volatile std::uint32_t number = 0;;)
        number = number + 1;
}

}  // namespace

BusyProcessors::BusyProcessors() {
    for (unsigned i = 0; i < std::thread::hardware_concurrency(); ++i) {
        const pid_t process = ::fork();
        if (process == 0)
            compute();
        if (process < 0) {
            end();
            throw std::runtime_error("no process to keep a processor busy");
        }
        processes_.push_back(process);
    }
}

BusyProcessors::~BusyProcessors() {
    end();
}

void BusyProcessors::end() {
    for (const pid_t process : processes_) {
        ::kill(process, SIGKILL);
        ::waitpid(process, nullptr, 0);
    }
}

}  // namespace kestrelbay::bench
