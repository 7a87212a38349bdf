#pragma once

namespace kestrelbay::macos {

/// From now on NSFileManager's displayNameAtPath: is "Shown " and the file's name, which
/// tells it from what anybody could make of a path.
void replaceDisplayNames();

}  // namespace kestrelbay::macos
