#pragma once

#include <QString>
#include <QStringList>

class QPainter;
class QRect;

namespace kestrelbay {

/// The icon that stands for an application without one of its own.
[[nodiscard]] QString genericIconName();

/// What a name in a desktop entry may be called in a theme: themes know names without
/// suffix, but not every entry does.
[[nodiscard]] QStringList spellingsOfIconName(const QString &name);

/// The files of this name where icons lay before there were themes, and where some
/// still lie. They need not exist. None for a name with a '/'.
[[nodiscard]] QStringList unthemedIconFiles(const QString &name);

/// A generic application, for systems without any theme.
void paintPlainApplication(QPainter *painter, const QRect &rect);

}  // namespace kestrelbay
