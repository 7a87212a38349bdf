#pragma once

#include <QByteArray>

namespace kestrelbay::sway {

/// Has the windows of this program float in sway when they appear, by what they are called on X and
/// on Wayland: they are made for their size, and would be cut off in a tile or stretched to it.
/// sway keeps such a rule once, and forgets it when it reads its configuration anew.
[[nodiscard]] QByteArray floatOwnWindowsCommands();

}  // namespace kestrelbay::sway
