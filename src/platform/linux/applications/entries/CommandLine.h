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

/// A program with its arguments, and the folder that it is started in.
struct CommandLine {
    QStringList words;
    /// Empty when unknown.
    QString folder;
};

/// What a command ends up running, past `env`, `nohup` and their like: of the text of
/// `sh -c`, the last command. No words when that cannot be told.
[[nodiscard]] CommandLine innermostCommand(CommandLine command);

/// The path of the text where it is absolute, or is in the folder. Empty when it has none.
[[nodiscard]] QString pathFrom(const QString &folder, const QString &text);

/// The path of a program that is given by its path or is found in PATH. Empty when there is none
/// that the user may run.
[[nodiscard]] QString executable(const QString &program);

/// A program without its folder.
[[nodiscard]] QString baseName(const QString &program);

/// Is this the name of a program that runs other programs, so that its name says
/// nothing of what it runs?
[[nodiscard]] bool isInterpreterOrWrapper(const QString &programName);

/// Is this the name of a shell of the Bourne kind?
[[nodiscard]] bool isShell(const QString &programName);

/// The name without the version that it ends in: python3.11, perl5.36, electron25.
[[nodiscard]] QString withoutVersion(const QString &programName);

}  // namespace kestrelbay
