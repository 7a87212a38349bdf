#pragma once

#include <QColor>
#include <QPixmap>
#include <QSize>
#include <QString>

namespace kestrelbay {

class SystemSymbols;

/// Where symbols are taken from first; null for nowhere. It has to be taken back before
/// it goes. Main thread.
void setSystemSymbols(const SystemSymbols *symbols);

/// A symbol by its name, such as "bolt.fill", in one colour, fitted into a size in
/// device-independent pixels: the system's, otherwise that of our family. Null when there
/// is no such symbol.
/// Main thread.
[[nodiscard]] QPixmap symbolPixmap(const QString &name, QSize size, const QColor &color,
                                   qreal devicePixelRatio);

}  // namespace kestrelbay
