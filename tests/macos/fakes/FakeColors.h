#pragma once

#include <QColor>
#include <QString>

namespace kestrelbay::macos {

/// What a colour of that name, such as "systemRedColor", is in each appearance.
void setSystemColor(const QString &name, const QColor &light, const QColor &dark);
/// Is the program's appearance the dark one? Not until told.
void setDarkAppearance(bool isDark);

}  // namespace kestrelbay::macos
