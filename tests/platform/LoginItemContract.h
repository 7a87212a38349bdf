#pragma once

#include <gtest/gtest.h>

#include "platform/LoginItem.h"

namespace kestrelbay::testing {

/// What every login item promises. The Login type is made afresh for each test, with
/// nothing started at login, and has
///   LoginItem &item();
///   void setRefusing(bool)        from now on the system refuses to start anything
template <typename Login>
class LoginItemContract : public ::testing::Test {
protected:
    LoginItem &item() { return login_.item(); }

    Login login_;
};

TYPED_TEST_SUITE_P(LoginItemContract);

TYPED_TEST_P(LoginItemContract, NothingIsStartedAtFirst) {
    EXPECT_FALSE(this->item().isEnabled());
}

TYPED_TEST_P(LoginItemContract, WhatWasAskedForIsReadBack) {
    EXPECT_EQ(this->item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(this->item().isEnabled());
    EXPECT_EQ(this->item().setEnabled(false), std::nullopt);
    EXPECT_FALSE(this->item().isEnabled());
    EXPECT_EQ(this->item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(this->item().isEnabled());
}

TYPED_TEST_P(LoginItemContract, AskingTwiceIsHarmless) {
    EXPECT_EQ(this->item().setEnabled(false), std::nullopt);
    EXPECT_EQ(this->item().setEnabled(true), std::nullopt);
    EXPECT_EQ(this->item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(this->item().isEnabled());
    EXPECT_EQ(this->item().setEnabled(false), std::nullopt);
    EXPECT_FALSE(this->item().isEnabled());
}

TYPED_TEST_P(LoginItemContract, ARefusalHasAReasonAndChangesNothing) {
    this->login_.setRefusing(true);
    const std::optional<QString> reason = this->item().setEnabled(true);
    ASSERT_NE(reason, std::nullopt);
    EXPECT_FALSE(reason->isEmpty());
    EXPECT_FALSE(this->item().isEnabled());
    EXPECT_EQ(this->item().setEnabled(false), std::nullopt);
}

TYPED_TEST_P(LoginItemContract, ARefusalIsNotForEver) {
    this->login_.setRefusing(true);
    EXPECT_NE(this->item().setEnabled(true), std::nullopt);
    this->login_.setRefusing(false);
    EXPECT_EQ(this->item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(this->item().isEnabled());
}

REGISTER_TYPED_TEST_SUITE_P(LoginItemContract, NothingIsStartedAtFirst, WhatWasAskedForIsReadBack,
                            AskingTwiceIsHarmless, ARefusalHasAReasonAndChangesNothing,
                            ARefusalIsNotForEver);

}  // namespace kestrelbay::testing
