#include "ui/look/Appearance.h"

#include <QApplication>
#include <QMenu>
#include <QPalette>
#include <QPushButton>
#include <QStyle>
#include <QStyleFactory>

#include <optional>
#include <tuple>

#include <gtest/gtest.h>

#include "fakes/FakeSystemSettings.h"
#include "fakes/FakeSystemTints.h"
#include "ui/look/Contrast.h"
#include "ui/look/Fonts.h"
#include "ui/look/SystemColors.h"
#include "ui/look/SystemStyle.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {
namespace {

class AppearanceTest : public testing::Test {
protected:
    AppearanceTest() { wearBareFusion(); }
    ~AppearanceTest() override { wearBareFusion(); }

    static void wearBareFusion() {
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        QApplication::setPalette(QPalette());
    }

    FakeSystemSettings settings_;
};

TEST_F(AppearanceTest, TakesTheUsersChoiceAtOnce) {
    settings_.setColorScheme(ColorScheme::Dark);
    const Appearance appearance(settings_, false);
    EXPECT_TRUE(colors::isDark());
    EXPECT_NE(qobject_cast<SystemStyle *>(QApplication::style()), nullptr);
}

TEST_F(AppearanceTest, FollowsItLive) {
    settings_.setColorScheme(ColorScheme::Light);
    const Appearance appearance(settings_, false);
    EXPECT_FALSE(colors::isDark());
    const QColor lightLabel = colors::label();
    TextLabel label(QStringLiteral("text"), QFont(), colors::label);
    EXPECT_EQ(label.palette().color(label.foregroundRole()), lightLabel);

    settings_.setColorScheme(ColorScheme::Dark);
    QCoreApplication::sendPostedEvents();
    EXPECT_TRUE(colors::isDark());
    EXPECT_NE(colors::label(), lightLabel);
    EXPECT_EQ(label.palette().color(label.foregroundRole()), colors::label());
}

TEST_F(AppearanceTest, ASmallButtonIsAsWideAsItsText) {
    const Appearance appearance(settings_, false);
    QPushButton button(QStringLiteral("See Why"));
    button.setFont(systemFont(12, QFont::Medium));
    const int text = button.fontMetrics().horizontalAdvance(button.text());
    EXPECT_GE(button.sizeHint().width(), text + 12);
    EXPECT_LE(button.sizeHint().width(), text + 24);
}

TEST_F(AppearanceTest, SeparatorsLeaveTheFrameOfAMenuWhole) {
    for (const ColorScheme scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        settings_.setColorScheme(scheme);
        const Appearance appearance(settings_, false);
        QMenu menu;
        menu.addAction(QStringLiteral("One"));
        QAction *const separator = menu.addSeparator();
        menu.addAction(QStringLiteral("Two"));
        menu.ensurePolished();
        menu.resize(menu.sizeHint());
        const QImage picture = menu.grab().toImage();
        const QRect line = menu.actionGeometry(separator);
        for (const int x : {0, picture.width() - 1}) {
            for (int y = line.top(); y <= line.bottom(); ++y)
                EXPECT_EQ(picture.pixelColor(x, y), picture.pixelColor(x, line.top() - 4));
        }
        EXPECT_NE(picture.pixelColor(picture.width() / 2, line.center().y()),
                  picture.pixelColor(picture.width() / 2, line.top() - 1));
    }
}

TEST_F(AppearanceTest, LeavesEverythingWhereQtFollowsTheSystem) {
    settings_.setColorScheme(std::nullopt);
    const QPalette before = QApplication::palette();
    const Appearance appearance(settings_, false);
    EXPECT_EQ(QApplication::palette(), before);
    EXPECT_EQ(qobject_cast<SystemStyle *>(QApplication::style()), nullptr);
}

TEST_F(AppearanceTest, StopsFollowingWhenItGoes) {
    { const Appearance appearance(settings_, false); }
    settings_.setColorScheme(ColorScheme::Dark);
    EXPECT_FALSE(colors::isDark());
}

TEST_F(AppearanceTest, IsPutOverBareFusionOnly) {
    const auto isOurs = [] {
        return qobject_cast<SystemStyle *>(QApplication::style()) != nullptr;
    };
    {
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Windows")));
        const QPalette theirs(Qt::darkGray);
        QApplication::setPalette(theirs);
        const Appearance appearance(settings_, false);
        settings_.setColorScheme(ColorScheme::Dark);
        EXPECT_FALSE(isOurs());
        EXPECT_EQ(QApplication::palette().color(QPalette::Window), theirs.color(QPalette::Window));
    }
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    const Appearance named(settings_, true);
    EXPECT_FALSE(isOurs());
}

TEST_F(AppearanceTest, FollowsTheAccentLive) {
    const Appearance appearance(settings_, false);
    const QColor usual = colors::controlAccent();
    settings_.setAccentColor(QColor(0x80, 0x20, 0xA0));
    EXPECT_EQ(colors::controlAccent(), QColor(0x80, 0x20, 0xA0));
    settings_.setAccentColor(std::nullopt);
    EXPECT_EQ(colors::controlAccent(), usual);
}

TEST_F(AppearanceTest, FollowsTheWishForContrastLive) {
    const Appearance appearance(settings_, false);
    const QColor usual = colors::secondaryLabel();
    TextLabel label(QStringLiteral("text"), QFont(), colors::secondaryLabel);
    settings_.setContrastHigh(true);
    QCoreApplication::sendPostedEvents();
    EXPECT_GT(colors::secondaryLabel().alpha(), usual.alpha());
    EXPECT_EQ(label.palette().color(label.foregroundRole()), colors::secondaryLabel());
    settings_.setContrastHigh(false);
    EXPECT_EQ(colors::secondaryLabel(), usual);
}

TEST_F(AppearanceTest, TakesTheSystemsTintsAsTheyAre) {
    FakeSystemTints tints;
    colors::setSystemTints(&tints);
    EXPECT_EQ(colors::controlAccent(), tints.accent_);
    EXPECT_EQ(colors::systemGreen(), tints.green_);
    EXPECT_EQ(colors::systemOrange(), tints.orange_);
    EXPECT_EQ(colors::systemRed(), tints.red_);
    EXPECT_EQ(colors::onAccent(), tints.onAccent());
    EXPECT_EQ(colors::link(), tints.accent());
    EXPECT_EQ(colors::secondaryLabel(), tints.secondaryLabel());
    EXPECT_EQ(colors::tertiaryLabel(), tints.tertiaryLabel());
    EXPECT_EQ(colors::separator(), tints.separator());
    colors::setSystemTints(nullptr);
    EXPECT_NE(colors::systemRed(), tints.red_);
}

TEST(Contrast, IsCountedFromOneToTwentyOne) {
    EXPECT_NEAR(contrastRatio(Qt::white, Qt::black), 21, 0.01);
    EXPECT_NEAR(contrastRatio(Qt::red, Qt::red), 1, 0.01);
    EXPECT_NEAR(contrastRatio(QColor(0, 0, 0, 128), Qt::white), 3.97, 0.05) << "as mid-grey";
}

TEST(Contrast, IsRaisedNoFurtherThanAskedFor) {
    EXPECT_EQ(legible(Qt::blue, Qt::white, 4.5), QColor(Qt::blue));
    const QColor yellow = legible(Qt::yellow, Qt::white, 4.5);
    EXPECT_GE(contrastRatio(yellow, Qt::white), 4.5);
    EXPECT_LT(contrastRatio(yellow, Qt::white), 6);
    EXPECT_EQ(yellow.hue(), QColor(Qt::yellow).hue());
}

using Wishes = std::tuple<ColorScheme, QRgb, bool>;

class TextContrast : public AppearanceTest, public testing::WithParamInterface<Wishes> {};

// 4.5 and 7 are what WCAG 2.1 asks of texts (success criteria 1.4.3 and 1.4.6).
TEST_P(TextContrast, SufficesOnEveryGround) {
    const auto [scheme, accent, isHigh] = GetParam();
    settings_.setColorScheme(scheme);
    settings_.setContrastHigh(isHigh);
    if (accent != 0)
        settings_.setAccentColor(QColor::fromRgb(accent));
    const Appearance appearance(settings_, false);
    const double least = isHigh ? 7 : 4.5;
    for (const QColor &ground : {colors::window(), colors::field(), colors::toast(false)}) {
        for (const QColor &text :
             {colors::label(), colors::secondaryLabel(), colors::link(), colors::systemGreen(),
              colors::systemRed(), colors::systemOrange()})
            EXPECT_GE(contrastRatio(text, ground), least)
                << text.name().toStdString() << " on " << ground.name().toStdString();
    }
    EXPECT_GE(contrastRatio(colors::onAccent(), colors::controlAccent()), least);
}

INSTANTIATE_TEST_SUITE_P(AllWishes, TextContrast,
                         testing::Combine(testing::Values(ColorScheme::Light, ColorScheme::Dark),
                                          // None, and GNOME's yellow and purple.
                                          testing::Values(0U, 0xFFC88800U, 0xFF9141ACU),
                                          testing::Bool()));

}  // namespace
}  // namespace kestrelbay
