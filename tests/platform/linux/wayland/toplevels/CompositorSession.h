#pragma once

#include <QString>
#include <QStringList>

#include "desktop/session/WaylandSession.h"

namespace kestrelbay::testing {

/// The session of a compositor that tells of windows. Nobody presses keys in it.
class CompositorSession final : public desktop::WaylandSession {
public:
    /// Throws std::runtime_error when it does not come up.
    explicit CompositorSession(const QString &program);

    /// KWin gives its windows to programs only whose file it can see: those of its own user.
    [[nodiscard]] desktop::Command command(const QString &program,
                                           const QStringList &arguments) const override;
    [[nodiscard]] QString socketPath() const { return socket(); }
    /// Of a terminal whose app id this is. KWin gets it by way of Xwayland.
    void openWindow(const QString &name);
    void closeWindow(const QString &name) const;
    void killCompositor() { WaylandSession::killCompositor(); }

    void restartCompositor() override;
    [[nodiscard]] desktop::Keyboard &keyboard() override;
    void screenshot(const QString &path) override;

private:
    void begin();

    const bool isKWin_;
    QString program_;
    QStringList arguments_;
};

}  // namespace kestrelbay::testing
