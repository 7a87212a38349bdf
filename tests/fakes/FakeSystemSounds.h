#pragma once

#include "fakes/Journal.h"
#include "platform/SystemSounds.h"

namespace kestrelbay {

class FakeSystemSounds final : public SystemSounds {
public:
    [[nodiscard]] QStringList directories() const override { return directories_; }
    [[nodiscard]] QStringList suffixes() const override { return suffixes_; }
    void play(const QString &name) override { played_.add(name); }

    // For the test:
    void setDirectories(const QStringList &directories) { directories_ = directories; }
    void setSuffixes(const QStringList &suffixes) { suffixes_ = suffixes; }
    [[nodiscard]] QStringList played() const { return played_.lines(); }

private:
    QStringList directories_;
    QStringList suffixes_{QStringLiteral(".aiff"), QStringLiteral(".aif")};
    Journal played_;
};

}  // namespace kestrelbay
