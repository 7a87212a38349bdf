#pragma once

#include <QByteArray>
#include <QColor>
#include <QImageReader>
#include <QList>
#include <QPixmap>
#include <QSize>
#include <QString>

namespace kestrelbay {

class SystemSymbols;

/// Where symbols are taken from first; null for nowhere. It has to be taken back before
/// it goes. Main thread.
void setSystemSymbols(const SystemSymbols *symbols);

/// Why the symbols and icons of our own stay blank where Qt reads only these formats, in
/// English and with what the user can install; empty when they are drawn. Needs no display.
[[nodiscard]] QString drawingProblem(
    const QList<QByteArray> &formats = QImageReader::supportedImageFormats());

/// A symbol by its name, such as "bolt.fill", in one colour, fitted into a size in
/// device-independent pixels: the system's, otherwise that of our family. Null when there
/// is no such symbol or it cannot be drawn; the log is told once of a drawing problem.
/// Main thread.
[[nodiscard]] QPixmap symbolPixmap(const QString &name, QSize size, const QColor &color,
                                   qreal devicePixelRatio);

}  // namespace kestrelbay
