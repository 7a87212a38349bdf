#include "desktop/preferences/PreferencesScenes.h"

#include <QDir>

#include "desktop/display/HotkeyHolder.h"
#include "desktop/display/Picture.h"
#include "support/Poll.h"

namespace kestrelbay::desktop {

namespace {

using namespace std::chrono_literals;
using places::RowPart;
using shellkeys::kDown;
using shellkeys::kReturn;

const QString kPicker = QStringLiteral("Select App");
const QString kEditorPath = QStringLiteral("/usr/share/applications/org.xfce.mousepad.desktop");
/// Longer than the guide shows that the keys are its own.
constexpr auto kGrantedShown = 2s;

/// Presses Return and waits for another step of the guide, or what follows it.
void confirmGuideStep(PreferencesStage &stage) {
    XClient &client = stage.view().client();
    const auto guide = stage.programWindow(ShellStage::kGuideSize);
    if (!guide)
        throw NotPrepared(QStringLiteral("the guide is not there"));
    const QRect area = client.area(*guide);
    const auto before = settledPictureOf(client, area);
    stage.prepare(
        QStringLiteral("another step of the guide"), [&] { stage.pressKey(kReturn); },
        [&] { return pictureOf(client, area) != before; });
    // Some steps go on by themselves, after a moment.
    std::optional<QImage> now;
    do
        now = settledPictureOf(client, area);
    while (testing::waitUntil([&] { return pictureOf(client, area) != now; }, kGrantedShown));
}

/// Finds the editor in the open picker and chooses it, by keys alone.
void pickEditor(PreferencesStage &stage) {
    const Stage::Window picker = stage.waitForWindow(kPicker);
    stage.waitForContents(picker, places::kPickerIcons);
    stage.type(QStringLiteral("mousepad"));
    (void)settledPictureOf(stage.view().client(), stage.view().client().area(picker));
    stage.screenshot(QStringLiteral("picker-filtered"));
    stage.pressKey(kDown);
    stage.pressKey(kReturn);
}

}  // namespace

void sceneFirstHotkey(PreferencesStage &stage) {
    stage.endProgram();
    const QString folder = stage.desktop().home().config(QStringLiteral("KestrelBay"));
    QDir(folder).removeRecursively();
    stage.bringFrontProgram();
    stage.sees(
        QStringLiteral("started as a new user, without any file"), QStringLiteral("the guide"),
        [&] { stage.startProgram(); }, [&] { return stage.isInFront(ShellStage::kGuideSize); });
    confirmGuideStep(stage);
    confirmGuideStep(stage);
    stage.screenshot(QStringLiteral("guide-all-set"));
    stage.sees(
        QStringLiteral("pressed Return for “Add First Shortcut”"),
        QStringLiteral("the preferences come forward, there are no rules"),
        [&] { stage.pressKey(kReturn); },
        [&] { return stage.isInFront(ShellStage::kPreferencesSize) && stage.rules().isEmpty(); });
    stage.screenshot(QStringLiteral("no-rules"));

    stage.sees(
        QStringLiteral("clicked “+”"), QStringLiteral("the list of programs opens"),
        [&] { stage.click(places::kAddButton); },
        [&] { return stage.windowTitled(kPicker).has_value(); });
    stage.seesRules(QStringLiteral("typed “mousepad”, Down, Return"),
                    {QStringLiteral("Mousepad 0 0")}, [&] { pickEditor(stage); });
    stage.sees(
        QStringLiteral("looked on"), QStringLiteral("the new row records already"), [] {},
        [&] { return !stage.windowTitled(kPicker) && stage.isRecording(); });
    stage.screenshot(QStringLiteral("new-row-records"));

    stage.seesRules(QStringLiteral("pressed L⌘T"), {QStringLiteral("Mousepad 17 100008")},
                    [&] { stage.press(leftCommand(keys::kT)); });
    stage.sees(
        QStringLiteral("looked on"), QStringLiteral("the keyboard is free again"), [] {},
        [&] { return !stage.isRecording(); });
    stage.sees(
        QStringLiteral("pressed Space"), QStringLiteral("the new row has the focus, and records"),
        [&] { stage.pressKey(testing::xkey::kSpace); }, [&] { return stage.isRecording(); });
    stage.sees(
        QStringLiteral("pressed Escape"), QStringLiteral("the keyboard is free again"),
        [&] { stage.pressKey(testing::xkey::kEscape); }, [&] { return !stage.isRecording(); });
    stage.bringFrontProgram();
    stage.sees(
        QStringLiteral("pressed L⌘T"), QStringLiteral("the editor comes forward"),
        [&] { stage.press(leftCommand(keys::kT)); },
        [&] { return stage.isInFront(scenario::kEditorClass); },
        [&] {
            return HomeFolder::read(stage.desktop().home().rulesPath())
                           .contains(kEditorPath.toUtf8())
                       ? QString()
                       : QStringLiteral("the rule has another path");
        });
    stage.closeAll(scenario::kEditorClass);
}

void sceneHotkeyOfAnother(PreferencesStage &stage) {
    HotkeyHolder other(stage.desktop().displayName(), keys::kH.xKeycode);
    RuleSpec rule = markerRule(stage.desktop().home(), {});
    rule.modifierFlags = 0;
    stage.begin({rule});
    // Between the mark and the edge of the triangle.
    const QPoint sign = places::inRow(0, RowPart::RefusedSign) + QPoint(-4, 5);
    const auto hasSign = [&] {
        const QColor color = stage.colorAtPlace(sign);
        return color.red() > color.blue() + 100;
    };
    stage.startRecording(0);
    stage.seesRules(QStringLiteral("recorded L⌘H, which another program has"),
                    {QStringLiteral("Marker 4 100008 launchArgs “--marker”")},
                    [&] { stage.press(leftCommand(keys::kH)); });
    stage.sees(
        QStringLiteral("looked on"), QStringLiteral("the row has a sign"), [] {}, hasSign,
        [&] {
            return other.presses() == 0 ? QString()
                                        : QStringLiteral("the other program got the key");
        });
    stage.pointer().moveTo({1, 1});
    stage.screenshot(QStringLiteral("refused"));
    stage.bringFrontProgram();
    stage.sees(
        QStringLiteral("pressed L⌘H"), QStringLiteral("it is still the other program's"),
        [&] { stage.press(leftCommand(keys::kH)); }, [&] { return other.presses() == 1; },
        [&] { return stage.markers() == 0 ? QString() : QStringLiteral("it started something"); });
    stage.openPreferences();
    stage.sees(
        QStringLiteral("the other program let go"), QStringLiteral("the sign goes"),
        [&] { other.letGo(); }, [&] { return !hasSign(); });
    stage.startsMarker(QStringLiteral("pressed it once more"), leftCommand(keys::kH));
}

}  // namespace kestrelbay::desktop
