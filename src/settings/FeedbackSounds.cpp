#include "settings/FeedbackSounds.h"

#include <algorithm>

#include <QDir>
#include <QString>

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

QString withoutExtension(const QString &entry) {
    const qsizetype dot = entry.lastIndexOf(u'.');
    return dot > 0 ? entry.first(dot) : entry;
}

/// QString compares UTF-16 units, which orders characters beyond the first plane
/// before some of the first.
bool precedes(const QString &first, const QString &second) {
    return std::ranges::lexicographical_compare(first.toUcs4(), second.toUcs4());
}

}  // namespace

QStringList feedbackSoundNames(const QStringList &entries, const QStringList &suffixes) {
    QStringList names;
    for (const QString &entry : entries) {
        const auto endsEntry = [&entry](const QString &suffix) { return entry.endsWith(suffix); };
        if (std::ranges::any_of(suffixes, endsEntry))
            names.append(withoutExtension(entry));
    }
    names.removeDuplicates();
    std::ranges::sort(names, precedes);
    const QString featured = u"Jump"_s;
    if (names.removeOne(featured))
        names.prepend(featured);
    return names;
}

QStringList feedbackSounds(const QStringList &directories, const QStringList &suffixes) {
    QStringList entries;
    for (const QString &directory : directories)
        entries += QDir(directory).entryList(
            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Unsorted);
    return feedbackSoundNames(entries, suffixes);
}

}  // namespace kestrelbay
