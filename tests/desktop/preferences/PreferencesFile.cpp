#include "desktop/preferences/PreferencesScenes.h"

#include <QFile>

namespace kestrelbay::desktop {

namespace {

using places::RowPart;
using testing::xkey::kEscape;

}  // namespace

void sceneEditedByHand(PreferencesStage &stage) {
    const QString path = stage.desktop().home().rulesPath();
    const auto marker = [&](const Key &key) { return markerRule(stage.desktop().home(), key); };
    const auto write = [&](const std::vector<RuleSpec> &rules) {
        HomeFolder::write(path, rulesJson(rules));
    };
    stage.begin({marker(keys::kK)});
    stage.sees(
        QStringLiteral("wrote rules.json by hand, with another key and another rule"),
        QStringLiteral("their keys are grabbed, the old one is not"),
        [&] {
            write({marker(keys::kX), editorRule()});
        },
        [&] {
            return stage.isGrabbed(keys::kX) && stage.isGrabbed(keys::kE) &&
                   !stage.isGrabbed(keys::kK);
        });
    stage.settle();
    stage.screenshot(QStringLiteral("edited-by-hand"));
    stage.seesRules(QStringLiteral("switched the new row off"),
                    {QStringLiteral("Marker 7 100008 launchArgs “--marker”"),
                     QStringLiteral("Editor 14 100008 off")},
                    [&] { stage.click(1, RowPart::Switch); });
    stage.bringFrontProgram();
    stage.startsMarker(QStringLiteral("pressed L⌘X"), leftCommand(keys::kX));

    const QString title = QStringLiteral("Advanced · Editor");
    stage.openPreferences();
    stage.click(1, RowPart::Advanced);
    (void)stage.waitForWindow(title);
    write({marker(keys::kK), editorRule()});
    QString report;
    stage.sees(
        QStringLiteral("wrote it while a sheet was open, and had a report"),
        QStringLiteral("other rules are in use"),
        [&] { report = stage.startAgain({QStringLiteral("--diagnose")}).output; },
        [&] {
            return report.contains(QStringLiteral("Rule file in use: no")) &&
                   stage.isGrabbed(keys::kX);
        });
    stage.sees(
        QStringLiteral("closed the sheet"), QStringLiteral("the rules of the file are in force"),
        [&] { stage.pressKey(kEscape); },
        [&] { return stage.isGrabbed(keys::kK) && !stage.isGrabbed(keys::kX); });

    stage.sees(
        QStringLiteral("wrote half a file"), QStringLiteral("a warning, and the rules stay"),
        [&] { HomeFolder::write(path, "[{\"appName\":"); },
        [&] {
            return stage.program().line({QStringLiteral("rules.json cannot be used")}) &&
                   stage.isGrabbed(keys::kK);
        });
    stage.settle();
    stage.seesRules(QStringLiteral("switched a row off"),
                    {QStringLiteral("Marker 40 100008 launchArgs “--marker”"),
                     QStringLiteral("Editor 14 100008 off")},
                    [&] { stage.click(1, RowPart::Switch); });
    stage.sees(
        QStringLiteral("looked beside it"), QStringLiteral("the half file is kept"), [] {},
        [&] { return HomeFolder::read(path + QStringLiteral(".unreadable")) == "[{\"appName\":"; });
    QFile::remove(path + QStringLiteral(".unreadable"));
}

}  // namespace kestrelbay::desktop
