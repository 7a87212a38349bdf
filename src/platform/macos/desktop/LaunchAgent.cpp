#include "platform/macos/desktop/LaunchAgent.h"

#include <QFile>
#include <QFileInfo>
#include <QLatin1StringView>

#include "files/DataFile.h"

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
    if (enabled)
        static_cast<void>(DataFile(path).replace(launchAgentPropertyList(kLabel, bundlePath),
                                                 DataFile::OldFile::Replace));
    else
        QFile::remove(path);
}

bool LegacyLoginItem::isEnabled() const {
    return QFileInfo::exists(launchAgentPath(home_));
}

std::optional<QString> LegacyLoginItem::setEnabled(bool enabled) {
    setLaunchAtLoginLegacy(enabled, home_, bundlePath_);
    return std::nullopt;
}

}  // namespace kestrelbay
