#include "support/bus/FakeSettingsPortal.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QMap>

namespace kestrelbay::testing {

/// Red, green and blue from 0 to 1.
struct PortalColor {
    double red = 0;
    double green = 0;
    double blue = 0;
};

QDBusArgument &operator<<(QDBusArgument &argument, const PortalColor &color) {
    argument.beginStructure();
    argument << color.red << color.green << color.blue;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, PortalColor &color) {
    argument.beginStructure();
    argument >> color.red >> color.green >> color.blue;
    argument.endStructure();
    return argument;
}

}  // namespace kestrelbay::testing

Q_DECLARE_METATYPE(kestrelbay::testing::PortalColor)

namespace kestrelbay::testing {

namespace {

using Spaces = QMap<QString, QVariantMap>;

const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString kNamespace = QStringLiteral("org.freedesktop.appearance");
const QString kColorScheme = QStringLiteral("color-scheme");

QVariantMap firstSettings(std::uint32_t colorScheme, FakeSettingsPortal::Manner manner) {
    qDBusRegisterMetaType<PortalColor>();
    qDBusRegisterMetaType<Spaces>();
    switch (manner) {
        case FakeSettingsPortal::Manner::WithoutColorScheme:
            return {};
        case FakeSettingsPortal::Manner::AnswersText:
            return {{kColorScheme, QStringLiteral("dark")}};
        default:
            return {{kColorScheme, static_cast<uint>(colorScheme)}};
    }
}

}  // namespace

FakeSettingsPortal::FakeSettingsPortal(const QString &busAddress, std::uint32_t colorScheme,
                                       Manner manner)
    : manner_(manner),
      settings_(firstSettings(colorScheme, manner)),
      object_(busAddress, QStringLiteral("org.freedesktop.portal.Desktop"),
              QStringLiteral("/org/freedesktop/portal/desktop"),
              [this](const QDBusMessage &call) { return answer(call); }) {}

std::optional<QDBusMessage> FakeSettingsPortal::answer(const QDBusMessage &call) {
    ++callCount_;
    if (manner_ == Manner::KeepsSilent)
        return std::nullopt;
    if (call.interface() != kInterface || call.member() != QLatin1String("ReadAll") ||
        call.arguments() != QVariantList{QStringList{kNamespace}})
        return call.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no such method"));
    const std::lock_guard lock(mutex_);
    return call.createReply(QVariant::fromValue(Spaces{{kNamespace, settings_}}));
}

void FakeSettingsPortal::set(const QString &key, const QVariant &value) {
    {
        const std::lock_guard lock(mutex_);
        settings_.insert(key, value);
    }
    tellOther(kNamespace, key, value);
}

void FakeSettingsPortal::setColorScheme(std::uint32_t colorScheme) {
    set(kColorScheme, static_cast<uint>(colorScheme));
}

void FakeSettingsPortal::setAccentColor(const QColor &color) {
    set(QStringLiteral("accent-color"),
        QVariant::fromValue(PortalColor{color.redF(), color.greenF(), color.blueF()}));
}

void FakeSettingsPortal::takeAccentColorBack() {
    set(QStringLiteral("accent-color"), QVariant::fromValue(PortalColor{-1, -1, -1}));
}

void FakeSettingsPortal::setContrastHigh(bool isHigh) {
    set(QStringLiteral("contrast"), isHigh ? 1U : 0U);
}

void FakeSettingsPortal::tellOther(const QString &space, const QString &key,
                                   const QVariant &value) {
    object_.emitSignal(kInterface, QStringLiteral("SettingChanged"),
                       {space, key, QVariant::fromValue(QDBusVariant(value))});
}

}  // namespace kestrelbay::testing
