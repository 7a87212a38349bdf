#pragma once

#include <QByteArray>

namespace kestrelbay::plasma {

/// The D-Bus interface by which the script calls: Next(result) is answered with the next question,
/// Used(name) tells which window has the focus now, Appeared() of a new one.
inline constexpr const char *kScriptInterface = "org.kestrelbay.KestrelBay.Windows";

/// What KWin is to run, version 5 or 6: it calls the object of this path on the connection of this
/// unique name. Questions are JSON: {"list": true} asks for the windows, the highest one first;
/// {"hide": […]} minimises windows by their names, {"show": […], "focus": …} brings them back and
/// gives one the focus.
[[nodiscard]] QByteArray windowScript(const QByteArray &connection, const QByteArray &path);

}  // namespace kestrelbay::plasma
