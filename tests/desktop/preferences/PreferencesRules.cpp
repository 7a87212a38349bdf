#include "desktop/preferences/PreferencesScenes.h"

#include <array>
#include <optional>

#include "desktop/display/Picture.h"
#include "support/Poll.h"

namespace kestrelbay::desktop {

namespace {

using places::RowPart;
using shellkeys::kDown;
using shellkeys::kReturn;
using shellkeys::kTab;
using shellkeys::kUp;
using testing::xkey::kEscape;

const QString kTerminal = QStringLiteral("Terminal 17 100008");
const QString kUrlOfSheet = QStringLiteral("kestreltest://from/the/sheet?x=1");

RuleSpec terminalRule() {
    RuleSpec rule = ruleWithoutHotkey(QStringLiteral("Terminal"), QStringLiteral("debian-xterm"));
    rule.key = keys::kT;
    rule.modifierFlags = flags::kLeftCommand;
    return rule;
}

void beginWithThree(PreferencesStage &stage) {
    stage.begin({markerRule(stage.desktop().home(), keys::kK), terminalRule(), editorRule()});
}

/// Icons apart, only a rule's arguments are shown in a colour.
bool showsArguments(const QImage &texts) {
    constexpr int kClearlyColoured = 128;
    for (int y = 0; y < texts.height(); ++y)
        for (int x = 0; x < texts.width(); ++x)
            if (texts.pixelColor(x, y).hsvSaturation() > kClearlyColoured)
                return true;
    return false;
}

}  // namespace

void sceneAdvancedPanel(PreferencesStage &stage) {
    const QString title = QStringLiteral("Advanced · Editor");
    stage.begin({editorRule()});
    stage.sees(
        QStringLiteral("clicked the gear of the row"), QStringLiteral("the sheet of its options"),
        [&] { stage.click(0, RowPart::Advanced); },
        [&] { return stage.windowTitled(title).has_value(); });
    const auto edit = [&] {
        (void)stage.waitForWindow(title);
        // The next repeat action, the second kind from “none” on, and a text.
        stage.pressKey(kDown);
        stage.pressKey(kTab);
        stage.pressKey(kDown);
        stage.pressKey(kDown);
        stage.pressKey(kTab);
        stage.type(kUrlOfSheet);
    };
    edit();
    stage.screenshot(QStringLiteral("advanced-panel"));
    stage.seesRules(
        QStringLiteral("chose hiding and a URL, Return"),
        {kEditorRule + QStringLiteral(" toggleVisibility urlScheme “%1”").arg(kUrlOfSheet)},
        [&] { stage.pressKey(kReturn); });
    stage.prepare(
        QStringLiteral("no sheet"), [] {}, [&] { return !stage.windowTitled(title); });
    stage.bringFrontProgram();
    stage.sees(
        QStringLiteral("pressed L⌘E"), QStringLiteral("the URL is opened"),
        [&] { stage.press(leftCommand(keys::kE)); },
        [&] { return !stage.desktop().processes().withArgument(kUrlOfSheet).empty(); });

    stage.openPreferences();
    const QStringList before = stage.rules();
    stage.click(0, RowPart::Advanced);
    (void)stage.waitForWindow(title);
    stage.pressKey(kDown);
    stage.sees(
        QStringLiteral("opened it again, changed it, Escape"),
        QStringLiteral("the sheet goes and nothing is saved"), [&] { stage.pressKey(kEscape); },
        [&] { return !stage.windowTitled(title); },
        [&] { return stage.rules() == before ? QString() : QStringLiteral("it was saved"); });
    stage.closeAll(scenario::kEditorClass);
}

void scenePopupInSheet(PreferencesStage &stage) {
    const QString title = QStringLiteral("Advanced · Editor");
    const QString text = QStringLiteral("typed before the list was opened");
    XClient &client = stage.view().client();
    stage.begin({editorRule()});
    const QStringList before = stage.rules();
    const auto openList = [&] {
        stage.prepare(
            QStringLiteral("the list of kinds"), [&] { stage.pressKey(testing::xkey::kSpace); },
            [&] { return !client.popups().empty(); });
    };
    const auto onlyListCloses = [&](const QString &done, std::uint8_t key) {
        stage.sees(
            done, QStringLiteral("the list closes, the sheet has the keyboard"),
            [&] { stage.pressKey(key); },
            [&] {
                const auto sheet = stage.windowTitled(title);
                return client.popups().empty() && sheet && stage.view().hasFocus(*sheet);
            },
            [&] { return stage.rules() == before ? QString() : QStringLiteral("it was saved"); });
    };
    stage.click(0, RowPart::Advanced);
    (void)stage.waitForWindow(title);
    stage.pressKey(kTab);
    openList();
    stage.pressKey(kDown);
    stage.pressKey(kDown);
    onlyListCloses(QStringLiteral("chose a kind from its list with Return"), kReturn);
    stage.pressKey(kTab);
    stage.type(text);
    stage.press({QStringLiteral("Backtab"), {testing::xkey::kLeftShift, kTab}});
    openList();
    onlyListCloses(QStringLiteral("typed a text, opened the list again, Escape"), kEscape);
    stage.screenshot(QStringLiteral("popup-in-sheet"));
    stage.seesRules(QStringLiteral("pressed Return in the sheet"),
                    {kEditorRule + QStringLiteral(" urlScheme “%1”").arg(text)}, [&] {
                        stage.pressKey(kTab);
                        stage.pressKey(kReturn);
                    });
}

void sceneConflict(PreferencesStage &stage) {
    beginWithThree(stage);
    XClient &client = stage.view().client();
    const QRect beside = places::besideRecorder(1);
    const QRect strip(stage.onScreen(beside.topLeft()), beside.size());
    const QImage still = pictureOf(client, strip);
    const QByteArray before = HomeFolder::read(stage.desktop().home().rulesPath());
    stage.startRecording(1);
    stage.toasts().forget();
    bool hasShaken = false;
    stage.sees(
        QStringLiteral("recorded the first rule's L⌘K for the second"),
        QStringLiteral("the field shakes, a toast says why, the keyboard is free"),
        [&] {
            stage.press(leftCommand(keys::kK));
            hasShaken = testing::waitUntil([&] { return pictureOf(client, strip) != still; });
            stage.screenshot(QStringLiteral("conflict"));
        },
        [&] {
            return hasShaken && stage.toasts().messageToasts().size() == 1 && !stage.isRecording();
        },
        [&] {
            return HomeFolder::read(stage.desktop().home().rulesPath()) == before
                       ? QString()
                       : QStringLiteral("something was saved");
        });
    stage.startsMarker(QStringLiteral("pressed L⌘K"), leftCommand(keys::kK));
}

void sceneSwitch(PreferencesStage &stage) {
    const QString second = QStringLiteral("Marker 5 100008 launchArgs “--marker”");
    stage.begin({markerRule(stage.desktop().home(), keys::kK),
                 markerRule(stage.desktop().home(), keys::kG)});
    stage.seesRules(QStringLiteral("switched the first rule off"),
                    {kMarkerRule + QStringLiteral(" off"), second},
                    [&] { stage.click(0, RowPart::Switch); });
    stage.isHeldBack(QStringLiteral("pressed L⌘K"), leftCommand(keys::kK), leftCommand(keys::kG));
    stage.openPreferences();
    stage.seesRules(QStringLiteral("switched it on"), {kMarkerRule, second},
                    [&] { stage.click(0, RowPart::Switch); });
    stage.startsMarker(QStringLiteral("pressed L⌘K"), leftCommand(keys::kK));
}

void sceneOrder(PreferencesStage &stage) {
    beginWithThree(stage);
    XClient &client = stage.view().client();
    const QPoint from = stage.onScreen(places::inRow(0, RowPart::Name));
    // Onto the line between the second row and the third.
    const QPoint to = stage.onScreen({200, places::kRowsTop + 2 * places::kRowPitch});
    const auto dragged = [&] {
        const auto popups = client.popups();
        return popups.empty() ? QRect() : client.area(popups.back());
    };
    stage.seesRules(QStringLiteral("dragged the first rule below the second"),
                    {kTerminal, kMarkerRule, kEditorRule}, [&] {
                        stage.pointer().press(from);
                        stage.prepare(
                            QStringLiteral("a row with the pointer"),
                            [&] { stage.pointer().dragTo(from + QPoint(0, 20)); },
                            [&] { return !dragged().isEmpty(); });
                        stage.prepare(
                            QStringLiteral("the row at its new place"),
                            [&] { stage.pointer().dragTo(to); },
                            // Beside the pointer, where it is opaque.
                            [&] { return dragged().adjusted(-30, -40, 0, 0).contains(to); });
                        stage.screenshot(QStringLiteral("dragging"));
                        stage.pointer().release();
                    });
    stage.prepare(
        QStringLiteral("nothing under the pointer"), [] {}, [&] { return dragged().isEmpty(); });
    stage.settle();
    const QPoint ground = places::inRow(2, RowPart::RefusedSign);
    const QColor notChosen = stage.colorAtPlace(ground);
    stage.prepare(
        QStringLiteral("the last rule chosen"), [&] { stage.click(2, RowPart::Name); },
        [&] { return stage.colorAtPlace(ground) != notChosen; });
    stage.seesRules(QStringLiteral("pressed Alt+Up twice on the last rule"),
                    {kEditorRule, kTerminal, kMarkerRule}, [&] {
                        for (int i = 0; i < 2; ++i)
                            stage.press({QStringLiteral("Alt+Up"), {testing::xkey::kLeftAlt, kUp}});
                    });
    stage.startsMarker(QStringLiteral("pressed L⌘K"), leftCommand(keys::kK));
}

void sceneDelete(PreferencesStage &stage) {
    const QString title = QStringLiteral("Delete Shortcut");
    beginWithThree(stage);
    const QStringList before = stage.rules();
    stage.click(0, RowPart::Delete);
    (void)stage.waitForWindow(title);
    stage.screenshot(QStringLiteral("delete"));
    stage.sees(
        QStringLiteral("clicked “Delete” of the first rule, Escape"),
        QStringLiteral("the question goes, the rule stays"), [&] { stage.pressKey(kEscape); },
        [&] { return !stage.windowTitled(title); },
        [&] { return stage.rules() == before ? QString() : QStringLiteral("it is gone"); });
    stage.click(0, RowPart::Delete);
    (void)stage.waitForWindow(title);
    stage.seesRules(QStringLiteral("again, now with Tab and Space on “Delete”"),
                    {kTerminal, kEditorRule}, [&] {
                        stage.pressKey(kTab);
                        stage.pressKey(testing::xkey::kSpace);
                    });
    stage.passesToFront(QStringLiteral("pressed L⌘K"), leftCommand(keys::kK));
}

void sceneManyRules(PreferencesStage &stage) {
    constexpr int kRules = 1000;
    constexpr int kMoreThanEnoughNotches = kRules;
    constexpr std::uint64_t kControlOption = 0xC0000;
    constexpr std::array kKeys{keys::kA, keys::kC, keys::kD, keys::kE, keys::kF};
    std::vector<RuleSpec> rules;
    for (int i = 0; i < kRules - 1; ++i) {
        RuleSpec rule = ruleWithoutHotkey(
            QStringLiteral("Rule %1").arg(i + 1),
            i % 2 == 0 ? QStringLiteral("thunar") : QStringLiteral("org.xfce.mousepad"));
        rule.key = kKeys[static_cast<std::size_t>(i) % kKeys.size()];
        rule.modifierFlags = kControlOption;
        rules.push_back(rule);
    }
    rules.push_back(markerRule(stage.desktop().home(), keys::kK));
    stage.useRules(rules);
    stage.restartProgram({});
    stage.bringFrontProgram();
    stage.sees(
        QStringLiteral("opened the preferences of 1,000 rules for the first time"),
        QStringLiteral("they come forward"), [&] { stage.askFor(QStringLiteral("preferences")); },
        [&] { return stage.isInFront(ShellStage::kPreferencesSize); });
    stage.screenshot(QStringLiteral("many-rules"));

    XClient &client = stage.view().client();
    const QRect texts(stage.onScreen({places::kTextsLeft, places::kRowsBottom - places::kRowPitch}),
                      QSize(300, places::kRowPitch));
    stage.pointer().moveTo(texts.center());
    stage.sees(
        QStringLiteral("turned the wheel to the end"),
        QStringLiteral("the list comes to rest at the only rule whose arguments are shown"), [] {},
        [&] {
            // A window that has just come forward does not get every notch.
            stage.pointer().turnWheelDown(kMoreThanEnoughNotches);
            const auto rest = settledPictureOf(client, texts);
            return rest && showsArguments(*rest);
        });
    stage.screenshot(QStringLiteral("many-rules-end"));
    const QStringList before = stage.rules();
    QStringList after = before;
    after.last() = QStringLiteral("Marker 5 100008 launchArgs “--marker”");
    stage.startRecording(places::inLastRow(RowPart::Recorder));
    stage.sees(
        QStringLiteral("recorded L⌘G in the last row"), QStringLiteral("it is the last rule's"),
        [&] { stage.press(leftCommand(keys::kG)); }, [&] { return stage.rules() == after; });
    stage.startsMarker(QStringLiteral("pressed L⌘G"), leftCommand(keys::kG));
}

}  // namespace kestrelbay::desktop
