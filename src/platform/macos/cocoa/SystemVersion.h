#pragma once

namespace kestrelbay {

/// Does this version of macOS run, or a later one? Any thread.
[[nodiscard]] bool isMacOSAtLeast(int major);

}  // namespace kestrelbay
