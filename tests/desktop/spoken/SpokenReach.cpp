#include <QScopeGuard>

#include "desktop/spoken/SpokenScenes.h"

namespace kestrelbay::desktop {

namespace {

using namespace Qt::StringLiterals;
using shellkeys::kReturn;
using testing::xkey::kEscape;

/// As the settings of desktops have it that enlarge text, here twice the usual.
constexpr const char *kTwiceAsLarge = "Xft.dpi:\t192\n";
/// There is no room for so many.
constexpr int kManyRules = 8;

/// What of the window with the keyboard, its frame included, is not on the screen.
QString offScreen(SpokenStage &stage) {
    XClient &client = stage.view().client();
    const Stage::Window window = stage.view().active();
    QRect area = client.area(window);
    if (const auto frame = client.numbers(window, "_NET_FRAME_EXTENTS"); frame.size() == 4)
        area.adjust(-int(frame[0]), -int(frame[2]), int(frame[1]), int(frame[3]));
    if (client.area(client.root()).contains(area))
        return {};
    return u"the window reaches from (%1, %2) to (%3, %4)"_s.arg(area.left())
        .arg(area.top())
        .arg(area.right())
        .arg(area.bottom());
}

/// Goes round by Tab until all these have had the keyboard, each in full view. What is wrong.
QString outOfReach(SpokenStage &stage, const QString &window, QStringList parts) {
    if (QString problem = offScreen(stage); !problem.isEmpty())
        return problem;
    for (int i = 0; i < SpokenStage::kMostTabs; ++i) {
        const auto shown = stage.spoken(window);
        if (const SpokenStage::Thing *const focused = shown ? shown->focused() : nullptr) {
            const QRect inside = stage.reader().area(shown->place);
            const QRect area = stage.reader().area(focused->place);
            if (area.isEmpty() || !inside.contains(area))
                return u"cut off: "_s + focused->told();
            parts.removeIf([&](const QString &part) { return focused->told().contains(part); });
        }
        if (parts.isEmpty())
            return {};
        (void)stage.tabOn(window);
    }
    return u"not reached: "_s + parts.join(u", "_s);
}

/// Does something and waits for the window; a step after which all these parts of it can be
/// reached.
void reaches(SpokenStage &stage, const QString &name, const QString &window,
             const QStringList &parts, const std::function<void()> &act) {
    stage.prepare(name, act, [&] { return stage.spoken(window).has_value(); });
    std::optional<QString> problem;
    stage.story().step({
        .done = name,
        .expected = u"Tab brings all of it into view: "_s + parts.join(u", "_s),
        .act = [&] { problem = outOfReach(stage, window, parts); },
        .seen = [&] { return problem == QString(); },
        .saw = [&] { return problem.value_or(QString()); },
    });
    stage.screenshot(u"large-"_s + name);
}

void closeSheet(SpokenStage &stage) {
    stage.pressKey(kEscape);
    (void)stage.waitForWindow(kPreferencesName);
}

}  // namespace

void sceneLargeText(SpokenStage &stage) {
    XClient &client = stage.view().client();
    const auto setResources = [&](const QByteArray &resources) {
        client.setText(client.root(), "RESOURCE_MANAGER", "STRING", resources);
        client.sync();
    };
    setResources(kTwiceAsLarge);
    const auto putBack = qScopeGuard([&] { setResources({}); });
    const QString file = stage.desktop().home().path(u"more.json"_s);
    HomeFolder::write(file, rulesJson({ruleWithoutHotkey(u"More"_s, u"thunar"_s)}));
    std::vector<RuleSpec> rules(kManyRules, ruleWithoutHotkey(u"Files"_s, u"thunar"_s));
    rules.push_back(editorRule());
    stage.beginAt(std::move(rules));
    reaches(stage, u"rules"_s, kPreferencesName,
            {u"page tab"_s, u"Hotkey of Files"_s, u"Delete Files"_s, u"Add"_s}, [] {});
    stage.tabTo(kPreferencesName, u"list item"_s);
    stage.hearsFocus(u"pressed End"_s, kPreferencesName,
                     u"list item: Editor, left Super, E (selected, focused)"_s,
                     [&] { stage.pressKey(spokenkeys::kEnd); });
    reaches(stage, u"last-rule"_s, kPreferencesName,
            {u"Hotkey of Editor"_s, u"Enable Editor"_s, u"Delete Editor"_s}, [] {});
    reaches(stage, u"question"_s, u"Delete Shortcut"_s, {u"Cancel"_s, u"Delete"_s},
            [&] { stage.pressKey(kReturn); });
    closeSheet(stage);
    stage.tabTo(kPreferencesName, u"Advanced Options: Editor"_s);
    reaches(stage, u"options"_s, u"Advanced · Editor"_s,
            {u"Keep app open"_s, u"Default (none)"_s, u"Learn more"_s, u"Cancel"_s, u"Save"_s},
            [&] { stage.pressKey(kReturn); });
    closeSheet(stage);
    stage.tabTo(kPreferencesName, u"Add"_s);
    reaches(stage, u"picker"_s, kPickerName,
            {u"Search apps"_s, u"list item"_s, u"Browse"_s, u"Cancel"_s, u"Select"_s},
            [&] { stage.pressKey(kReturn); });
    closeSheet(stage);
    stage.tabTo(kPreferencesName, u"list item"_s);
    (void)stage.waitForMenu([&] { stage.pressKey(spokenkeys::kMenu); });
    for (const std::uint8_t key : {shellkeys::kUp, shellkeys::kUp, kReturn})
        stage.pressKey(key);
    (void)stage.waitForWindow(u"Import Shortcuts"_s);
    stage.type(file);
    reaches(stage, u"import"_s, u"Import Shortcuts"_s, {u"Cancel"_s, u"Add"_s}, [&] {
        stage.pressKey(kReturn);
        stage.prepare(
            u"the sheet"_s, [] {},
            [&] {
                return stage.told(u"Import Shortcuts"_s).contains(u"button: Cancel (focusable)"_s);
            });
    });
    closeSheet(stage);
    stage.tabTo(kPreferencesName, u"page tab"_s);
    reaches(stage, u"settings"_s, kPreferencesName,
            {u"Launch at Login"_s, u"of Language"_s, u"of Launch Icon Toast"_s,
             u"Config File Location"_s},
            [&] { stage.pressKey(spokenkeys::kRight); });
    reaches(stage, u"about"_s, u"About KestrelBay"_s, {u"Update"_s, u"Feedback"_s},
            [&] { stage.askFor(u"about"_s); });
    reaches(stage, u"guide"_s, kGuideName, {u"Get Started"_s, u"Dismiss"_s}, [&] {
        stage.restartProgram({{u"onboardingCompleted"_s, false}});
    });
}

}  // namespace kestrelbay::desktop
