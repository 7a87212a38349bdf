#pragma once

#include <QString>

#include <ApplicationServices/ApplicationServices.h>

#include "platform/macos/cocoa/CFOwner.h"

namespace kestrelbay::macos {

/// The element of a window; the journal calls it by its name.
[[nodiscard]] CFOwner<AXUIElementRef> makeElement(const QString &name, pid_t pid);

}  // namespace kestrelbay::macos
