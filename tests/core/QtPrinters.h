#pragma once

#include <ostream>

#include <QString>
#include <QStringList>

// Found by GoogleTest through argument-dependent look-up.
inline void PrintTo(const QString &text, std::ostream *out) {
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QStringList &texts, std::ostream *out) {
    *out << '[' << texts.join(QStringLiteral(", ")).toStdString() << ']';
}
