#pragma once

#include <QColor>
#include <QPixmap>
#include <QSize>
#include <QString>

namespace kestrelbay {

/// A symbol of our family by its name, such as "bolt.fill", in one colour, fitted
/// into a size in device-independent pixels. Null when there is no such symbol.
/// Main thread.
[[nodiscard]] QPixmap symbolPixmap(const QString &name, QSize size, const QColor &color,
                                   qreal devicePixelRatio);

}  // namespace kestrelbay
