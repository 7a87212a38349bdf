#include "app/about/AboutWindowController.h"

#include <memory>
#include <set>
#include <utility>

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>

#include <gmock/gmock.h>

#include "fakes/FakeNativeWindow.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/FakeWorkspace.h"
#include "fixtures/QtPrinters.h"
#include "settings/Addresses.h"
#include "settings/L.h"
#include "settings/Language.h"
#include "settings/Notifications.h"
#include "settings/SettingsKeys.h"
#include "ui/look/Fonts.h"
#include "ui/look/SystemColors.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {
namespace {

using testing::Contains;

class AboutWindowTest : public testing::Test {
protected:
    AboutWindowTest() {
        Language::setDefaults(&defaults_);
        QCoreApplication::setApplicationVersion(QStringLiteral("1.2.3"));
    }
    ~AboutWindowTest() override {
        QCoreApplication::setApplicationVersion({});
        Language::setDefaults(nullptr);
    }

    QWidget &shown() {
        about_.show();
        return *about_.window();
    }
    void speakChinese() { write(defaults_, settings::kAppLanguage, QStringLiteral("zh")); }
    static QList<QPushButton *> buttons(const QWidget &window) {
        return window.findChildren<QPushButton *>();
    }
    static QList<TextLabel *> labels(const QWidget &window) {
        return window.findChildren<TextLabel *>();
    }
    static QList<QRect> places(const QWidget &window) {
        QList<QRect> places;
        for (const QWidget *const thing : window.findChildren<QWidget *>()) {
            if (thing->isVisible())
                places.append({thing->mapTo(&window, QPoint()), thing->size()});
        }
        return places;
    }
    static void press(QWidget &window, int key) {
        QWidget *const focus = window.focusWidget() ? window.focusWidget() : &window;
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(focus, &event);
    }

