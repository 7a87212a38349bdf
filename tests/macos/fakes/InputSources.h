#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>

#include <QString>

namespace kestrelbay::macos {

/// By key code, without and with Shift.
using TypedTexts = std::map<std::uint16_t, std::pair<QString, QString>>;

/// Has the user type with a layout that types this, and tells who watches. Nothing is typed
/// until told.
void selectLayout(TypedTexts typed);
/// An input source that has no layout.
void selectSourceWithoutLayout();
/// Those who watch.
[[nodiscard]] std::size_t layoutObservers();

}  // namespace kestrelbay::macos
