#pragma once

#include <optional>

#include <QString>
#include <QStringList>

namespace kestrelbay {

/// The words before those of a command that run it in a terminal window which can be told from
/// those of other commands, where the terminal can do that. Takes the first of the known
/// terminals that is in PATH. No value when there is none.
[[nodiscard]] std::optional<QStringList> terminalPrefix(const QString &entryPath);

/// The entry file of the command that was run in the window with this role; empty when the
/// role says nothing of that.
[[nodiscard]] QString entryOfTerminalRole(const QString &windowRole);

/// Is this, by its words and the name of its executable, a terminal whose one process shows
/// the windows of all commands? What it was started for then says nothing of its windows.
[[nodiscard]] bool isSharedTerminal(const QString &executable, const QStringList &words);

}  // namespace kestrelbay
