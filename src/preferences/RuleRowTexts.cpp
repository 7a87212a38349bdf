#include "preferences/RuleRowTexts.h"

#include <QTextBoundaryFinder>

#include <vector>

#include "model/ShortcutRule.h"
#include "model/TrimmedText.h"
#include "settings/L.h"

namespace kestrelbay {

namespace {

constexpr qsizetype kShortestCut = 10;
constexpr qsizetype kShownEnd = 9;

/// Where the characters begin.
std::vector<qsizetype> characterStarts(QStringView text) {
    std::vector<qsizetype> starts;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype start = 0; start >= 0 && start < text.size(); start = finder.toNextBoundary())
        starts.push_back(start);
    return starts;
}

}  // namespace

QString shownAppName(const ShortcutRule &rule) {
    return rule.appName.isEmpty() ? L::noAppSelected() : rule.appName;
}

QString abbreviatedPath(const QString &path, const QString &homeFolder) {
    if (homeFolder.size() < 2 || !path.startsWith(homeFolder))
        return path;
    const QString rest = path.sliced(homeFolder.size());
    return rest.isEmpty() || rest.startsWith(u'/') ? u'~' + rest : path;
}

QString argsBadgeText(const ShortcutRule &rule) {
    if (rule.argumentKind == ArgumentKind::None)
        return {};
    QString text = trimmedSpacesAndTabs(rule.launchArguments);
    const std::vector<qsizetype> starts = characterStarts(text);
    const auto count = static_cast<qsizetype>(starts.size());
    if (count < kShortestCut)
        return text;
    return u'…' + text.sliced(starts[static_cast<std::size_t>(count - kShownEnd)]);
}

}  // namespace kestrelbay
