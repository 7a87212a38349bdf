#include "platform/linux/applications/matching/WindowDescription.h"

#include <algorithm>

#include <QStringList>

namespace kestrelbay {

namespace {

/// Longer texts are nobody's names.
constexpr qsizetype kLongestName = 100;

/// Another program's text, on one line.
QString quoted(QString text) {
    std::ranges::replace_if(
        text, [](QChar c) { return !c.isPrint(); }, QChar(u'?'));
    return u'"' + text.left(kLongestName) + u'"';
}

QString typeOf(WindowType type) {
    switch (type) {
        case WindowType::Normal:
            return QStringLiteral("ordinary");
        case WindowType::Dialog:
            return QStringLiteral("dialog");
        case WindowType::Utility:
            return QStringLiteral("utility");
        case WindowType::Decoration:
            return QStringLiteral("part of the desktop");
    }
    return {};
}

QString programOf(const WindowFacts &facts) {
    if (facts.pid < 1)
        return QStringLiteral("process unknown");
    const ProcessFacts &process = facts.process;
    for (const QString &name :
         {process.interpretedProgram, process.executablePath, process.executableNames.value(0)})
        if (!name.isEmpty())
            return QStringLiteral("program ") + quoted(name);
    return QStringLiteral("program unknown");
}

QString entriesOf(const std::vector<ApplicationMatch> &matches, const ApplicationIndex &index) {
    QStringList entries;
    for (const ApplicationMatch &match : matches)
        entries.append(QStringLiteral("%1 by %2")
                           .arg(index.entries()[match.entry].path, description(match.reason)));
    return entries.isEmpty() ? QStringLiteral("no entry") : entries.join(QStringLiteral(", "));
}

}  // namespace

QString describeWindow(const WindowFacts &facts, const std::vector<ApplicationMatch> &matches,
                       const ApplicationIndex &index) {
    return QStringLiteral("%1, class %2, instance %3, %4: %5")
        .arg(typeOf(facts.type), quoted(facts.className), quoted(facts.instance), programOf(facts),
             entriesOf(matches, index));
}

}  // namespace kestrelbay
