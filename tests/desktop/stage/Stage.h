#pragma once

#include <chrono>

#include <QString>

#include "desktop/display/FrontWindow.h"
#include "desktop/session/Desktop.h"
#include "desktop/stage/StageBase.h"
#include "support/KeyPresser.h"

namespace kestrelbay::desktop {

/// The stage on a private X server under a window manager.
class Stage : public StageBase {
public:
    explicit Stage(StageOptions options);
    ~Stage() override;

    [[nodiscard]] Desktop &desktop() override { return desktop_; }
    [[nodiscard]] WindowManagerView &view() override { return desktop_.view(); }
    [[nodiscard]] FrontWindow &front() override { return front_; }

    /// Does KestrelBay, or anyone else, hold L⌘ with this key?
    [[nodiscard]] bool isGrabbed(const Key &key);
    /// How many of the rules on Command alone have it grabbed.
    [[nodiscard]] int grabbedCount();
    /// How many rules there are on Command alone.
    [[nodiscard]] int ruleCount() const;
    [[nodiscard]] bool hasHotkeys() override { return grabbedCount() > 0; }

    void hold(const Chord &chord) override;
    void letGo(const Chord &chord) override;
    /// Key by key; throws NotPrepared when the keyboard lacks one.
    void type(const QString &text);
    [[nodiscard]] std::chrono::steady_clock::duration timeToRepeat() override;

private:
    Desktop desktop_;
    FrontWindow front_;
    testing::KeyPresser keyboard_;
};

}  // namespace kestrelbay::desktop
