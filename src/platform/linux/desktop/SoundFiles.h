#pragma once

#include <QString>
#include <QStringList>

namespace kestrelbay {

/// The folders that may hold feedback sounds: the program's own, found from where
/// the executable lies, then the freedesktop sound theme in every folder of
/// shared data, the user's first.
[[nodiscard]] QStringList standardSoundDirectories();

/// The endings of sound files, in the order they are tried.
[[nodiscard]] QStringList soundFileSuffixes();

/// The file of a sound, from the first folder that has it; empty when none has.
/// Never a file outside these folders, whatever the name.
[[nodiscard]] QString findSoundFile(const QStringList &directories, const QString &name);

}  // namespace kestrelbay
