#pragma once

#include <optional>
#include <vector>

#include <QByteArray>
#include <QString>
#include <QStringList>

#include "desktop/kwin/FakeInput.h"
#include "desktop/kwin/KWinScripts.h"
#include "desktop/session/UsersShortcut.h"
#include "desktop/session/WaylandSession.h"

namespace kestrelbay::desktop {

/// What the user of the session has besides.
struct KWinSetup {
    /// Programs with a desktop entry by which KWin lets them have its protocol for task bars.
    QStringList taskBars = {};
    /// Global shortcuts that start a program.
    std::vector<UsersShortcut> shortcuts = {};
};

/// KWin with Xwayland and what it brings of Plasma: its global shortcuts.
class KWinSession : public WaylandSession {
public:
    /// What the user has bound to Meta and T writes a line there, below the home folder.
    static constexpr const char *kUsersKeyFile = "users-key";

    /// Throws std::runtime_error when a part of the session does not come up.
    explicit KWinSession(const KWinSetup &setup = {});

    [[nodiscard]] KWinScripts &scripts() { return *scripts_; }
    [[nodiscard]] FakeInput &keyboard() override { return *keyboard_; }

    void restartCompositor() override;
    /// Nothing: KWin takes pictures with a graphics card only.
    void screenshot(const QString & /*path*/) override {}

private:
    void writeEntry(const QString &name, const QByteArray &entry);
    /// The program may use KWin's interfaces of these names.
    void permit(const QString &program, const QByteArray &interfaces);
    void startKWin();

    std::optional<KWinScripts> scripts_;
    std::optional<FakeInput> keyboard_;
};

}  // namespace kestrelbay::desktop
