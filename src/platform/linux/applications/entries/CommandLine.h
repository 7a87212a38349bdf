#pragma once

#include <optional>

#include <QString>
#include <QStringList>

namespace kestrelbay {

/// The words of an Exec line, unquoted. No value when the line is broken or empty.
[[nodiscard]] std::optional<QStringList> wordsOfExec(const QString &exec);

/// The program that an Exec line starts, as it is written there, past `env` and its
/// assignments. Empty when the line is broken.
[[nodiscard]] QString programOfExec(const QString &exec);

/// Is this the name of a program that runs other programs, so that its name says
/// nothing of what it runs?
[[nodiscard]] bool isInterpreterOrWrapper(const QString &programName);

/// Is this the name of a shell of the Bourne kind, with or without a version?
[[nodiscard]] bool isShell(const QString &programName);

}  // namespace kestrelbay
