#include "app/DiagnosticReport.h"

#include <sys/stat.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "hotkeys/ShortcutManager.h"
#include "hotkeys/TapProblems.h"
#include "model/RuleFile.h"
#include "platform/HotkeyHolders.h"
#include "platform/LoginItem.h"
#include "platform/Platform.h"
#include "preferences/RuleRowTexts.h"
#include "settings/Language.h"
#include "settings/SettingsKeys.h"
#include "ui/look/Symbols.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

using Lines = std::vector<std::pair<QString, QString>>;

QString yesOrNo(bool yes) {
    return yes ? QStringLiteral("yes") : QStringLiteral("no");
}

QString withoutHome(const QString &path) {
    const QString home = QDir::homePath();
    return path == home || path.startsWith(home + u'/') ? u'~' + path.mid(home.size()) : path;
}

QString explained(TapProblem problem) {
    return problem == TapProblem::None ? yesOrNo(true) : QStringLiteral("no, ") + inWords(problem);
}

QString status(const RuleFile::LoadResult &loaded) {
    switch (loaded.status) {
        case RuleFile::LoadStatus::Ok:
            return QStringLiteral("in order");
        case RuleFile::LoadStatus::Missing:
            return QStringLiteral("not there yet");
        case RuleFile::LoadStatus::Unusable:
            return QStringLiteral("unusable, ") + loaded.problem;
    }
    return {};
}

QString counted(const ShortcutManager::Rules &rules) {
    const auto enabled = std::ranges::count_if(rules, &ShortcutRule::isEnabled);
    const auto bound = std::ranges::count_if(
        rules, [](const ShortcutRule &rule) { return !rule.hotkeyString().isEmpty(); });
    return QStringLiteral("%1, %2 enabled, %3 with a hotkey")
        .arg(rules.size())
        .arg(enabled)
        .arg(bound);
}

/// The tap of a program that does not run: what it would find.
QString triedTap(EventTap &tap) {
    const bool installed = tap.install({});
    QString result = explained(tap.problem());
    if (installed)
        tap.remove();
    return result;
}

QString refusedHotkeys(const ShortcutManager &manager, HotkeyHolders &holders) {
    QStringList hotkeys;
    for (const ShortcutRule &rule : manager.rules()) {
        const std::optional<RefusedHotkey> refusal = manager.refusal(rule);
        if (!refusal)
            continue;
        const QStringList words =
            refusalInWords(*refusal, holders.holderOf(*refusal), Language::en);
        hotkeys.append(
            QStringLiteral("%1 (%2)").arg(rule.hotkeyString(), words.join(QStringLiteral("; "))));
    }
    hotkeys.removeDuplicates();
    return hotkeys.isEmpty() ? QStringLiteral("none") : hotkeys.join(QStringLiteral(", "));
}

QString restingHotkeys(const ShortcutManager &manager) {
    QStringList hotkeys;
    for (const ShortcutRule &rule : manager.rules()) {
        if (manager.needsSides(rule))
            hotkeys.append(QStringLiteral("%1 (%2)").arg(rule.hotkeyString(), rule.appName));
    }
    return hotkeys.isEmpty() ? QStringLiteral("none") : hotkeys.join(QStringLiteral(", "));
}

void addTap(Lines &lines, Platform &platform, const ShortcutManager *manager) {
    if (!platform.startupProblem().isEmpty()) {
        lines.emplace_back(QStringLiteral("Sees keys"), platform.startupProblem());
        return;
    }
    if (!manager) {
        lines.emplace_back(QStringLiteral("Sees keys"), triedTap(platform.eventTap()));
        return;
    }
    lines.emplace_back(QStringLiteral("Sees keys"), explained(platform.eventTap().problem()));
    lines.emplace_back(QStringLiteral("Shortcuts enabled"), yesOrNo(manager->isEnabled()));
    lines.emplace_back(QStringLiteral("Hotkeys held by other programs"),
                       refusedHotkeys(*manager, platform.hotkeyHolders()));
    if (!manager->canTellSides())
        lines.emplace_back(QStringLiteral("Hotkeys that rest, as sides cannot be told"),
                           restingHotkeys(*manager));
}

