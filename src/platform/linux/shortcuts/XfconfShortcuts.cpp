#include <array>

#include <QDBusMessage>
#include <QDBusReply>
#include <QVariantMap>

#include "platform/linux/shortcuts/ShortcutTables.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

constexpr int kLongestWaitMilliseconds = 200;

struct Provider {
    QLatin1StringView name;
    QLatin1StringView program;
};

constexpr std::array kProviders{
    Provider{QLatin1StringView("xfwm4"), QLatin1StringView("xfwm4")},
    Provider{QLatin1StringView("commands"), QLatin1StringView("xfsettingsd")},
};

QVariantMap shortcutsOf(QDBusConnection &bus) {
    QDBusMessage question = QDBusMessage::createMethodCall(
        u"org.xfce.Xfconf"_s, u"/org/xfce/Xfconf"_s, u"org.xfce.Xfconf"_s, u"GetAllProperties"_s);
    question.setArguments({u"xfce4-keyboard-shortcuts"_s, u"/"_s});
    question.setAutoStartService(false);
    const QDBusReply<QVariantMap> reply =
        bus.call(question, QDBus::Block, kLongestWaitMilliseconds);
    return reply.value();
}

}  // namespace

std::optional<HotkeyHolder> holderInXfconf(QDBusConnection bus, const LookedForKey &key) {
    const QVariantMap shortcuts = shortcutsOf(bus);
    for (const Provider &provider : kProviders) {
        // The user's own hotkeys, once there are any, take the place of the given ones.
        const QString folder = u"/"_s + provider.name + u'/';
        const bool hasOwn = shortcuts.value(folder + u"custom/override"_s).toBool();
        const QString inUse = folder + (hasOwn ? u"custom/"_s : u"default/"_s);
        for (auto it = shortcuts.lowerBound(inUse);
             it != shortcuts.end() && it.key().startsWith(inUse); ++it) {
            if (key.isMeantBy(gtkAccelerator(it.key().sliced(inUse.size()))))
                return HotkeyHolder{.program = provider.program, .action = it->toString()};
        }
    }
    return std::nullopt;
}

}  // namespace kestrelbay
