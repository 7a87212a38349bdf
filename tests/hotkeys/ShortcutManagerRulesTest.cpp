#include <QDir>
#include <QFileInfo>

#include "hotkeys/ManagerFixture.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

class ShortcutManagerRules : public ManagerFixture {
protected:
    void addAll(const QStringList &newNames) {
        for (const QString &name : newNames)
            manager().addRule(rule(name));
    }
};

QStringList abc() {
    return {u"A"_s, u"B"_s, u"C"_s};
}

TEST_F(ShortcutManagerRules, MissingFileGivesNoRulesAndWritesNone) {
    EXPECT_TRUE(manager().rules().empty());
    EXPECT_FALSE(fileExists());
    EXPECT_EQ(log_.lines(), QStringList());
    manager().addRule(rule(u"A"_s));
    EXPECT_TRUE(fileExists());
}

TEST_F(ShortcutManagerRules, StorageFolderIsCreatedWithItsParents) {
    const QString path = folder_.filePath(u"a/b/KestrelBay"_s);
    const ShortcutManager manager(path, tap_, log_, {});
    EXPECT_TRUE(QFileInfo(path).isDir());
}

TEST_F(ShortcutManagerRules, NoStorageFolderAtAllIsFatal) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(ShortcutManager(QString(), tap_, log_, {}), "no folder");
}

TEST_F(ShortcutManagerRules, StorageFolderThatCannotBeMadeIsNoError) {
    writeFile("[]");
    ShortcutManager manager(filePath() + u"/KestrelBay"_s, tap_, log_, {});
    manager.addRule(rule(u"A"_s));
    EXPECT_EQ(manager.rules().size(), 1U);
    EXPECT_EQ(log_.lines(), QStringList());
}

TEST_F(ShortcutManagerRules, SharedIsTheManagerThatWasSet) {
    ShortcutManager::setShared(manager());
    EXPECT_EQ(&ShortcutManager::shared(), &manager());
}

TEST_F(ShortcutManagerRules, ObjectInsteadOfArrayGivesNoRules) {
    writeFile("{}");
    EXPECT_TRUE(manager().rules().empty());
}

TEST_F(ShortcutManagerRules, ArrayWithANumberGivesNoRules) {
    writeFile(R"([{"appName":"A"},3])");
    EXPECT_TRUE(manager().rules().empty());
}

TEST_F(ShortcutManagerRules, BadFieldsDoNotFailTheLoad) {
    writeFile(R"([{"appName":"A","keyCode":"x"},{}])");
    EXPECT_EQ(names(), (QStringList{u"A"_s, QString()}));
    EXPECT_EQ(log_.lines(), QStringList());
}

TEST_F(ShortcutManagerRules, BadFileIsWorthOneWarning) {
    writeFile("{}");
    EXPECT_TRUE(manager().rules().empty());
    ASSERT_EQ(log_.lines().size(), 1);
    EXPECT_TRUE(
        log_.lines().front().startsWith(u"KestrelBay [WARN] rules.json cannot be used: "_s));
}

TEST_F(ShortcutManagerRules, BadFileStaysUntilAChangeThenIsKept) {
    writeFile("{}");
    EXPECT_EQ(QFileInfo(filePath()).size(), manager().rules().empty() ? 2 : 0);
    manager().addRule(rule(u"A"_s));
    QFile kept(filePath() + u".unreadable"_s);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "{}");
    restart();
    EXPECT_EQ(names(), QStringList{u"A"_s});
}

TEST_F(ShortcutManagerRules, AddAppendsAndSaves) {
    addAll(abc());
    EXPECT_EQ(names(), abc());
    const ShortcutManager::Rules before = manager().rules();
    restart();
    EXPECT_EQ(manager().rules(), before);
}

TEST_F(ShortcutManagerRules, LoadReplacesTheList) {
    addAll(abc());
    writeFile(R"([{"appName":"X"}])");
    manager().loadRules();
    EXPECT_EQ(names(), QStringList{u"X"_s});
}

TEST_F(ShortcutManagerRules, UpdateReplacesInPlaceAndSaves) {
    addAll(abc());
    ShortcutRule changed = manager().rules()[1];
    changed.appName = u"B2"_s;
    manager().updateRule(changed);
    EXPECT_EQ(names(), (QStringList{u"A"_s, u"B2"_s, u"C"_s}));
    restart();
    EXPECT_EQ(names(), (QStringList{u"A"_s, u"B2"_s, u"C"_s}));
}

TEST_F(ShortcutManagerRules, UpdateOfARepeatedIdChangesTheFirst) {
    ShortcutRule twin = rule(u"A"_s);
    manager().addRule(twin);
    manager().addRule(twin);
    twin.appName = u"B"_s;
    manager().updateRule(twin);
    EXPECT_EQ(names(), (QStringList{u"B"_s, u"A"_s}));
}

TEST_F(ShortcutManagerRules, UpdateOfAnUnknownIdChangesAndWritesNothing) {
    addAll(abc());
    removeFile();
    rulesChangedCalls_ = 0;
    manager().updateRule(rule(u"X"_s));
    EXPECT_EQ(names(), abc());
    EXPECT_FALSE(fileExists());
    EXPECT_EQ(rulesChangedCalls_, 0);
}

TEST_F(ShortcutManagerRules, RemoveTakesTheRuleOutAndSaves) {
    addAll(abc());
    manager().removeRule(1);
    EXPECT_EQ(names(), (QStringList{u"A"_s, u"C"_s}));
    restart();
    EXPECT_EQ(names(), (QStringList{u"A"_s, u"C"_s}));
}

