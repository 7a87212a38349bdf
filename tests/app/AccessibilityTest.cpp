#include "app/about/AboutWindowController.h"
#include "app/onboarding/OnboardingFixture.h"
#include "app/toasts/ToastFixture.h"
#include "fakes/FakeWorkspace.h"
#include "fixtures/AccessibleTree.h"
#include "settings/Notifications.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

void expectTree(QWidget &window, const QStringList &expected) {
    EXPECT_EQ(accessibleTree(window), expected);
    EXPECT_EQ(namelessControls(window), QStringList());
}

QString text(const QString &words) {
    return u"StaticText: "_s + words;
}
QString button(const QString &title) {
    return u"Button: %1 (focusable)"_s.arg(title);
}

class GuideAccessibility : public OnboardingFixture, public testing::WithParamInterface<QString> {
protected:
    GuideAccessibility() {
        speak(GetParam());
        open();
    }

    QWidget &stepInView(int index) {
        goTo(index);
        return *guide_->window();
    }
};

TEST_P(GuideAccessibility, Welcome) {
    expectTree(stepInView(0),
               {u"Window: KestrelBay"_s, text(L::welcomeTitle()), text(L::welcomeBody()),
                text(L::welcomeTip()), button(L::welcomeStart()), button(L::welcomeDismiss())});
}

TEST_P(GuideAccessibility, Permission) {
    expectTree(stepInView(1),
               {u"Window: KestrelBay"_s, text(L::permissionTitle()), text(L::permissionBody()),
                button(L::permissionOpenSettings()), button(L::skipForNow())});
}

TEST_P(GuideAccessibility, Waiting) {
    wait();
    expectTree(*guide_->window(),
               {u"Window: KestrelBay"_s, text(L::permissionTitle()), text(L::permissionBody()),
                text(L::permissionWaiting()),
                u"Button: %1 (disabled, focusable)"_s.arg(L::permissionWaitingButton()),
                button(L::skipForNow())});
}

TEST_P(GuideAccessibility, DoneWithoutPermission) {
    expectTree(stepInView(2), {u"Window: KestrelBay"_s, text(L::doneWithoutPermissionTitle()),
                               text(L::doneWithoutPermissionBody(true)),
                               button(L::doneOpenPreferences()), button(L::skipForNow())});
}

INSTANTIATE_TEST_SUITE_P(InBothLanguages, GuideAccessibility, testing::Values(u"en"_s, u"zh"_s));

class AboutAccessibility : public testing::Test {
protected:
    AboutAccessibility() { Language::setDefaults(&defaults_); }
    ~AboutAccessibility() override { Language::setDefaults(nullptr); }

    QWidget &shown() {
        about_.show();
        return *about_.window();
    }

    FakeUserDefaults defaults_;
    FakeWorkspace workspace_;
    FakeNativeWindow nativeWindow_;
    Notifications notifications_;
    AboutWindowController about_{{.workspace = workspace_,
                                  .nativeWindow = nativeWindow_,
                                  .notifications = notifications_,
                                  .addresses = {},
                                  .showToast = {}}};
};

TEST_F(AboutAccessibility, InEnglish) {
    expectTree(shown(), {u"Window: About KestrelBay"_s, u"StaticText: KestrelBay"_s,
                         u"StaticText: Version —"_s, u"Button: Check for Updates (focusable)"_s,
                         u"Button: Contact & Feedback (focusable)"_s});
}

TEST_F(AboutAccessibility, InChinese) {
    write(defaults_, settings::kAppLanguage, u"zh"_s);
    expectTree(shown(), {u"Window: 关于 KestrelBay"_s, u"StaticText: KestrelBay"_s,
                         u"StaticText: Version —"_s, u"Button: 检查更新 (focusable)"_s,
                         u"Button: 联系作者与反馈 (focusable)"_s});
}

using ToastAccessibility = ToastFixture<ToastWindow>;

TEST_F(ToastAccessibility, MessageWithButton) {
    ToastWindow::show(u"Keyboard access is missing"_s, u"Grant"_s, [] {});
    mainQueue_.runAll();
    ASSERT_NE(current(), nullptr);
    expectTree(*current(), {u"AlertMessage: Keyboard access is missing"_s,
                            u"StaticText: Keyboard access is missing"_s, u"Button: Grant"_s});
}
TEST_F(ToastAccessibility, MessageAlone) {
    ToastWindow::show(u"Saved"_s);
    mainQueue_.runAll();
    ASSERT_NE(current(), nullptr);
    expectTree(*current(), {u"AlertMessage: Saved"_s, u"StaticText: Saved"_s});
}

}  // namespace

}  // namespace kestrelbay
