#include "settings/LaunchAtLogin.h"

#include <utility>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLatin1StringView>
#include <QSaveFile>

#include "settings/SettingsKeys.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

constexpr QLatin1StringView kLabel{"org.kestrelbay.KestrelBay"};

QByteArray xmlText(const QString &text) {
    QByteArray escaped = text.toUtf8();
    escaped.replace('&', "&amp;");
    escaped.replace('<', "&lt;");
    escaped.replace('>', "&gt;");
    return escaped;
}

}  // namespace

LaunchAtLogin::LaunchAtLogin(LoginItem &loginItem, UserDefaults &defaults, Report report)
    : loginItem_(loginItem), defaults_(defaults), report_(std::move(report)) {}

bool LaunchAtLogin::isLaunchAtLoginEnabled() const {
    return loginItem_.isEnabled();
}

void LaunchAtLogin::setLaunchAtLogin(bool enabled) {
    if (const std::optional<QString> reason = loginItem_.setEnabled(enabled); reason && report_) {
        report_({
            .messageText = u"Launch at Login"_s,
            .informativeText = u"Failed to "_s + (enabled ? "enable"_L1 : "disable"_L1) +
                               u" launch at login: "_s + *reason,
            .buttonTitle = u"OK"_s,
        });
    }
    write(defaults_, settings::kLaunchAtLogin, enabled);
}

QByteArray launchAgentPropertyList(const QString &label, const QString &bundlePath) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
    <key>Label</key>
    <string>)" +
           xmlText(label) + R"(</string>
    <key>ProgramArguments</key>
    <array>
        <string>/usr/bin/open</string>
        <string>-a</string>
        <string>)" +
           xmlText(bundlePath) + R"(</string>
    </array>
    <key>RunAtLoad</key>
    <true/>
    <key>KeepAlive</key>
    <false/>
</dict>
</plist>)";
}

QString launchAgentPath(const QString &home) {
    return home + u"/Library/LaunchAgents/"_s + kLabel + u".plist"_s;
}

void setLaunchAtLoginLegacy(bool enabled, const QString &home, const QString &bundlePath) {
    const QString path = launchAgentPath(home);
    if (!enabled) {
        QFile::remove(path);
        return;
    }
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(launchAgentPropertyList(kLabel, bundlePath));
    file.commit();
}

LegacyLoginItem::LegacyLoginItem(QString home, QString bundlePath)
    : home_(std::move(home)), bundlePath_(std::move(bundlePath)) {}

bool LegacyLoginItem::isEnabled() const {
    return QFileInfo::exists(launchAgentPath(home_));
}

std::optional<QString> LegacyLoginItem::setEnabled(bool enabled) {
    setLaunchAtLoginLegacy(enabled, home_, bundlePath_);
    return std::nullopt;
}

}  // namespace kestrelbay
