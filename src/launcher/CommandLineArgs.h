#pragma once

#include <QString>
#include <QStringList>

namespace kestrelbay {

/// Splits a text into arguments at white space, somewhat like a shell. A backslash
/// takes the next character as it is, inside both kinds of quotes as well. Quotes
/// are dropped, so an empty quoted text adds nothing; one that is never closed
/// runs to the end.
[[nodiscard]] QStringList splitCommandLine(const QString &text);

}  // namespace kestrelbay
