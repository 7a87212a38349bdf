#pragma once

#include <memory>
#include <optional>

#include <QObject>
#include <QString>

#include "platform/DesktopExtension.h"
#include "platform/linux/wayland/gnome/ShellExtension.h"

namespace kestrelbay::gnome {

/// Our extension in the user's folder of extensions, out of the program's own resources: which of
/// its formats GNOME takes depends on the version that runs.
class GnomeShellInstallation final : public DesktopExtension {
public:
    static constexpr const char *kIdentifier = "kestrelbay@kestrelbay.org";

    /// In that folder of the user's data.
    GnomeShellInstallation(std::shared_ptr<const ShellExtension> shell, const QString &dataFolder);

    /// Is it enabled, or will it be in a moment? It is not while the screen is locked, and at login
    /// the Shell enables its extensions one after the other.
    [[nodiscard]] bool isExpected() const;

    /// Puts this program's version in the place of another one that the user has installed, once
    /// the event loop runs.
    void renew();

    [[nodiscard]] ExtensionState state() const override;
    void install() override;

    /// The folder of resources with the format for that version, as "43.9"; empty where there is
    /// none.
    [[nodiscard]] static QString resourcesFor(const QString &shellVersion);

private:
    [[nodiscard]] bool isInstalled() const;
    void renewFor(const QString &shellVersion);
    /// None when it does not answer.
    [[nodiscard]] std::optional<bool> doesShellKnowIt() const;
    [[nodiscard]] bool copyFiles(const QString &resources) const;

    const std::shared_ptr<const ShellExtension> shell_;
    const QString folder_;
    bool hasFailed_ = false;
    bool isRenewed_ = false;
    /// What is called later is called on this object's behalf.
    QObject context_;
};

}  // namespace kestrelbay::gnome
