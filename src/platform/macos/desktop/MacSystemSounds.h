#pragma once

#include "platform/SystemSounds.h"

namespace kestrelbay {

/// The sounds that the system brings, by NSSound.
class MacSystemSounds final : public SystemSounds {
public:
    [[nodiscard]] QStringList directories() const override;
    [[nodiscard]] QStringList suffixes() const override;
    void play(const QString &name) override;
};

}  // namespace kestrelbay
