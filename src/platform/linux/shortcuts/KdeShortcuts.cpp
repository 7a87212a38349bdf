#include <QFile>
#include <QStringList>

#include "platform/linux/shortcuts/ShortcutTables.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

/// An action's line: the hotkeys it has, those given, and its name for the user. Lines of
/// programs have the hotkeys only.
struct Action {
    QStringList hotkeys;
    QString name;
};

Action actionIn(const QString &line) {
    const qsizetype equals = line.indexOf(u'=');
    const QStringList fields = line.sliced(equals + 1).split(u',');
    return {.hotkeys = fields.constFirst().split(u"\\t"_s),
            .name = fields.size() > 2 ? fields.at(2) : QString()};
}

}  // namespace

std::optional<HotkeyHolder> holderInKdeFile(const QString &path, const LookedForKey &key) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QString group;
    QString friendlyName;
    std::optional<HotkeyHolder> holder;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    for (const QString &line : lines) {
        if (line.startsWith(u'[')) {
            // The name of a group may come behind its actions.
            if (holder)
                break;
            group = line.section(u'[', -1).chopped(1);
            friendlyName.clear();
        } else if (line.startsWith("_k_friendly_name="_L1)) {
            friendlyName = line.section(u'=', 1);
        } else if (line.contains(u'=') && !holder) {
            const Action action = actionIn(line);
            for (const QString &hotkey : action.hotkeys) {
                if (key.isMeantBy(qtAccelerator(hotkey)))
                    holder = HotkeyHolder{.action = action.name};
            }
        }
    }
    if (holder)
        holder->program = friendlyName.isEmpty() ? group : friendlyName;
    return holder;
}

}  // namespace kestrelbay
