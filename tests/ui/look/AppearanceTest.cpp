#include "ui/look/Appearance.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "fakes/FakeSystemSettings.h"
#include "ui/look/SystemColors.h"
#include "ui/look/SystemStyle.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {
namespace {

class AppearanceTest : public testing::Test {
protected:
    ~AppearanceTest() override {
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        QApplication::setPalette(QPalette());
    }

    FakeSystemSettings settings_;
};

TEST_F(AppearanceTest, TakesTheUsersChoiceAtOnce) {
    settings_.setColorScheme(ColorScheme::Dark);
    const Appearance appearance(settings_);
    EXPECT_TRUE(colors::isDark());
    EXPECT_NE(qobject_cast<SystemStyle *>(QApplication::style()), nullptr);
}

TEST_F(AppearanceTest, FollowsItLive) {
    settings_.setColorScheme(ColorScheme::Light);
    const Appearance appearance(settings_);
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

TEST_F(AppearanceTest, LeavesEverythingWhereQtFollowsTheSystem) {
    settings_.setColorScheme(std::nullopt);
    const QPalette before = QApplication::palette();
    const Appearance appearance(settings_);
    EXPECT_EQ(QApplication::palette(), before);
    EXPECT_EQ(qobject_cast<SystemStyle *>(QApplication::style()), nullptr);
}

TEST_F(AppearanceTest, StopsFollowingWhenItGoes) {
    { const Appearance appearance(settings_); }
    settings_.setColorScheme(ColorScheme::Dark);
    EXPECT_FALSE(colors::isDark());
}

double contrast(const QColor &one, const QColor &other) {
    const auto luminance = [](const QColor &color) {
        const auto linear = [](float part) {
            return part <= 0.04045F ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor over(const QColor &ink, const QColor &ground) {
    const auto mix = [&](float above, float below) {
        return above * ink.alphaF() + below * (1 - ink.alphaF());
    };
    return QColor::fromRgbF(mix(ink.redF(), ground.redF()), mix(ink.greenF(), ground.greenF()),
                            mix(ink.blueF(), ground.blueF()));
}

class TextContrast : public AppearanceTest, public testing::WithParamInterface<ColorScheme> {};

// 4.5 is what WCAG 2.1 asks of texts (success criterion 1.4.3).
TEST_P(TextContrast, SufficesOnEveryGround) {
    settings_.setColorScheme(GetParam());
    const Appearance appearance(settings_);
    for (const QColor &ground : {colors::window(), colors::field(), colors::toast(false)}) {
        for (const QColor &text :
             {colors::label(), colors::secondaryLabel(), colors::link(), colors::systemGreen(),
              colors::systemRed(), colors::systemOrange()})
            EXPECT_GE(contrast(over(text, ground), ground), 4.5)
                << text.name().toStdString() << " on " << ground.name().toStdString();
    }
    EXPECT_GE(contrast(Qt::white, colors::controlAccent()), 4.5);
}

INSTANTIATE_TEST_SUITE_P(BothSchemes, TextContrast,
                         testing::Values(ColorScheme::Light, ColorScheme::Dark),
                         [](const auto &scheme) {
                             return scheme.param == ColorScheme::Light ? "Light" : "Dark";
                         });

}  // namespace
}  // namespace kestrelbay
