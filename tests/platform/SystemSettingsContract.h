#pragma once

#include <optional>
#include <vector>

#include <gtest/gtest.h>

#include "platform/SystemSettings.h"

namespace kestrelbay::testing {

/// What every back end that tells the colour scheme promises. The Stage type is made
/// afresh for each test, with Light chosen, and has
///   SystemSettings &settings();
///   void choose(ColorScheme)            as the user does it, also when it is chosen already
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

TYPED_TEST_P(SystemSettingsContract, TellsOfRealChangesWhenTheyAreThere) {
    std::vector<std::optional<ColorScheme>> told;
    this->settings().setColorSchemeHandler([&] { told.push_back(this->settings().colorScheme()); });
    this->choose(ColorScheme::Light);
    this->choose(ColorScheme::Dark);
    this->choose(ColorScheme::Dark);
    this->choose(ColorScheme::Light);
    EXPECT_EQ(told,
              (std::vector<std::optional<ColorScheme>>{ColorScheme::Dark, ColorScheme::Light}));
}

TYPED_TEST_P(SystemSettingsContract, TellsNobodyOnceTheHandlerIsTakenBack) {
    int told = 0;
    this->settings().setColorSchemeHandler([&] { ++told; });
    this->settings().setColorSchemeHandler({});
    this->choose(ColorScheme::Dark);
    EXPECT_EQ(told, 0);
}

REGISTER_TYPED_TEST_SUITE_P(SystemSettingsContract, FollowsTheChoice,
                            TellsOfRealChangesWhenTheyAreThere,
                            TellsNobodyOnceTheHandlerIsTakenBack);

}  // namespace kestrelbay::testing
