#pragma once

#include <functional>

namespace kestrelbay::x11 {

/// Has `lost` called, in place of what others have asked for, where a connection that a library of
/// this process has by Xlib breaks. GTK has one where it gives Qt its looks, and would end the
/// process at once. Xlib does so once `lost` returns. On the thread that uses the connection; to be
/// called after the application object was made, on the main thread. Does nothing without Xlib.
void setXlibLossHandler(std::function<void()> lost);

}  // namespace kestrelbay::x11
