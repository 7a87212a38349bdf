#include "app/onboarding/OnboardingFixture.h"

#include <algorithm>

#include <QPalette>
#include <QTimer>

#include "platform/SystemSettings.h"
#include "ui/look/Fonts.h"
#include "ui/look/SystemColors.h"

namespace kestrelbay {
namespace {

/// Each step in each language, as the user sees it.
struct Case {
    int step;
    bool permissionGranted;
    const char *language;
};

class OnboardingLayoutTest : public OnboardingFixture, public testing::WithParamInterface<Case> {
protected:
    OnboardingLayoutTest() {
        speak(QString::fromLatin1(GetParam().language));
        if (GetParam().permissionGranted) {
            wait();
            tap_.setPermission(true);
            timers_.advance(800ms);
        }
        open_ = GetParam().step;
        if (open_ == 0) {
            open();
        } else {
            goTo(open_);
        }
        if (step().statusLabel())
            step().statusLabel()->show();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    }

    [[nodiscard]] QList<QWidget *> fromTopToBottom() const {
        QList<QWidget *> widgets;
        for (auto *widget : step().findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
            widgets.append(widget);
        std::ranges::sort(widgets, {}, [](const QWidget *widget) { return widget->y(); });
        return widgets;
    }
    [[nodiscard]] TextLabel *label(int index) const {
        return step().findChildren<TextLabel *>().at(index);
    }

    [[nodiscard]] colors::Function shouldBe(const TextLabel &text) const {
        if (&text == label(0))
            return colors::label;
        return colors::secondaryLabel;
    }

    int open_ = 0;
};

TEST_P(OnboardingLayoutTest, NoTextIsClipped) {
    for (const auto *text : step().findChildren<TextLabel *>()) {
        SCOPED_TRACE(qPrintable(text->text()));
        const int flags = text->wordWrap() ? Qt::TextWordWrap : 0;
        const QRect needed =
            text->fontMetrics().boundingRect(QRect(0, 0, text->width(), 9999), flags, text->text());
        EXPECT_LE(needed.width(), text->width());
        EXPECT_LE(needed.height(), text->height());
    }
    EXPECT_LE(primary().sizeHint().width(), primary().width());
    EXPECT_LE(primary().sizeHint().height(), primary().height());
    EXPECT_EQ(link().size(), link().sizeHint());
}

TEST_P(OnboardingLayoutTest, NothingOverlapsOrLeavesTheWindow) {
    const QList<QWidget *> widgets = fromTopToBottom();
    EXPECT_TRUE(qobject_cast<HeroImage *>(widgets.constFirst()));
    EXPECT_EQ(widgets.constFirst()->geometry(), QRect(0, 0, 468, 200));
    for (int i = 1; i < widgets.size(); ++i) {
        EXPECT_GT(widgets[i]->y(), widgets[i - 1]->geometry().bottom());
        EXPECT_TRUE(step().rect().contains(widgets[i]->geometry()));
        EXPECT_NEAR(widgets[i]->geometry().center().x(), 233.5, 1);
    }
    EXPECT_EQ(widgets.constLast(), &link());
    EXPECT_EQ(widgets.at(widgets.size() - 2), &primary());
    EXPECT_LT(link().geometry().bottom(), 468 - 8);
}

TEST_P(OnboardingLayoutTest, FontsAndColorsFollowTheirRoles) {
    const auto color = [](const TextLabel *text) {
        return text->palette().color(text->foregroundRole());
    };
    EXPECT_EQ(label(0)->font(), systemFont(26, QFont::Bold));
    EXPECT_EQ(color(label(0)), colors::label());
    EXPECT_EQ(label(1)->font(), systemFont(15));
    EXPECT_EQ(color(label(1)), colors::secondaryLabel());
    EXPECT_EQ(label(1)->width(), 412);
    EXPECT_TRUE(label(1)->wordWrap());
    if (open_ == 0) {
        EXPECT_EQ(label(2)->font(), systemFont(15));
        EXPECT_EQ(color(label(2)), colors::secondaryLabel());
        EXPECT_EQ(label(2)->width(), 412);
    }
    if (step().statusLabel()) {
        EXPECT_EQ(step().statusLabel()->font(), systemFont(12));
    }
    EXPECT_EQ(primary().font(), systemFont(13, QFont::Medium));
    EXPECT_TRUE(primary().isDefault());
    EXPECT_EQ(link().font(), systemFont(12));
    for (const auto *text : step().findChildren<TextLabel *>())
        EXPECT_TRUE(text->alignment().testFlag(Qt::AlignHCenter));
}

TEST_P(OnboardingLayoutTest, TextsFollowTheAppearance) {
    const QPalette before = QGuiApplication::palette();
    for (const ColorScheme scheme : {ColorScheme::Dark, ColorScheme::Light}) {
        // Widgets are told of it only while the program runs.
        QTimer::singleShot(0, guide_->window(), [scheme] {
            QApplication::setPalette(systemPalette(scheme));
            QCoreApplication::processEvents();
            QCoreApplication::exit();
        });
        QApplication::exec();
        EXPECT_EQ(colors::isDark(), scheme == ColorScheme::Dark);
        for (const auto *text : step().findChildren<TextLabel *>()) {
            EXPECT_EQ(text->palette().color(text->foregroundRole()), shouldBe(*text)());
        }
    }
    QApplication::setPalette(before);
}

INSTANTIATE_TEST_SUITE_P(Steps, OnboardingLayoutTest,
                         testing::Values(Case{0, false, "en"}, Case{0, false, "zh"},
                                         Case{1, false, "en"}, Case{1, false, "zh"},
                                         Case{2, false, "en"}, Case{2, false, "zh"},
                                         Case{2, true, "en"}, Case{2, true, "zh"}));

class OnboardingWindowTest : public OnboardingFixture {};

TEST_F(OnboardingWindowTest, HasOneSizeAndACloseButtonOnly) {
    const QWidget &window = *guide_->window();
    EXPECT_EQ(window.size(), QSize(468, 468));
    EXPECT_EQ(window.minimumSize(), window.maximumSize());
    EXPECT_TRUE(window.windowTitle().isEmpty());
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowCloseButtonHint));
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowTitleHint));
    EXPECT_FALSE(window.windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
    EXPECT_FALSE(window.windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
    EXPECT_EQ(steps().contentContainer()->geometry(), window.rect());
}

TEST_F(OnboardingWindowTest, TheStatusMovesNothingWhenItComesIntoView) {
    goTo(1);
    const QRect before = primary().geometry();
    steps().waitingLabel()->show();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    EXPECT_EQ(primary().geometry(), before);
}

TEST_F(OnboardingWindowTest, TheKeyboardGoesFromThePrimaryButtonToTheLinkAndBack) {
    EXPECT_EQ(guide_->window()->focusWidget(), &primary());
    press(Qt::Key_Tab);
    EXPECT_EQ(guide_->window()->focusWidget(), &link());
    press(Qt::Key_Tab);
    EXPECT_EQ(guide_->window()->focusWidget(), &primary());
}

TEST(HeroImageTest, ShowsThePicturesOfTheGuide) {
    for (const auto *name : {"welcome_hero", "welcome_hero_p2", "welcome_hero_p3"}) {
        HeroImage image(QString::fromLatin1(name));
        EXPECT_EQ(image.size(), QSize(468, 200));
        EXPECT_NE(image.grab().toImage().pixelColor(2, 2), image.palette().color(QPalette::Window));
    }
}

TEST(HeroImageTest, LeavesItsAreaEmptyWithoutAPicture) {
    HeroImage image(QStringLiteral("no_such_hero"));
    EXPECT_EQ(image.size(), QSize(468, 200));
    QImage plain(image.size(), QImage::Format_RGB32);
    plain.fill(image.palette().color(QPalette::Window));
    EXPECT_EQ(image.grab().toImage().convertToFormat(QImage::Format_RGB32), plain);
}

}  // namespace
}  // namespace kestrelbay