/// Rules that the file gives no identifier have another one each time that it is read.
bool areEqualButForIds(const ShortcutManager::Rules &rules, ShortcutManager::Rules others) {
    if (rules.size() != others.size())
        return false;
    for (std::size_t i = 0; i < rules.size(); ++i)
        others[i].id = rules[i].id;
    return rules == others;
}

/// Of the program's own files, those that other users may read or write. Their modes are the
/// user's affair, but should be known.
QString filesOpenToOthers(const QString &folder) {
    QStringList names;
    for (const QString &path : {RuleFile::pathIn(folder), folder + u"/settings.json"_s}) {
        struct stat facts {};
        if (::stat(QFile::encodeName(path).constData(), &facts) != 0 ||
            !(facts.st_mode & (S_IRWXG | S_IRWXO)))
            continue;
        names += QStringLiteral("%1 (%2)")
                     .arg(QFileInfo(path).fileName())
                     .arg(uint{facts.st_mode & ALLPERMS}, 4, 8, QChar(u'0'));
    }
    return names.isEmpty() ? QStringLiteral("none") : names.join(QStringLiteral(", "));
}

void addRules(Lines &lines, const QString &folder, const ShortcutManager *manager) {
    if (folder.isEmpty()) {
        lines.emplace_back(QStringLiteral("Rule file"),
                           QStringLiteral("no, there is no folder for it"));
        return;
    }
    const QString path = RuleFile::pathIn(folder);
    const RuleFile::LoadResult onDisk = RuleFile(path).load();
    lines.emplace_back(QStringLiteral("Rules"), counted(manager ? manager->rules() : onDisk.rules));
    lines.emplace_back(QStringLiteral("Rule file"),
                       QStringLiteral("%1, %2").arg(withoutHome(path), status(onDisk)));
    if (manager && !areEqualButForIds(manager->rules(), onDisk.rules))
        lines.emplace_back(QStringLiteral("Rule file in use"),
                           QStringLiteral("no, other rules are"));
    lines.emplace_back(QStringLiteral("Files open to others"), filesOpenToOthers(folder));
}

void addSettings(Lines &lines, Platform &platform) {
    const UserDefaults &defaults = platform.userDefaults();
    const QString sound = read(defaults, settings::kSoundFeedbackName);
    lines.emplace_back(QStringLiteral("Language"), Language::current(defaults).rawValue());
    lines.emplace_back(QStringLiteral("Feedback sound"),
                       sound.isEmpty() ? QStringLiteral("none") : sound);
    lines.emplace_back(QStringLiteral("Launch toast"),
                       read(defaults, settings::kLaunchToastDuration));
    lines.emplace_back(QStringLiteral("Starts at login"),
                       yesOrNo(platform.loginItem().isEnabled()));
}

QString drawsIcons() {
    const QString problem = drawingProblem();
    return problem.isEmpty() ? yesOrNo(true) : QStringLiteral("no, ") + problem;
}

QString formatted(const Lines &lines) {
    QString text;
    for (const auto &[name, value] : lines)
        text += QStringLiteral("%1: %2\n").arg(name, value);
    return text;
}

}  // namespace

QString storageDirectory(const Platform &platform) {
    const QString parent = platform.applicationSupportDirectory();
    return parent.isEmpty() ? QString() : QDir(parent).filePath(QStringLiteral("KestrelBay"));
}

QString diagnosticReport(Platform &platform, const ShortcutManager *manager) {
    Lines lines{
        {QStringLiteral("KestrelBay"), QCoreApplication::applicationVersion()},
        {QStringLiteral("Qt"), QString::fromLatin1(qVersion())},
        {QStringLiteral("Draws icons"), drawsIcons()},
        {QStringLiteral("Running"), yesOrNo(manager)},
    };
    for (auto &[name, value] : platform.diagnostics())
        lines.emplace_back(name, value.replace(QDir::homePath() + u'/', QStringLiteral("~/")));
    addTap(lines, platform, manager);
    addRules(lines, storageDirectory(platform), manager);
    addSettings(lines, platform);
    return formatted(lines);
}

}  // namespace kestrelbay