    FakeUserDefaults defaults_;
    FakeWorkspace workspace_;
    FakeNativeWindow nativeWindow_;
    Notifications notifications_;
    QStringList toasts_;
    AboutWindowController::Services services_{
        .workspace = workspace_,
        .nativeWindow = nativeWindow_,
        .notifications = notifications_,
        .addresses = Addresses::of(QStringLiteral("https://example.org/download"), QString(),
                                   QStringLiteral("help@example.org")),
        .showToast = [this](const QString &message) { toasts_.append(message); }};
    AboutWindowController about_{services_};
};

TEST_F(AboutWindowTest, IsNotThereBeforeItIsShown) {
    EXPECT_FALSE(about_.window());
}

TEST_F(AboutWindowTest, HasOneSizeAndACloseButtonOnly) {
    const QWidget &window = shown();
    EXPECT_EQ(window.size(), QSize(340, 200));
    EXPECT_EQ(window.minimumSize(), window.maximumSize());
    EXPECT_EQ(window.windowTitle(), QStringLiteral("About KestrelBay"));
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowCloseButtonHint));
    EXPECT_FALSE(window.windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
    EXPECT_FALSE(window.windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
}

TEST_F(AboutWindowTest, ComesForwardInTheMiddleOfTheScreenEachTime) {
    QWidget &window = shown();
    const QPoint middle = QGuiApplication::primaryScreen()->availableGeometry().center();
    const QStringList forward{QStringLiteral("bringProgramForward %1").arg(window.winId())};
    // The frame is not known before the window is in view.
    EXPECT_LE((window.frameGeometry().center() - middle).manhattanLength(), 4);
    EXPECT_EQ(nativeWindow_.takeCalls(), forward);
    window.move(1, 2);
    about_.show();
    EXPECT_EQ(window.frameGeometry().center(), middle);
    EXPECT_EQ(nativeWindow_.takeCalls(), forward);
}

TEST_F(AboutWindowTest, ClosingOnlyHidesIt) {
    QWidget &window = shown();
    window.close();
    EXPECT_EQ(about_.window(), &window);
    EXPECT_FALSE(window.isVisible());
    about_.show();
    EXPECT_EQ(about_.window(), &window);
    EXPECT_TRUE(window.isVisible());
    press(window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(AboutWindowTest, ShowsNameAndVersion) {
    const QList<TextLabel *> texts = labels(shown());
    ASSERT_EQ(texts.size(), 2);
    EXPECT_EQ(texts[0]->text(), QStringLiteral("KestrelBay"));
    EXPECT_EQ(texts[0]->font(), systemFont(17, QFont::DemiBold));
    EXPECT_EQ(texts[0]->palette().color(texts[0]->foregroundRole()), colors::label());
    EXPECT_EQ(texts[1]->text(), QStringLiteral("Version 1.2.3"));
    EXPECT_EQ(texts[1]->font(), systemFont(12));
    EXPECT_EQ(texts[1]->palette().color(texts[1]->foregroundRole()), colors::secondaryLabel());
    EXPECT_EQ(texts[0]->y(), 98);
    EXPECT_EQ(texts[1]->y(), texts[0]->y() + texts[0]->height() + 4);
    for (const TextLabel *text : texts) {
        EXPECT_EQ(text->x(), 0);
        EXPECT_EQ(text->width(), 340);
        EXPECT_TRUE(text->alignment().testFlag(Qt::AlignHCenter));
    }
}

TEST_F(AboutWindowTest, AProgramWithoutAVersionShowsADash) {
    QCoreApplication::setApplicationVersion({});
    EXPECT_EQ(labels(shown())[1]->text(), QStringLiteral("Version —"));
}

TEST_F(AboutWindowTest, TheIconIsOnTopInTheMiddle) {
    const QWidget *const icon = shown().childAt(170, 24);
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon->geometry(), QRect(138, 24, 64, 64));
    const QImage picture = about_.window()->grab().toImage();
    EXPECT_NE(picture.pixelColor(170, 56), picture.pixelColor(2, 2));
}

TEST_F(AboutWindowTest, TheButtonsAreAtTheBottomUnderALine) {
    std::set<int> heights;
    for (const bool chinese : {false, true}) {
        if (chinese)
            speakChinese();
        AboutWindowController about(services_);
        about.show();
        const QList<QPushButton *> both = buttons(*about.window());
        ASSERT_EQ(both.size(), 2);
        const int height = both[0]->height();
        heights.insert(height);
        EXPECT_EQ(both[0]->geometry(), QRect(20, 200 - 16 - height, 140, height));
        EXPECT_EQ(both[1]->geometry(), QRect(180, 200 - 16 - height, 140, height));
        for (const QPushButton *button : both) {
            EXPECT_LE(button->sizeHint().height(), height);
            EXPECT_LE(button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width(),
                      140 - 2 * 6);
            EXPECT_FALSE(button->isDefault());
        }
        const int lineBottom = both[0]->y() - 12;
        // Not by childAt(), which finds nothing of one pixel in some versions of Qt.
        EXPECT_THAT(places(*about.window()), Contains(QRect(0, lineBottom - 1, 340, 1)));
        EXPECT_GT(lineBottom - 1, labels(*about.window())[1]->geometry().bottom());
    }
    EXPECT_EQ(heights.size(), 1U);
}

TEST_F(AboutWindowTest, TheButtonsOpenThePageAndTheMail) {
    const QList<QPushButton *> both = buttons(shown());
    EXPECT_EQ(both[0]->text(), QStringLiteral("Check for Updates"));
    // Doubled, it is shown as one.
    EXPECT_EQ(both[1]->text(), QStringLiteral("Contact && Feedback"));
    both[0]->click();
    EXPECT_EQ(workspace_.requests().take(),
              QStringList{QStringLiteral("openUrl https://example.org/download")});
    both[1]->click();
    EXPECT_EQ(workspace_.requests().take(),
              QStringList{QStringLiteral("openUrl mailto:help@example.org")});
    EXPECT_TRUE(about_.window()->isVisible());
}

TEST_F(AboutWindowTest, WithoutAddressesTheButtonsSaySo) {
    services_.addresses = {};
    AboutWindowController about(services_);
    about.show();
    for (QPushButton *button : buttons(*about.window())) {
        button->click();
        EXPECT_EQ(std::exchange(toasts_, {}), QStringList{L::noAddress()});
    }
    EXPECT_EQ(workspace_.requests().take(), QStringList{});
}

TEST_F(AboutWindowTest, FollowsTheLanguage) {
    QWidget &window = shown();
    speakChinese();
    Q_EMIT notifications_.languageDidChange();
    EXPECT_EQ(about_.window(), &window);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.windowTitle(), QStringLiteral("关于 KestrelBay"));
    ASSERT_EQ(buttons(window).size(), 2);
    EXPECT_TRUE(buttons(window)[0]->isVisible());
    EXPECT_EQ(buttons(window)[0]->text(), QStringLiteral("检查更新"));
    EXPECT_EQ(buttons(window)[1]->text(), QStringLiteral("联系作者与反馈"));
    ASSERT_EQ(labels(window).size(), 2);
    EXPECT_EQ(labels(window)[1]->text(), QStringLiteral("Version 1.2.3"));
}

TEST_F(AboutWindowTest, FollowsTheLanguageAlsoWhileItIsClosed) {
    shown().close();
    speakChinese();
    Q_EMIT notifications_.languageDidChange();
    EXPECT_FALSE(about_.window()->isVisible());
    about_.show();
    EXPECT_EQ(about_.window()->windowTitle(), QStringLiteral("关于 KestrelBay"));
}

TEST_F(AboutWindowTest, AChangeOfLanguageBuildsNoWindow) {
    Q_EMIT notifications_.languageDidChange();
    EXPECT_FALSE(about_.window());
}

TEST_F(AboutWindowTest, ReturnPressesTheButtonThatWasGivenTheFocus) {
    QWidget &window = shown();
    press(window, Qt::Key_Return);
    EXPECT_EQ(workspace_.requests().take(), QStringList{});
    press(window, Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), buttons(window)[0]);
    press(window, Qt::Key_Return);
    EXPECT_EQ(workspace_.requests().take().size(), 1);
    press(window, Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), buttons(window)[1]);
}

}  // namespace
}  // namespace kestrelbay
