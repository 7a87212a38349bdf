#pragma once

#include <QString>
#include <QStringList>

namespace kestrelbay {

/// The system's short feedback sounds. Main thread.
class SystemSounds {
public:
    virtual ~SystemSounds() = default;

    /// The folder that holds them and the endings, in the order they are tested,
    /// by which a sound file is known (".aiff", ".aif" on macOS).
    [[nodiscard]] virtual QStringList directories() const = 0;
    [[nodiscard]] virtual QStringList suffixes() const = 0;

    /// Plays the sound of that name (a file name without its extension) once and
    /// returns at once. A name that nobody knows plays nothing.
    virtual void play(const QString &name) = 0;
};

}  // namespace kestrelbay
