#pragma once

#include <optional>
#include <vector>

#include <gtest/gtest.h>

#include "platform/SystemSettings.h"

namespace kestrelbay::testing {

/// What every back end that tells the user's wishes promises. The Stage type is made
/// afresh for each test, with Light chosen and nothing else, and has
///   SystemSettings &settings();
///   void choose(ColorScheme)            as the user does it, also when it is chosen already
///   void chooseAccent(QColor)
///   void chooseContrast(bool)
///   void settle()                       returns when all of it was told
template <typename Stage>
class SystemSettingsContract : public ::testing::Test {
protected:
    SystemSettings &settings() { return stage_.settings(); }
    void choose(ColorScheme scheme) {
        stage_.choose(scheme);
        stage_.settle();
    }

    Stage stage_;
};

TYPED_TEST_SUITE_P(SystemSettingsContract);

TYPED_TEST_P(SystemSettingsContract, FollowsTheChoice) {
    EXPECT_EQ(this->settings().colorScheme(), ColorScheme::Light);
    this->choose(ColorScheme::Dark);
    EXPECT_EQ(this->settings().colorScheme(), ColorScheme::Dark);
    this->choose(ColorScheme::Light);
    EXPECT_EQ(this->settings().colorScheme(), ColorScheme::Light);
}

TYPED_TEST_P(SystemSettingsContract, FollowsAccentAndContrast) {
    EXPECT_EQ(this->settings().accentColor(), std::nullopt);
    EXPECT_FALSE(this->settings().isContrastHigh());
    int told = 0;
    this->settings().setAppearanceHandler([&] { ++told; });
    this->stage_.chooseAccent(Qt::green);
    this->stage_.settle();
    EXPECT_EQ(this->settings().accentColor(), QColor(Qt::green));
    this->stage_.chooseContrast(true);
    this->stage_.settle();
    EXPECT_TRUE(this->settings().isContrastHigh());
    this->stage_.chooseContrast(true);
    this->stage_.chooseAccent(Qt::green);
    this->stage_.settle();
    EXPECT_EQ(told, 2);
}

TYPED_TEST_P(SystemSettingsContract, TellsOfRealChangesWhenTheyAreThere) {
    std::vector<std::optional<ColorScheme>> told;
    this->settings().setAppearanceHandler([&] { told.push_back(this->settings().colorScheme()); });
    this->choose(ColorScheme::Light);
    this->choose(ColorScheme::Dark);
    this->choose(ColorScheme::Dark);
    this->choose(ColorScheme::Light);
    EXPECT_EQ(told,
              (std::vector<std::optional<ColorScheme>>{ColorScheme::Dark, ColorScheme::Light}));
}

TYPED_TEST_P(SystemSettingsContract, TellsNobodyOnceTheHandlerIsTakenBack) {
    int told = 0;
    this->settings().setAppearanceHandler([&] { ++told; });
    this->settings().setAppearanceHandler({});
    this->choose(ColorScheme::Dark);
    EXPECT_EQ(told, 0);
}

REGISTER_TYPED_TEST_SUITE_P(SystemSettingsContract, FollowsTheChoice, FollowsAccentAndContrast,
                            TellsOfRealChangesWhenTheyAreThere,
                            TellsNobodyOnceTheHandlerIsTakenBack);

}  // namespace kestrelbay::testing