TEST_F(ShortcutManagerRules, RemoveOutsideTheListDoesNothing) {
    addAll(abc());
    removeFile();
    manager().removeRule(3);
    manager().removeRule(-1);
    EXPECT_EQ(names(), abc());
    EXPECT_FALSE(fileExists());
}

TEST_F(ShortcutManagerRules, MoveDown) {
    addAll(abc());
    manager().moveRule(0, 2);
    EXPECT_EQ(names(), (QStringList{u"B"_s, u"C"_s, u"A"_s}));
    restart();
    EXPECT_EQ(names(), (QStringList{u"B"_s, u"C"_s, u"A"_s}));
}

TEST_F(ShortcutManagerRules, MoveUp) {
    addAll(abc());
    manager().moveRule(2, 0);
    EXPECT_EQ(names(), (QStringList{u"C"_s, u"A"_s, u"B"_s}));
}

TEST_F(ShortcutManagerRules, MoveToTheNextPlace) {
    addAll(abc());
    manager().moveRule(0, 1);
    EXPECT_EQ(names(), (QStringList{u"B"_s, u"A"_s, u"C"_s}));
}

TEST_F(ShortcutManagerRules, MoveOutsideTheListOrToItsOwnPlaceDoesNothing) {
    addAll(abc());
    removeFile();
    manager().moveRule(1, 3);
    manager().moveRule(1, 1);
    manager().moveRule(1, -1);
    manager().moveRule(-1, 1);
    manager().moveRule(3, 1);
    EXPECT_EQ(names(), abc());
    EXPECT_FALSE(fileExists());
}

TEST_F(ShortcutManagerRules, FailedSaveIsSilentAndKeepsTheListInMemory) {
    ASSERT_TRUE(QDir().mkpath(filePath()));
    EXPECT_EQ(names(), QStringList());
    const QStringList before = log_.lines();
    addAll(abc());
    manager().removeRule(0);
    EXPECT_EQ(names(), (QStringList{u"B"_s, u"C"_s}));
    EXPECT_EQ(log_.lines(), before);
}

TEST_F(ShortcutManagerRules, GlobalSwitchIsOnAgainAfterARestart) {
    manager().setEnabled(false);
    EXPECT_FALSE(manager().isEnabled());
    restart();
    EXPECT_TRUE(manager().isEnabled());
}

TEST_F(ShortcutManagerRules, ChangesAreToldWithTheNewList) {
    manager();
    EXPECT_EQ(rulesChangedCalls_, 1);
    addAll(abc());
    EXPECT_EQ(rulesChangedCalls_, 4);
    manager().moveRule(0, 2);
    manager().removeRule(0);
    manager().updateRule(manager().rules().front());
    EXPECT_EQ(rulesChangedCalls_, 7);
    EXPECT_EQ(lastRules_, manager().rules());
}

TEST_F(ShortcutManagerRules, ChangesAreInForceBeforeTheyAreSaved) {
    int changes = 0;
    ShortcutManager manager(folder_.path(), tap_, log_,
                            {.rulesChanged = [&](const ShortcutManager::Rules &) {
                                ++changes;
                                EXPECT_FALSE(fileExists());
                            }});
    const auto expectSaved = [&] {
        EXPECT_TRUE(fileExists());
        removeFile();
    };
    manager.addRule(rule(u"a"_s, 17, 0x100000));
    EXPECT_EQ(tap_.wantedHotkeys().size(), 1U);
    expectSaved();
    manager.addRule(rule(u"b"_s));
    expectSaved();
    manager.updateRule(manager.rules().front());
    expectSaved();
    manager.moveRule(0, 1);
    expectSaved();
    manager.removeRule(0);
    expectSaved();
    EXPECT_EQ(changes, 6);
}

TEST_F(ShortcutManagerRules, ARuleThatIsAskedForDoesWhatItsHotkeyWould) {
    ShortcutRule disabled = rule(u"disabled"_s, 40, 0x100000);
    disabled.isEnabled = false;
    ShortcutRule twin = rule(u"twin"_s);
    const ShortcutRule withoutHotkey = rule(u"without hotkey"_s);
    twin.id = withoutHotkey.id;
    const ShortcutRule withoutApplication{.appName = u"nothing to start"_s};
    for (const ShortcutRule &one : {disabled, withoutHotkey, twin, withoutApplication})
        manager().addRule(one);

    EXPECT_TRUE(manager().runRule(withoutHotkey.id));
    EXPECT_EQ(fired_, QStringList{u"without hotkey"_s});
    EXPECT_TRUE(manager().runRule(disabled.id));
    EXPECT_TRUE(manager().runRule(withoutApplication.id));
    EXPECT_FALSE(manager().runRule(QUuid::createUuid()));
    EXPECT_FALSE(manager().runRule(QUuid()));
    EXPECT_EQ(fired_.size(), 1);
    manager().setEnabled(false);
    EXPECT_TRUE(manager().runRule(withoutHotkey.id));
    EXPECT_EQ(fired_.size(), 1);
    manager().setEnabled(true);
    manager().teardownEventTap();
    EXPECT_TRUE(manager().runRule(withoutHotkey.id));
    EXPECT_EQ(fired_.size(), 2);
}

TEST_F(ShortcutManagerRules, PressesThatWaitAreAnsweredBeforeASave) {
    int fired = 0;
    ShortcutManager manager(folder_.path(), tap_, log_, {.ruleFired = [&](const ShortcutRule &) {
                                ++fired;
                                EXPECT_FALSE(fileExists());
                            }});
    manager.addRule(rule(u"F5"_s, 96, 0));
    removeFile();
    tap_.pressUnread(KeyCode{96});
    manager.addRule(rule(u"b"_s));
    EXPECT_EQ(fired, 1);
    EXPECT_TRUE(fileExists());
}

}  // namespace

}  // namespace kestrelbay
