#pragma once

#include <memory>

#include "platform/SystemSounds.h"

namespace kestrelbay {

/// The folders that may hold feedback sounds: the program's own, found from where
/// the executable lies, then the freedesktop sound theme in every folder of
/// shared data, the user's first.
[[nodiscard]] QStringList standardSoundDirectories();

/// The file of a sound, from the first folder that has it; empty when none has.
/// Never a file outside these folders, whatever the name.
[[nodiscard]] QString findSoundFile(const QStringList &directories, const QString &name);

/// Plays sound files with libcanberra. The sound server may be slow, or hang, so
/// it is spoken to on a thread of its own, started with the first sound. While
/// that one waits, of the sounds asked for only the newest is kept. Whatever goes
/// wrong is silence.
class CanberraSounds final : public SystemSounds {
public:
    /// The folders in the order they are searched; they need not exist.
    explicit CanberraSounds(QStringList directories);
    ~CanberraSounds() override;
    CanberraSounds(const CanberraSounds &) = delete;
    CanberraSounds &operator=(const CanberraSounds &) = delete;

    /// Those of the folders that exist now.
    [[nodiscard]] QStringList directories() const override;
    [[nodiscard]] QStringList suffixes() const override;
    void play(const QString &name) override;

private:
    class Player;

    const QStringList directories_;
    std::shared_ptr<Player> player_;
};

}  // namespace kestrelbay
