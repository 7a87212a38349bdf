#pragma once

#include <gtest/gtest.h>

#include <QString>

#include "platform/UserDefaults.h"

namespace kestrelbay::testing {

/// What every implementation of UserDefaults promises. Instantiate with a type
/// that is made afresh for each test and whose defaults() returns an empty store:
///   INSTANTIATE_TYPED_TEST_SUITE_P(Json, UserDefaultsContract, JsonStore);
template <typename Store>
class UserDefaultsContract : public ::testing::Test {
protected:
    UserDefaults &defaults() { return store_.defaults(); }

    const QString key_ = QStringLiteral("appLanguage");
    const QString other_ = QStringLiteral("launchAtLogin");

private:
    Store store_;
};

TYPED_TEST_SUITE_P(UserDefaultsContract);

TYPED_TEST_P(UserDefaultsContract, AnEmptyStoreHoldsNothing) {
    EXPECT_EQ(this->defaults().string(this->key_), std::nullopt);
    EXPECT_EQ(this->defaults().boolean(this->key_), std::nullopt);
}

TYPED_TEST_P(UserDefaultsContract, ATextIsReadBack) {
    const QString text = QStringLiteral("中文 \"quoted\" \\ \n\t\u0001 🐦 e\u0301");
    this->defaults().setString(this->key_, text);
    EXPECT_EQ(this->defaults().string(this->key_), text);
}

TYPED_TEST_P(UserDefaultsContract, AnEmptyTextIsStored) {
    this->defaults().setString(this->key_, QString());
    EXPECT_EQ(this->defaults().string(this->key_), QString());
}

TYPED_TEST_P(UserDefaultsContract, BothBooleansAreReadBack) {
    this->defaults().setBoolean(this->key_, true);
    EXPECT_EQ(this->defaults().boolean(this->key_), true);
    this->defaults().setBoolean(this->key_, false);
    EXPECT_EQ(this->defaults().boolean(this->key_), false);
}

TYPED_TEST_P(UserDefaultsContract, AnotherTypeReadsAsAbsent) {
    this->defaults().setString(this->key_, QStringLiteral("true"));
    this->defaults().setBoolean(this->other_, true);
    EXPECT_EQ(this->defaults().boolean(this->key_), std::nullopt);
    EXPECT_EQ(this->defaults().string(this->other_), std::nullopt);
}

TYPED_TEST_P(UserDefaultsContract, AWriteReplacesAValueOfAnotherType) {
    this->defaults().setString(this->key_, QStringLiteral("en"));
    this->defaults().setBoolean(this->key_, true);
    EXPECT_EQ(this->defaults().string(this->key_), std::nullopt);
    EXPECT_EQ(this->defaults().boolean(this->key_), true);
}

TYPED_TEST_P(UserDefaultsContract, KeysDoNotTouchEachOther) {
    this->defaults().setString(this->key_, QStringLiteral("zh"));
    this->defaults().setBoolean(this->other_, true);
    this->defaults().setString(this->key_, QStringLiteral("en"));
    EXPECT_EQ(this->defaults().string(this->key_), QStringLiteral("en"));
    EXPECT_EQ(this->defaults().boolean(this->other_), true);
}

TYPED_TEST_P(UserDefaultsContract, KeysAreToldApartByCase) {
    this->defaults().setString(this->key_, QStringLiteral("en"));
    EXPECT_EQ(this->defaults().string(this->key_.toLower()), std::nullopt);
}

REGISTER_TYPED_TEST_SUITE_P(UserDefaultsContract, AnEmptyStoreHoldsNothing, ATextIsReadBack,
                            AnEmptyTextIsStored, BothBooleansAreReadBack, AnotherTypeReadsAsAbsent,
                            AWriteReplacesAValueOfAnotherType, KeysDoNotTouchEachOther,
                            KeysAreToldApartByCase);

}  // namespace kestrelbay::testing
