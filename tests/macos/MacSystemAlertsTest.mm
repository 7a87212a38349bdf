#include "platform/macos/desktop/MacSystemAlerts.h"

#include <gtest/gtest.h>

#include "fakes/FakeAlerts.h"
#include "fakes/FakeWindows.h"
#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::macos {
namespace {

class MacSystemAlertsTest : public ::testing::Test {
protected:
    ~MacSystemAlertsTest() override {
        shown_.reset();
        EXPECT_EQ(openSheet(), nil);
    }

    void show(bool inWindow = true) {
        const auto window = reinterpret_cast<NativeWindow::Id>(window_.contentView);
        shown_ = alerts_.show(alert_, inWindow ? window : 0,
                              [this](bool accepts) { answers_.push_back(accepts); });
    }

    SystemAlerts::Alert alert_{.message = u"删除快捷键"_s,
                               .text = u"Mail"_s,
                               .acceptTitle = u"删除"_s,
                               .rejectTitle = u"取消"_s,
                               .isWarning = true,
                               .isDestructive = true};
    NSWindow *const window_ = [NSWindow windowWithSize:NSMakeSize(700, 600)];
    MacSystemAlerts alerts_;
    std::vector<bool> answers_;
    std::unique_ptr<SystemAlerts::Shown> shown_;
};

TEST_F(MacSystemAlertsTest, AQuestionIsASheetOfItsWindow) {
    show();
    ASSERT_NE(openSheet(), nil);
    EXPECT_EQ(openSheet().window.sheetParent, window_);
    EXPECT_EQ(contentOf(openSheet()),
              (QStringList{u"style 0"_s, u"删除快捷键"_s, u"Mail"_s, u"删除 Return destructive"_s,
                           u"取消 Escape"_s}));
    EXPECT_TRUE(answers_.empty());
}

TEST_F(MacSystemAlertsTest, TheFirstButtonAcceptsAndTheSecondDoesNot) {
    show();
    pressInSheet(0);
    EXPECT_EQ(answers_, std::vector{true});
    show();
    pressInSheet(1);
    EXPECT_EQ(answers_, (std::vector{true, false}));
}

TEST_F(MacSystemAlertsTest, ANoticeHasOneButton) {
    alert_ = {.message = u"M"_s, .text = u"T"_s, .acceptTitle = u"OK"_s};
    show();
    EXPECT_EQ(contentOf(openSheet()), (QStringList{u"style 1"_s, u"M"_s, u"T"_s, u"OK Return"_s}));
    pressInSheet(0);
    EXPECT_EQ(answers_, std::vector{true});
}

TEST_F(MacSystemAlertsTest, WithoutAWindowItWaitsForTheAnswer) {
    setModalAnswer(1);
    show(false);
    EXPECT_EQ(openSheet(), nil);
    EXPECT_EQ(contentOf(lastModalAlert()).at(2), u"Mail"_s);
    EXPECT_EQ(answers_, std::vector{false});
    setModalAnswer(0);
    show(false);
    EXPECT_EQ(answers_, (std::vector{false, true}));
}

TEST_F(MacSystemAlertsTest, OneThatIsLetGoOfClosesUnanswered) {
    show();
    shown_.reset();
    EXPECT_EQ(openSheet(), nil);
    EXPECT_TRUE(answers_.empty());
}

TEST_F(MacSystemAlertsTest, WhoeverIsAnsweredMayLetGoOfIt) {
    const auto window = reinterpret_cast<NativeWindow::Id>(window_.contentView);
    shown_ = alerts_.show(alert_, window, [this](bool) {
        shown_.reset();
        answers_.push_back(true);
    });
    pressInSheet(0);
    EXPECT_EQ(answers_, std::vector{true});
}

}  // namespace
}  // namespace kestrelbay::macos
