#include "platform/linux/applications/entries/ApplicationIndex.h"

#include <utility>

#include <QSet>

namespace kestrelbay {

namespace {

constexpr QLatin1String kSuffix(".desktop");

QString foldedId(const QString &id) {
    const QString folded = id.toCaseFolded();
    return folded.endsWith(kSuffix) ? folded.chopped(kSuffix.size()) : folded;
}

}  // namespace

ApplicationIndex::ApplicationIndex(std::vector<DesktopEntry> entries, QString fileManagerId)
    : entries_(std::move(entries)), fileManagerId_(std::move(fileManagerId)) {
    QSet<QString> deleted;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        const DesktopEntry &entry = entries_[i];
        add(paths_, entry.path, i);
        if (entry.hidden && !entry.shadowed)
            deleted.insert(entry.id);
        if (!entry.named && (entry.hidden || (entry.shadowed && deleted.contains(entry.id))))
            continue;
        const QString id = foldedId(entry.id);
        add(ids_, id, i);
        if (id.contains(u'.'))
            add(lastParts_, id.section(u'.', -1), i);
        add(wmClasses_, entry.startupWmClass, i);
        add(flatpaks_, entry.flatpakId, i);
        add(snaps_, entry.snapName, i);
        add(programs_, entry.program, i);
        for (const QString &name : entry.executableNames)
            add(executableNames_, name, i);
    }
}

void ApplicationIndex::add(Table &table, const QString &key, std::size_t entry) {
    if (!key.isEmpty())
        table[key].push_back(entry);
}

ApplicationIndex::Found ApplicationIndex::find(const Table &table, const QString &key) {
    const auto at = table.constFind(key);
    return key.isEmpty() || at == table.cend() ? Found() : Found(*at);
}

ApplicationIndex::Found ApplicationIndex::withId(const QString &id) const {
    return find(ids_, foldedId(id));
}

}  // namespace kestrelbay
