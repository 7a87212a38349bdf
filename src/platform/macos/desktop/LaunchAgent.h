#pragma once

#include <utility>

#include <QByteArray>
#include <QString>

#include "platform/LoginItem.h"

namespace kestrelbay {

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

}  // namespace kestrelbay
