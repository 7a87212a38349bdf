#pragma once

#include <memory>
#include <utility>

#include <QByteArray>
#include <QString>

#include <os/availability.h>

#include "platform/LoginItem.h"

namespace kestrelbay {

/// The system's service for login items, for macOS 13 and later. Users also find the
/// item in the system settings.
class API_AVAILABLE(macos(13.0)) ServiceLoginItem final : public LoginItem {
public:
    /// Exactly while the status is "enabled": an item that waits for the user's
    /// approval does not count.
    [[nodiscard]] bool isEnabled() const override;
    /// The reason is the system's, in its language.
    [[nodiscard]] std::optional<QString> setEnabled(bool enabled) override;
};

/// A property list that has the application bundle opened at login, as UTF-8.
[[nodiscard]] QByteArray launchAgentPropertyList(const QString &label, const QString &bundlePath);

/// Where it has to lie.
[[nodiscard]] QString launchAgentPath(const QString &home);

/// Writes or deletes that file. Whatever fails is left at that.
void setLaunchAtLoginLegacy(bool enabled, const QString &home, const QString &bundlePath);

/// For macOS before 13, which has no service for login items: they are files.
class LegacyLoginItem final : public LoginItem {
public:
    LegacyLoginItem(QString home, QString bundlePath)
        : home_(std::move(home)), bundlePath_(std::move(bundlePath)) {}

    [[nodiscard]] bool isEnabled() const override;
    /// Never gives a reason.
    [[nodiscard]] std::optional<QString> setEnabled(bool enabled) override;

private:
    QString home_;
    QString bundlePath_;
};

/// The one for the running system: a service from macOS 13 on, a launch agent's file
/// in the user's home before.
[[nodiscard]] std::unique_ptr<LoginItem> makeLoginItem();

}  // namespace kestrelbay
