#pragma once

#include <vector>

#include <sys/types.h>

namespace kestrelbay::bench {

/// As many processes of ordinary niceness as there are processors, each of which computes
/// without end, until this object goes.
class BusyProcessors {
public:
    /// Throws std::runtime_error.
    BusyProcessors();
    ~BusyProcessors();
    BusyProcessors(const BusyProcessors &) = delete;
    BusyProcessors &operator=(const BusyProcessors &) = delete;

private:
    void end();

    std::vector<pid_t> processes_;
};

}  // namespace kestrelbay::bench
