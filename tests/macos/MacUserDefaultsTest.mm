#include "platform/macos/desktop/MacUserDefaults.h"

#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

#include "platform/UserDefaultsContract.h"
#include "platform/macos/cocoa/Strings.h"

namespace kestrelbay::testing {
namespace {

/// The standard ones, emptied. Nothing here has them written to the disk.
class StandardDefaults {
public:
    StandardDefaults() {
        NSUserDefaults *const standard = [NSUserDefaults standardUserDefaults];
        [standard setPersistentDomain:@{} forName:[[NSProcessInfo processInfo] processName]];
    }

    UserDefaults &defaults() { return defaults_; }

private:
    MacUserDefaults defaults_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, UserDefaultsContract, StandardDefaults);

class MacUserDefaultsTest : public ::testing::Test {
protected:
    void store(id value) { [[NSUserDefaults standardUserDefaults] setObject:value forKey:@"key"]; }

    StandardDefaults store_;
    UserDefaults &defaults_ = store_.defaults();
    const QString key_ = QStringLiteral("key");
};

TEST_F(MacUserDefaultsTest, TheStandardOnesAreRead) {
    store(@"text");
    EXPECT_EQ(defaults_.string(key_), QStringLiteral("text"));
    store([NSNumber numberWithBool:YES]);
    EXPECT_EQ(defaults_.boolean(key_), true);
    store([NSNumber numberWithBool:NO]);
    EXPECT_EQ(defaults_.boolean(key_), false);
}

TEST_F(MacUserDefaultsTest, TheStandardOnesAreWritten) {
    defaults_.setString(key_, QStringLiteral("文"));
    EXPECT_TRUE([[[NSUserDefaults standardUserDefaults] objectForKey:@"key"] isEqual:@"文"]);
    defaults_.setBoolean(key_, true);
    EXPECT_TRUE([[NSUserDefaults standardUserDefaults] boolForKey:@"key"]);
}

TEST_F(MacUserDefaultsTest, ValuesOfOtherTypesReadAsAbsent) {
    for (const id value : {
             static_cast<id>([NSNumber numberWithInt:1]), static_cast<id>(@[ @"a" ]),
                 static_cast<id>(@{@"a" : @"b"}), static_cast<id>([NSData data]),
                 static_cast<id>([NSNumber numberWithDouble:0.5])
         }) {
        store(value);
        EXPECT_TRUE([[[NSUserDefaults standardUserDefaults] objectForKey:@"key"] isEqual:value]);
        EXPECT_EQ(defaults_.string(key_), std::nullopt);
        EXPECT_EQ(defaults_.boolean(key_), std::nullopt);
    }
}

TEST_F(MacUserDefaultsTest, ATextThatReadsLikeABooleanIsAText) {
    store(@"YES");
    EXPECT_EQ(defaults_.boolean(key_), std::nullopt);
    EXPECT_EQ(defaults_.string(key_), QStringLiteral("YES"));
}

}  // namespace
}  // namespace kestrelbay::testing
