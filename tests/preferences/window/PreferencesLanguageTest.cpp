#include <QApplication>
#include <QComboBox>
#include <QPointer>
#include <QTest>

#include "fixtures/ActiveWindow.h"
#include "preferences/rules/RuleRowView.h"
#include "preferences/window/PreferencesWindowFixture.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

class PreferencesLanguage : public PreferencesWindowFixture {};

TEST_F(PreferencesLanguage, HasItsTitleInChinese) {
    choose(Language::zh);
    EXPECT_EQ(window().windowTitle(), u"KestrelBay 偏好设置"_s);
    EXPECT_EQ(secondTitle(), u"高级设置"_s);
}

TEST_F(PreferencesLanguage, AnotherLanguageEndsARecording) {
    manager().addRule({});
    controller().showWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    view<RuleRowView>()->hotkeyRecorder()->startRecordingByUser();
    mainQueue_.runAll();
    ASSERT_TRUE(tap_.isRecording());
    changeLanguage(Language::zh);
    EXPECT_FALSE(manager().recordingCallback());
    EXPECT_FALSE(tap_.isRecording());
    mainQueue_.runAll();
    EXPECT_FALSE(manager().recordingCallback());
}

TEST_F(PreferencesLanguage, AnotherLanguageRebuildsItInPlace) {
    controller().showWindow();
    clickTab(1);
    const QPointer<QWidget> before = view<TabBarView>()->parentWidget();
    changeLanguage(Language::zh);
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(window().windowTitle(), u"KestrelBay 偏好设置"_s);
    EXPECT_EQ(secondTitle(), u"高级设置"_s);
    expectTab(1);
    EXPECT_TRUE(before.isNull());
    EXPECT_TRUE(view<AdvancedSettingsViewController>()->isVisible());
    EXPECT_EQ(view<TabBarView>()->parentWidget()->size(), window().size());
    clickTab(0);
    expectTab(0);
}

TEST_F(PreferencesLanguage, AHiddenWindowIsRebuiltHidden) {
    EXPECT_EQ(secondTitle(), u"Advanced"_s);
    changeLanguage(Language::zh);
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(window().windowTitle(), u"KestrelBay 偏好设置"_s);
    EXPECT_EQ(secondTitle(), u"高级设置"_s);
    expectTab(0);
}

TEST_F(PreferencesLanguage, TheSameLanguageRebuildsItToo) {
    controller().showWindow();
    const QPointer<QWidget> before = view<TabBarView>()->parentWidget();
    changeLanguage(Language::en);
    expectTab(0);
    EXPECT_TRUE(before.isNull());
}

TEST_F(PreferencesLanguage, ThePopupThatChangesTheLanguageKeepsTheFocus) {
    controller().showWindow();
    ASSERT_TRUE(activate(window()));
    clickTab(1);
    auto *const popup = window().findChild<QComboBox *>(u"language"_s);
    popup->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return popup->hasFocus(); }));
    const QPointer<QComboBox> before = popup;
    QTest::keyClick(popup, Qt::Key_Up);
    expectTab(1);
    EXPECT_TRUE(before.isNull());
    EXPECT_EQ(defaults_.string(u"appLanguage"_s), u"zh"_s);
    EXPECT_EQ(window().windowTitle(), u"KestrelBay 偏好设置"_s);
    auto *const after = window().findChild<QComboBox *>(u"language"_s);
    EXPECT_EQ(QApplication::focusWidget(), after);
    EXPECT_EQ(after->currentText(), u"中文"_s);
}

}  // namespace

}  // namespace kestrelbay
