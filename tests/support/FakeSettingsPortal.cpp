#include "support/FakeSettingsPortal.h"

#include <QDBusVariant>

namespace kestrelbay::testing {

namespace {

const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString kNamespace = QStringLiteral("org.freedesktop.appearance");
const QString kKey = QStringLiteral("color-scheme");

QVariant wrapped(const QVariant &value) {
    return QVariant::fromValue(QDBusVariant(value));
}

}  // namespace

FakeSettingsPortal::FakeSettingsPortal(const QString &busAddress, std::uint32_t colorScheme,
                                       Manner manner)
    : manner_(manner),
      colorScheme_(colorScheme),
      object_(busAddress, QStringLiteral("org.freedesktop.portal.Desktop"),
              QStringLiteral("/org/freedesktop/portal/desktop"),
              [this](const QDBusMessage &call) { return answer(call); }) {}

std::optional<QDBusMessage> FakeSettingsPortal::answer(const QDBusMessage &call) {
    ++callCount_;
    if (manner_ == Manner::KeepsSilent)
        return std::nullopt;
    const bool isOld = call.member() == QLatin1String("Read");
    if (call.interface() != kInterface ||
        (!isOld && (call.member() != QLatin1String("ReadOne") || manner_ == Manner::Old)))
        return call.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no such method"));
    if (manner_ == Manner::WithoutColorScheme || call.arguments() != QVariantList{kNamespace, kKey})
        return call.createErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"),
                                     QStringLiteral("no such setting"));
    const QVariant value = manner_ == Manner::AnswersText
                               ? wrapped(QStringLiteral("dark"))
                               : wrapped(static_cast<uint>(colorScheme_.load()));
    return call.createReply(isOld ? wrapped(value) : value);
}

void FakeSettingsPortal::setColorScheme(std::uint32_t colorScheme) {
    colorScheme_ = colorScheme;
    tellOther(kNamespace, kKey, static_cast<uint>(colorScheme));
}

void FakeSettingsPortal::tellOther(const QString &space, const QString &key,
                                   const QVariant &value) {
    object_.emitSignal(kInterface, QStringLiteral("SettingChanged"), {space, key, wrapped(value)});
}

}  // namespace kestrelbay::testing
