#include "hotkeys/ManagerFixture.h"
#include "model/RuleJson.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

class ShortcutManagerImport : public ManagerFixture {
protected:
    [[nodiscard]] std::vector<ShortcutRule> rulesOnDisk() {
        return RuleFile(filePath()).load().rules;
    }
};

TEST_F(ShortcutManagerImport, AddsBehindTheListAndSavesOnce) {
    manager().addRule(rule(u"A"_s, 17, 0x100008));
    rulesChangedCalls_ = 0;
    const auto import =
        manager().importRules({rule(u"B"_s, 17, 0x100008), rule(u"C"_s, 18, 0x100008)});
    ASSERT_TRUE(import);
    EXPECT_EQ(import->additions.size(), 2U);
    EXPECT_EQ(names(), (QStringList{u"A"_s, u"B"_s, u"C"_s}));
    EXPECT_EQ(manager().rules().at(1).hotkeyString(), QString());
    EXPECT_EQ(rulesOnDisk(), manager().rules());
    EXPECT_EQ(rulesChangedCalls_, 1);
    EXPECT_EQ(tap_.wantedHotkeys().size(), 2U);
}

TEST_F(ShortcutManagerImport, KeepsWhatOthersHaveDoneToTheFile) {
    manager().addRule(rule(u"A"_s));
    const ShortcutRule byHand = rule(u"By hand"_s, 17, 0x100008);
    writeFile(encodeRules({byHand}));
    const auto import = manager().importRules({byHand, rule(u"B"_s, 17, 0x100008)});
    ASSERT_TRUE(import);
    EXPECT_EQ(import->leftOut.size(), 1U);
    EXPECT_TRUE(import->additions.at(0).lostHotkey);
    EXPECT_EQ(names(), (QStringList{u"By hand"_s, u"B"_s}));
    EXPECT_EQ(rulesOnDisk(), manager().rules());
}

TEST_F(ShortcutManagerImport, AddsNothingThatCannotBeSaved) {
    writeFile("[]");
    // Where a file is there can be no folder.
    ShortcutManager manager(filePath() + u"/KestrelBay"_s, tap_, log_, {});
    EXPECT_FALSE(manager.importRules({rule(u"A"_s, 17, 0x100008)}));
    EXPECT_TRUE(manager.rules().empty());
    EXPECT_TRUE(tap_.wantedHotkeys().empty());
}

TEST_F(ShortcutManagerImport, WritesNothingWhereThereIsNothingToAdd) {
    manager().addRule(rule(u"A"_s));
    removeFile();
    ASSERT_TRUE(manager().importRules({{.appName = u"No application"_s}}));
    EXPECT_FALSE(fileExists());
}

TEST_F(ShortcutManagerImport, InsertsARuleAtItsPlaceOnce) {
    manager().addRule(rule(u"A"_s));
    manager().addRule(rule(u"C"_s));
    const ShortcutRule between = rule(u"B"_s);
    manager().insertRule(between, 1);
    manager().insertRule(between, 0);
    manager().insertRule(rule(u"D"_s), 9);
    EXPECT_EQ(names(), (QStringList{u"A"_s, u"B"_s, u"C"_s, u"D"_s}));
    EXPECT_EQ(rulesOnDisk(), manager().rules());
}

TEST_F(ShortcutManagerImport, TellsWhichRuleWasRemovedAsTheFileHadIt) {
    manager().addRule(rule(u"A"_s));
    EXPECT_EQ(manager().removeRule(1), std::nullopt);
    ShortcutRule edited = manager().rules().front();
    edited.launchArguments = u"--by-hand"_s;
    writeFile(encodeRules({edited}));
    EXPECT_EQ(manager().removeRule(0), edited);
}

}  // namespace
}  // namespace kestrelbay
