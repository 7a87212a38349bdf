#include "app/DiagnosticReport.h"

#include <sys/stat.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include "fakes/FakePlatform.h"
#include "hotkeys/ShortcutManager.h"
#include "model/RuleFile.h"

namespace kestrelbay {
namespace {

using testing::HasSubstr;
using testing::Not;

class DiagnosticReportTest : public testing::Test {
protected:
    DiagnosticReportTest() {
        QCoreApplication::setApplicationVersion(QStringLiteral("1.2.3"));
        platform_.setApplicationSupportDirectory(folder_.path());
        QDir(folder_.path()).mkpath(QStringLiteral("KestrelBay"));
    }
    ~DiagnosticReportTest() override { QCoreApplication::setApplicationVersion({}); }

    QString rulesPath() const { return folder_.filePath(QStringLiteral("KestrelBay/rules.json")); }
    void writeRules(const ShortcutManager::Rules &rules) const {
        ASSERT_TRUE(RuleFile(rulesPath()).save(rules));
    }
    void writeFile(const QByteArray &content) const {
        QFile file(rulesPath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    std::string report(const ShortcutManager *manager = nullptr) {
        return diagnosticReport(platform_, manager).toStdString();
    }
    std::unique_ptr<ShortcutManager> start() {
        return std::make_unique<ShortcutManager>(storageDirectory(platform_), platform_.eventTap(),
                                                 platform_.systemLog(), ShortcutManager::Hooks{});
    }

    static ShortcutRule rule(std::uint16_t keyCode) {
        return {.appName = QStringLiteral("Editor"),
                .appPath = QStringLiteral("/apps/editor"),
                .keyCode = KeyCode{keyCode},
                .modifierFlags = modifier::kCommand};
    }

    QTemporaryDir folder_;
    FakePlatform platform_;
};

TEST_F(DiagnosticReportTest, NamesTheVersionAndWhatTheSystemSays) {
    platform_.setDiagnostics({{QStringLiteral("Window manager"), QStringLiteral("Glass")}});
    EXPECT_THAT(report(), HasSubstr("KestrelBay: 1.2.3\n"));
    EXPECT_THAT(report(), HasSubstr("Window manager: Glass\n"));
    EXPECT_THAT(report(), HasSubstr(std::string("Qt: ") + qVersion()));
}

TEST_F(DiagnosticReportTest, TellsWhetherIconsAreDrawn) {
    EXPECT_THAT(report(), HasSubstr("\nDraws icons: yes\n"));
}

TEST_F(DiagnosticReportTest, WithoutAnInstanceTriesTheTapAndGivesItBack) {
    EXPECT_THAT(report(), HasSubstr("Running: no\n"));
    EXPECT_THAT(report(), HasSubstr("Sees keys: yes\n"));
    EXPECT_FALSE(platform_.eventTap().isInstalled());
    platform_.eventTap().setPermission(false);
    EXPECT_THAT(report(), HasSubstr("Sees keys: no, the user has not permitted it\n"));
}

TEST_F(DiagnosticReportTest, WithoutADisplaySaysSoAndLeavesTheTapAlone) {
    platform_.setStartupProblem(QStringLiteral("no screen"));
    EXPECT_THAT(report(), HasSubstr("Sees keys: no screen\n"));
    EXPECT_TRUE(platform_.eventTap().takeCalls().isEmpty());
}

TEST_F(DiagnosticReportTest, OfAnInstanceNamesTheHotkeysOfOthersOnce) {
    writeRules({rule(17), rule(17), rule(3)});
    const auto manager = start();
    EXPECT_THAT(report(manager.get()), HasSubstr("Hotkeys held by other programs: none\n"));
    platform_.eventTap().setHeldByOthers(
        {Hotkey{.keyCode = KeyCode{17}, .modifierFlags = modifier::kCommand}});
    const std::string text = report(manager.get());
    EXPECT_THAT(text, HasSubstr("Running: yes\n"));
    EXPECT_THAT(
        text, HasSubstr("Hotkeys held by other programs: " + rule(17).hotkeyString().toStdString() +
                        " (Another program is using this hotkey)\n"));
    EXPECT_THAT(text, HasSubstr("Shortcuts enabled: yes\n"));
    manager->setEnabled(false);
    EXPECT_THAT(report(manager.get()), HasSubstr("Shortcuts enabled: no\n"));
}

TEST_F(DiagnosticReportTest, NamesTheHotkeysThatRestWhereSidesCannotBeTold) {
    ShortcutRule sided = rule(17);
    sided.modifierFlags = ModifierFlags(0x100008);
    writeRules({sided, rule(3)});
    EXPECT_THAT(report(start().get()), Not(HasSubstr("Hotkeys that rest")));
    platform_.eventTap().setAbilities({.tellsSides = false});
    EXPECT_THAT(report(start().get()),
                HasSubstr("Hotkeys that rest, as sides cannot be told: L⌘T (" +
                          sided.appName.toStdString() + ")\n"));
}

TEST_F(DiagnosticReportTest, SaysWhoHoldsAHotkeyAndHowToFreeItInEnglish) {
    platform_.userDefaults().setString(QStringLiteral("appLanguage"), QStringLiteral("zh"));
    writeRules({rule(17)});
    const auto manager = start();
    const Hotkey hotkey{.keyCode = KeyCode{17}, .modifierFlags = modifier::kCommand};
    platform_.hotkeyHolders().setHolder(
        {hotkey, key::kRightCommand},
        {.program = QStringLiteral("IceWM"), .remedy = QStringLiteral("Win95Keys=0")});
    platform_.eventTap().setHeldByOthers({hotkey}, key::kRightCommand);
    EXPECT_THAT(report(manager.get()),
                HasSubstr(" (This hotkey never arrives: probably IceWM takes all keys pressed "
                          "with this modifier; To free it: Win95Keys=0)\n"));
}

TEST_F(DiagnosticReportTest, CountsRulesButDoesNotNameThem) {
    ShortcutRule disabled = rule(3);
    disabled.isEnabled = false;
    writeRules({rule(17), disabled, {.appName = QStringLiteral("Editor")}});
    EXPECT_THAT(report(), HasSubstr("Rules: 3, 2 enabled, 2 with a hotkey\n"));
    EXPECT_THAT(report(), Not(HasSubstr("Editor")));
    EXPECT_THAT(report(), HasSubstr("rules.json, in order\n"));
}

TEST_F(DiagnosticReportTest, TellsWhatIsWrongWithTheRuleFileAndLeavesIt) {
    EXPECT_THAT(report(), HasSubstr("rules.json, not there yet\n"));
    writeFile("{broken");
    EXPECT_THAT(report(), HasSubstr("rules.json, unusable, "));
    QFile file(rulesPath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "{broken");
}

TEST_F(DiagnosticReportTest, TellsOfRulesThatAreNotThoseInUse) {
    const auto manager = start();
    EXPECT_THAT(report(manager.get()), Not(HasSubstr("Rule file in use")));
    writeRules({rule(17)});
    EXPECT_THAT(report(manager.get()), HasSubstr("Rule file in use: no, other rules are\n"));
}

TEST_F(DiagnosticReportTest, RulesWithoutIdentifiersAreTheSameWhenReadAgain) {
    writeFile(R"([{"appName": "A"}, {"appName": "B"}])");
    const auto manager = start();
    EXPECT_THAT(report(manager.get()), Not(HasSubstr("Rule file in use")));
    writeFile(R"([{"appName": "A"}, {"appName": "C"}])");
    EXPECT_THAT(report(manager.get()), HasSubstr("Rule file in use: no, other rules are\n"));
    writeFile(R"([{"appName": "A"}])");
    EXPECT_THAT(report(manager.get()), HasSubstr("Rule file in use: no, other rules are\n"));
}

TEST_F(DiagnosticReportTest, NamesTheFilesThatOthersMayRead) {
    EXPECT_THAT(report(), HasSubstr("\nFiles open to others: none\n"));
    writeRules({});
    EXPECT_THAT(report(), HasSubstr("\nFiles open to others: none\n"));
    ASSERT_EQ(::chmod(QFile::encodeName(rulesPath()).constData(), 0640), 0);
    EXPECT_THAT(report(), HasSubstr("\nFiles open to others: rules.json (0640)\n"));
    QFile settings(folder_.filePath(QStringLiteral("KestrelBay/settings.json")));
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
    ASSERT_EQ(::fchmod(settings.handle(), 0604), 0);
    EXPECT_THAT(report(), HasSubstr(": rules.json (0640), settings.json (0604)\n"));
}

TEST_F(DiagnosticReportTest, WithoutAFolderForFilesSaysSo) {
    platform_.setApplicationSupportDirectory({});
    EXPECT_EQ(storageDirectory(platform_), QString());
    EXPECT_THAT(report(), HasSubstr("\nRule file: no, there is no folder for it\n"));
}

TEST_F(DiagnosticReportTest, SparesTheNameOfTheHomeFolder) {
    platform_.setDiagnostics(
        {{QStringLiteral("Window 1"), QStringLiteral("by %1/a, %1/b").arg(QDir::homePath())}});
    EXPECT_THAT(report(), HasSubstr("Window 1: by ~/a, ~/b\n"));
    platform_.setApplicationSupportDirectory(QDir::homePath() + QStringLiteral("/.config"));
    EXPECT_THAT(report(), HasSubstr("Rule file: ~/.config/KestrelBay/rules.json"));
}

TEST_F(DiagnosticReportTest, TellsTheSettings) {
    EXPECT_THAT(report(), HasSubstr("Language: en\nFeedback sound: none\nLaunch toast: none\n"
                                    "Starts at login: no\n"));
    platform_.userDefaults().setString(QStringLiteral("appLanguage"), QStringLiteral("zh"));
    platform_.userDefaults().setString(QStringLiteral("soundFeedbackName"), QStringLiteral("Pop"));
    EXPECT_THAT(report(), HasSubstr("Language: zh\nFeedback sound: Pop\n"));
}

}  // namespace
}  // namespace kestrelbay
