#pragma once

#include <QStringList>

namespace kestrelbay {

/// The names under which sounds are offered, from the entries of the folders that
/// hold them: those that end in one of the suffixes (the case of letters counts),
/// without their extension, each once, in code-point order; but "Jump" comes first.
[[nodiscard]] QStringList feedbackSoundNames(const QStringList &entries,
                                             const QStringList &suffixes);

/// The same for all entries of the folders. A folder that can't be listed has none.
[[nodiscard]] QStringList feedbackSounds(const QStringList &directories,
                                         const QStringList &suffixes);

}  // namespace kestrelbay
