#pragma once

#include <optional>

#include <QString>
#include <QStringList>

namespace kestrelbay {

/// What the field codes of an Exec line stand for, except files.
struct ExecContext {
    QString localizedName;
    QString icon;
    QString entryPath;
};

/// What becomes of %f %F %u %U in a rewritten Exec line.
enum class FileCodes { Keep, Drop };

/// Rewrites an Exec line so that every word of it is quoted and every field code
/// but those of files is filled in, and adds arguments at its end, which the program
/// gets byte for byte. Deprecated codes go. A "--" that ends the line, after which
/// nothing would be an option any more, stays behind the arguments. No value when the
/// line is broken.
[[nodiscard]] std::optional<QString> rewrittenExec(const QString &exec, const ExecContext &context,
                                                   FileCodes fileCodes,
                                                   const QStringList &arguments = {});

/// As a word of an Exec line that means these bytes and nothing else.
[[nodiscard]] QString quotedForExec(const QString &text);

}  // namespace kestrelbay
