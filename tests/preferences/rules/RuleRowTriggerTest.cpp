#include <QLabel>

#include "preferences/rules/RowFixture.h"
#include "preferences/rules/RuleRowView.h"
#include "ui/widgets/TextLabel.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

constexpr Hotkey kCommandT{KeyCode{17}, modifier::kCommand};

class NoList final : public RuleRowViewDelegate {
public:
    void ruleRowViewDidDelete(RuleRowView *, const ShortcutRule &) override {}
    void ruleRowViewDidOpenAdvanced(RuleRowView *, const ShortcutRule &) override {}
};

/// A row where the system has words of its own for hotkeys.
class RuleRowTriggerTest : public RowFixture {
protected:
    void SetUp() override {
        row_ = new RuleRowView(services(), *icons_, *holders_, window_.get());
        row_->setGeometry(0, 0, 600, RuleRowView::kHeight);
        ASSERT_NO_FATAL_FAILURE(showWindow());
        manager().addRule(rule(u"Firefox"_s, 17, kCommandT.modifierFlags.bits()));
        row_->configure(manager().rules().back(), &list_);
    }

    void tell(const QString &text) {
        tap_.setTriggerText(kCommandT, text);
        Q_EMIT notifications_.refusedHotkeysDidChange();
    }
    [[nodiscard]] ElidedLabel *label() const {
        return row_->findChild<ElidedLabel *>(u"trigger"_s);
    }

    NoList list_;
    RuleRowView *row_ = nullptr;
};

TEST_F(RuleRowTriggerTest, ShowsWhatTheUserPressesBelowTheHotkey) {
    EXPECT_FALSE(label()->isVisible());
    const QRect alone = row_->hotkeyRecorder()->geometry();
    tell(u"Meta+T"_s);
    const QString words = u"Desktop: Meta+T"_s;
    EXPECT_TRUE(label()->isVisible());
    EXPECT_EQ(label()->fullText(), words);
    EXPECT_EQ(row_->hotkeyRecorder()->accessibleDescription(), words);
    EXPECT_EQ(row_->hotkeyRecorder()->size(), alone.size());
    EXPECT_GT(label()->y(), row_->hotkeyRecorder()->geometry().bottom());
    EXPECT_LT(label()->geometry().bottom(), RuleRowView::kHeight);

    tell({});
    EXPECT_FALSE(label()->isVisible());
    EXPECT_EQ(row_->hotkeyRecorder()->geometry(), alone);
    EXPECT_EQ(row_->hotkeyRecorder()->accessibleDescription(), QString());
}

TEST_F(RuleRowTriggerTest, SpeaksChinese) {
    choose(Language::zh);
    tell(u"Meta+T"_s);
    EXPECT_EQ(label()->fullText(), u"桌面：Meta+T"_s);
}

}  // namespace

}  // namespace kestrelbay
