#include <QLabel>
#include <QTest>

#include "preferences/rules/RowFixture.h"
#include "preferences/rules/RuleRowView.h"
#include "ui/widgets/SymbolView.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

constexpr std::uint64_t kLeftCommand = 0x100008;
constexpr std::uint64_t kCommand = 0x100000;
const auto kReason =
    u"This hotkey never arrives: this session does not tell left modifier keys from right ones"_s;

class NoList final : public RuleRowViewDelegate {
public:
    void ruleRowViewDidDelete(RuleRowView *, const ShortcutRule &) override {}
    void ruleRowViewDidOpenAdvanced(RuleRowView *, const ShortcutRule &) override {}
};

/// A row where left and right cannot be told apart.
class RuleRowSidesTest : public RowFixture {
protected:
    void SetUp() override {
        tap_.setAbilities({.tellsSides = false});
        manager().reinstallEventTap();
        row_ = new RuleRowView(services(), *icons_, *holders_, window_.get());
        row_->setGeometry(0, 0, 600, RuleRowView::kHeight);
        ASSERT_NO_FATAL_FAILURE(showWindow());
    }

    void addAndShow(std::uint64_t flags) {
        manager().addRule(rule(u"Firefox"_s, 17, flags));
        row_->configure(manager().rules().back(), &list_);
    }
    [[nodiscard]] SymbolButton *sign() const {
        return row_->findChild<SymbolButton *>(u"sidesSign"_s);
    }
    [[nodiscard]] QString shownHotkey() const {
        return row_->hotkeyRecorder()->findChild<QLabel *>()->text();
    }
    [[nodiscard]] QString storedHotkey() { return manager().rules().back().hotkeyString(); }

    NoList list_;
    RuleRowView *row_ = nullptr;
};

TEST_F(RuleRowSidesTest, ARuleThatNamesASideIsSigned) {
    addAndShow(kLeftCommand);
    EXPECT_TRUE(sign()->isVisible());
    EXPECT_EQ(sign()->toolTip(), kReason + u"\nClick to have it mean either side"_s);
    EXPECT_EQ(sign()->accessibleName(), sign()->toolTip());
    EXPECT_EQ(row_->hotkeyRecorder()->accessibleDescription(), kReason);
    EXPECT_TRUE(row_->findChild<QWidget *>(u"refusedSign"_s)->isHidden());
}

TEST_F(RuleRowSidesTest, OneForEitherSideIsNot) {
    addAndShow(kCommand);
    EXPECT_FALSE(sign()->isVisible());
    EXPECT_EQ(row_->hotkeyRecorder()->accessibleDescription(), QString());
}

TEST_F(RuleRowSidesTest, TheSignGoesWhereSidesAreTold) {
    addAndShow(kLeftCommand);
    tap_.setAbilities({});
    manager().reinstallEventTap();
    Q_EMIT notifications_.refusedHotkeysDidChange();
    EXPECT_FALSE(sign()->isVisible());
}

TEST_F(RuleRowSidesTest, AClickMakesItEitherSideInTheFileToo) {
    addAndShow(kLeftCommand | 0x20000 | 0x4);
    removeFile();
    QTest::mouseClick(sign(), Qt::LeftButton);
    EXPECT_EQ(manager().rules().back().modifierFlags, ModifierFlags(kCommand | 0x20000));
    EXPECT_TRUE(fileExists());
    EXPECT_EQ(shownHotkey(), u"⇧⌘T"_s);
    EXPECT_FALSE(sign()->isVisible());
    EXPECT_EQ(tap_.wantedHotkeys().size(), 1U);
    EXPECT_EQ(toasts_, QStringList());
}

TEST_F(RuleRowSidesTest, TheKeyboardReachesTheSign) {
    addAndShow(kLeftCommand);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_TRUE(sign()->hasFocus());
    QTest::keyClick(sign(), Qt::Key_Space);
    EXPECT_EQ(storedHotkey(), u"⌘T"_s);
}

TEST_F(RuleRowSidesTest, AnotherRulesHotkeyIsNotTaken) {
    manager().addRule(rule(u"Notes"_s, 17, kCommand));
    addAndShow(kLeftCommand);
    removeFile();
    QTest::mouseClick(sign(), Qt::LeftButton);
    EXPECT_EQ(toasts_,
              QStringList{u"Hotkey conflict: already used by another rule, please re-enter"_s});
    EXPECT_EQ(storedHotkey(), u"L⌘T"_s);
    EXPECT_FALSE(fileExists());
    EXPECT_EQ(shownHotkey(), u"L⌘T"_s);
    EXPECT_TRUE(sign()->isVisible());
}

TEST_F(RuleRowSidesTest, TheSignSpeaksChinese) {
    choose(Language::zh);
    addAndShow(kLeftCommand);
    EXPECT_EQ(sign()->toolTip(),
              u"此快捷键无法送达：当前会话无法区分左右修饰键\n点击即可改为不区分左右"_s);
}

}  // namespace

}  // namespace kestrelbay
