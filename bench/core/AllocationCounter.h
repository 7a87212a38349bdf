#pragma once

#include <cstdint>

namespace kestrelbay {

/// How often this process has asked for memory so far.
[[nodiscard]] std::uint64_t allocationCount();

}  // namespace kestrelbay
