#include <QFileInfo>

#include "hotkeys/ManagerFixture.h"
#include "model/RuleJson.h"

using namespace Qt::StringLiterals;
using News = kestrelbay::ShortcutManager::RuleFileNews;

namespace kestrelbay {

namespace {

/// The rule file is edited by hand while the program runs.
class ShortcutManagerFile : public ManagerFixture {
protected:
    void addAll(const QStringList &newNames) {
        for (const QString &name : newNames)
            manager().addRule(rule(name));
        rulesTakenInCalls_ = 0;
    }
    /// The rules as they are, but changed; as an editor would write them.
    void edit(const std::function<void(ShortcutManager::Rules &)> &change) {
        ShortcutManager::Rules rules = manager().rules();
        change(rules);
        writeFile(encodeRules(rules));
    }
    void add(const QString &name) {
        edit([&](ShortcutManager::Rules &rules) { rules.push_back(rule(name)); });
    }
    [[nodiscard]] QByteArray kept() const {
        QFile file(filePath() + u".unreadable"_s);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "(none)";
    }
    [[nodiscard]] QStringList namesOnDisk() {
        QStringList names;
        for (const ShortcutRule &rule : RuleFile(filePath()).load().rules)
            names.append(rule.appName);
        return names;
    }
};

TEST_F(ShortcutManagerFile, AnEditIsTakenInWithItsHotkeys) {
    addAll({u"A"_s});
    edit([](ShortcutManager::Rules &rules) { rules.push_back(rule(u"B"_s, 17, 0x100000)); });
    EXPECT_EQ(manager().takeInRuleFile(), News::TakenIn);
    EXPECT_EQ(names(), (QStringList{u"A"_s, u"B"_s}));
    EXPECT_EQ(lastRules_, manager().rules());
    EXPECT_EQ(rulesTakenInCalls_, 1);
    EXPECT_EQ(tap_.wantedHotkeys().size(), 1U);
    EXPECT_EQ(manager().takeInRuleFile(), News::None);
    EXPECT_EQ(rulesTakenInCalls_, 1);
}

TEST_F(ShortcutManagerFile, WhatItWroteItselfIsNoNews) {
    addAll({u"A"_s, u"B"_s});
    manager().moveRule(0, 1);
    EXPECT_EQ(manager().takeInRuleFile(), News::None);
    const int calls = rulesChangedCalls_;
    // Other bytes that mean the same.
    writeFile(encodeRules(manager().rules()) + "\n");
    EXPECT_EQ(manager().takeInRuleFile(), News::None);
    EXPECT_EQ(rulesChangedCalls_, calls);
    EXPECT_EQ(rulesTakenInCalls_, 0);
}

TEST_F(ShortcutManagerFile, ABrokenEditLeavesTheRulesAndIsToldOnce) {
    addAll({u"A"_s});
    writeFile("[{");
    EXPECT_EQ(manager().takeInRuleFile(), News::Unusable);
    EXPECT_EQ(names(), QStringList{u"A"_s});
    EXPECT_EQ(log_.lines(), QStringList());
    EXPECT_EQ(manager().takeInRuleFile(), News::None);
    manager().tellRuleFileProblem();
    manager().tellRuleFileProblem();
    EXPECT_EQ(log_.lines(), QStringList{u"KestrelBay [WARN] rules.json cannot be used: "
                                        "it is not a list of rules"_s});
    add(u"B"_s);
    EXPECT_EQ(manager().takeInRuleFile(), News::TakenIn);
    EXPECT_EQ(names(), (QStringList{u"A"_s, u"B"_s}));
}

TEST_F(ShortcutManagerFile, AProblemThatHasGoneIsNotTold) {
    addAll({u"A"_s});
    writeFile("");
    EXPECT_EQ(manager().takeInRuleFile(), News::Unusable);
    add(u"B"_s);
    EXPECT_EQ(manager().takeInRuleFile(), News::TakenIn);
    manager().tellRuleFileProblem();
    EXPECT_EQ(log_.lines(), QStringList());
}

TEST_F(ShortcutManagerFile, AFileThatIsGoneComesBackWithTheNextChange) {
    addAll({u"A"_s});
    removeFile();
    EXPECT_EQ(manager().takeInRuleFile(), News::Unusable);
    EXPECT_EQ(names(), QStringList{u"A"_s});
    manager().tellRuleFileProblem();
    EXPECT_EQ(log_.lines(), QStringList{u"KestrelBay [WARN] rules.json cannot be used: "
                                        "it is gone"_s});
    manager().addRule(rule(u"B"_s));
    EXPECT_EQ(namesOnDisk(), (QStringList{u"A"_s, u"B"_s}));
    EXPECT_EQ(kept(), "(none)");
}

TEST_F(ShortcutManagerFile, AChangeOfOursComesUponTheEdit) {
    addAll({u"A"_s});
    add(u"B"_s);
    manager().addRule(rule(u"C"_s));
    EXPECT_EQ(names(), (QStringList{u"A"_s, u"B"_s, u"C"_s}));
    EXPECT_EQ(namesOnDisk(), names());
    EXPECT_EQ(rulesTakenInCalls_, 1);
}

TEST_F(ShortcutManagerFile, AChangeOfOursKeepsABrokenEditBesideIt) {
    addAll({u"A"_s});
    writeFile("[{my precious");
    manager().addRule(rule(u"B"_s));
    EXPECT_EQ(kept(), "[{my precious");
    EXPECT_EQ(namesOnDisk(), (QStringList{u"A"_s, u"B"_s}));
    EXPECT_EQ(log_.lines().size(), 1);
    manager().addRule(rule(u"C"_s));
    EXPECT_EQ(log_.lines().size(), 1);
    EXPECT_FALSE(QFileInfo::exists(filePath() + u".unreadable.2"_s));
}

TEST_F(ShortcutManagerFile, ARuleThatBothChangedHasBothChanges) {
    addAll({u"A"_s});
    edit([](ShortcutManager::Rules &rules) { rules[0].launchArguments = u"theirs"_s; });
    ShortcutRule ours = manager().rules().front();
    ours.keyCode = KeyCode{17};
    ours.modifierFlags = ModifierFlags(0x100000);
    manager().updateRule(ours);
    const ShortcutRule &both = manager().rules().front();
    EXPECT_EQ(both.launchArguments, u"theirs"_s);
    EXPECT_EQ(both.keyCode, KeyCode{17});
    EXPECT_EQ(RuleFile(filePath()).load().rules, manager().rules());
}

TEST_F(ShortcutManagerFile, ARuleThatTheyRemovedIsNotBroughtBack) {
    addAll({u"A"_s, u"B"_s});
    ShortcutRule ours = manager().rules().front();
    edit([](ShortcutManager::Rules &rules) { rules.erase(rules.begin()); });
    ours.isEnabled = false;
    manager().updateRule(ours);
    EXPECT_EQ(names(), QStringList{u"B"_s});
    EXPECT_EQ(namesOnDisk(), names());
}

TEST_F(ShortcutManagerFile, TheRuleThatWasMeantIsRemoved) {
    addAll({u"A"_s, u"B"_s, u"C"_s});
    edit([](ShortcutManager::Rules &rules) { std::swap(rules[0], rules[2]); });
    manager().removeRule(0);
    EXPECT_EQ(names(), (QStringList{u"C"_s, u"B"_s}));
    edit([](ShortcutManager::Rules &rules) { rules.erase(rules.begin()); });
    manager().removeRule(0);
    EXPECT_EQ(names(), QStringList{u"B"_s});
    EXPECT_EQ(namesOnDisk(), names());
}

TEST_F(ShortcutManagerFile, PlacesOfAListThatIsNoMoreAreNotMoved) {
    addAll({u"A"_s, u"B"_s, u"C"_s});
    edit([](ShortcutManager::Rules &rules) { std::swap(rules[0], rules[2]); });
    manager().moveRule(0, 1);
    EXPECT_EQ(names(), (QStringList{u"C"_s, u"B"_s, u"A"_s}));
    manager().moveRule(0, 1);
    EXPECT_EQ(names(), (QStringList{u"B"_s, u"C"_s, u"A"_s}));
}

TEST_F(ShortcutManagerFile, RulesWithoutIdsStayTheSame) {
    writeFile(R"([{"appName": "A"}, {"appName": "A"}, {"appName": "B"}])");
    const ShortcutManager::Rules before = manager().rules();
    writeFile(R"([{"appName": "B"}, {"appName": "A"}, {"appName": "A"}, {"appName": "A"},
                  {"appName": "C"}])");
    EXPECT_EQ(manager().takeInRuleFile(), News::TakenIn);
    const ShortcutManager::Rules &after = manager().rules();
    ASSERT_EQ(after.size(), 5U);
    EXPECT_EQ(after[0].id, before[2].id);
    EXPECT_EQ(after[1].id, before[0].id);
    EXPECT_EQ(after[2].id, before[1].id);
    std::set<QUuid> ids;
    for (const ShortcutRule &rule : after)
        ids.insert(rule.id);
    EXPECT_EQ(ids.size(), 5U);
}

TEST_F(ShortcutManagerFile, AnIdThatTheyWroteIsObeyed) {
    addAll({u"A"_s});
    const QUuid id = QUuid::createUuid();
    edit([&](ShortcutManager::Rules &rules) { rules[0].id = id; });
    EXPECT_EQ(manager().takeInRuleFile(), News::TakenIn);
    EXPECT_EQ(manager().rules().front().id, id);
}

}  // namespace

}  // namespace kestrelbay
