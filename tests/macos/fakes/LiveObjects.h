#pragma once

namespace kestrelbay::macos {

/// How many fake system objects there are: what a test or the back end holds. More
/// than before a test means that something was not released.
[[nodiscard]] int liveObjects();

}  // namespace kestrelbay::macos
