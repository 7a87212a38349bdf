#include "desktop/preferences/PreferencesScenes.h"

#include <QColor>
#include <QFileInfo>

namespace kestrelbay::desktop {

namespace {

using places::RowPart;
using shellkeys::kDown;
using shellkeys::kReturn;

const QString kMissing = QStringLiteral("Elsewhere 34 100008");

RuleSpec missingRule() {
    return {.appName = QStringLiteral("Elsewhere"),
            .appPath = QStringLiteral("/opt/elsewhere/share/applications/elsewhere.desktop"),
            .key = keys::kI};
}

Stage::Ending import(PreferencesStage &stage, const QString &file, const QStringList &more = {}) {
    return stage.startAgain(QStringList{QStringLiteral("--import"), file} + more);
}

/// Opens it beside the rows, and takes the entry at this place, counted from one.
void chooseFromListMenu(PreferencesStage &stage, int entry) {
    const QPoint ground = places::inRow(7, RowPart::Name);
    (void)stage.waitForMenu(
        [&] { stage.pointer().click(stage.onScreen(ground), Pointer::Button::Right); });
    for (int i = 0; i < entry; ++i)
        stage.pressKey(kDown);
    stage.pressKey(kReturn);
}

}  // namespace

void sceneCarriedByCommand(PreferencesStage &stage) {
    const QString file = stage.desktop().home().path(QStringLiteral("carried.json"));
    stage.begin({markerRule(stage.desktop().home(), keys::kK)});
    HomeFolder::write(file, rulesJson({markerRule(stage.desktop().home(), keys::kK), editorRule(),
                                       missingRule()}));
    Stage::Ending ending;
    const QStringList before = stage.rules();
    stage.sees(
        QStringLiteral("--import where nobody can be asked"),
        QStringLiteral("it shows what it would add and adds nothing"),
        [&] { ending = import(stage, file); },
        [&] {
            return ending.code == 1 && ending.output.contains(QStringLiteral("Editor\tL⌘E")) &&
                   ending.output.contains(QStringLiteral("not installed here")) &&
                   ending.output.contains(QStringLiteral("left out: already in the list")) &&
                   ending.output.contains(QStringLiteral("say --yes"));
        },
        [&] { return stage.rules() == before ? QString() : QStringLiteral("it was added"); });
    stage.seesRules(QStringLiteral("--import --yes while KestrelBay runs"),
                    {kMarkerRule, kEditorRule, kMissing},
                    [&] { ending = import(stage, file, {QStringLiteral("--yes")}); });
    stage.sees(
        QStringLiteral("waited"), QStringLiteral("their hotkeys are grabbed"), [] {},
        [&] { return ending.code == 0 && stage.isGrabbed(keys::kE) && stage.isGrabbed(keys::kI); });
    stage.settle();
    stage.screenshot(QStringLiteral("imported-by-command"));
    stage.seesRules(QStringLiteral("switched the new row off"),
                    {kMarkerRule, kEditorRule + QStringLiteral(" off"), kMissing},
                    [&] { stage.click(1, RowPart::Switch); });

    const QString copy = stage.desktop().home().path(QStringLiteral("copy.json"));
    stage.sees(
        QStringLiteral("--export"), QStringLiteral("all rules are in the file, for the user only"),
        [&] {
            ending = stage.startAgain({QStringLiteral("--export"), copy});
        },
        [&] {
            constexpr auto kOwnerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                        QFileDevice::ReadUser | QFileDevice::WriteUser;
            return ending.code == 0 &&
                   HomeFolder::read(copy) == HomeFolder::read(stage.desktop().home().rulesPath()) &&
                   QFileInfo(copy).permissions() == kOwnerOnly;
        });
    stage.endProgram();
    HomeFolder::write(stage.desktop().home().rulesPath(), "[]");
    stage.seesRules(QStringLiteral("--import --yes of it into no rules, and no instance runs"),
                    {kMarkerRule, kEditorRule + QStringLiteral(" off"), kMissing},
                    [&] { ending = import(stage, copy, {QStringLiteral("--yes")}); });
}

void sceneCarriedByMenu(PreferencesStage &stage) {
    const QString file = stage.desktop().home().path(QStringLiteral("carried.json"));
    const QString dialog = QStringLiteral("Import Shortcuts");
    stage.begin({markerRule(stage.desktop().home(), keys::kK)});
    RuleSpec other = editorRule();
    other.key = keys::kK;
    HomeFolder::write(
        file, rulesJson({markerRule(stage.desktop().home(), keys::kK), other, missingRule()}));
    chooseFromListMenu(stage, 1);
    (void)stage.waitForWindow(dialog);
    stage.type(file);
    stage.sees(
        QStringLiteral("“Import...”, typed the name of a file, Return"),
        QStringLiteral("a sheet with what it would add"), [&] { stage.pressKey(kReturn); },
        [&] { return stage.isInFront(places::kImportSheet); });
    stage.settle();
    stage.screenshot(QStringLiteral("import-sheet"));
    stage.seesRules(QStringLiteral("pressed Return"),
                    {kMarkerRule, QStringLiteral("Editor 0 0"), kMissing},
                    [&] { stage.pressKey(kReturn); });
    stage.prepare(
        QStringLiteral("the preferences"), [] {},
        [&] { return stage.isInFront(ShellStage::kPreferencesSize); });
    const QPoint icon = places::kFirstIcon + QPoint(0, places::kRowPitch);
    stage.sees(
        QStringLiteral("waited"), QStringLiteral("the new rows have their icons"), [] {},
        [&] {
            return stage.colorAtPlace(icon) !=
                   stage.colorAtPlace(icon + QPoint(0, 5 * places::kRowPitch));
        });
    stage.screenshot(QStringLiteral("imported-by-menu"));

    const QString copy = stage.desktop().home().path(QStringLiteral("by-menu.json"));
    chooseFromListMenu(stage, 2);
    (void)stage.waitForWindow(QStringLiteral("Export Shortcuts"));
    // The suggested name is selected.
    stage.type(copy);
    stage.sees(
        QStringLiteral("“Export...”, typed the name of a file, Return"),
        QStringLiteral("all rules are in it"), [&] { stage.pressKey(kReturn); },
        [&] {
            return QFileInfo::exists(copy) &&
                   HomeFolder::read(copy) == HomeFolder::read(stage.desktop().home().rulesPath());
        });
}

}  // namespace kestrelbay::desktop
