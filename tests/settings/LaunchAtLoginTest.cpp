#include "settings/LaunchAtLogin.h"

#include <vector>

#include <gtest/gtest.h>

#include "fakes/FakeLoginItem.h"
#include "fakes/FakeUserDefaults.h"
#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

class LaunchAtLoginTest : public ::testing::Test {
protected:
    FakeLoginItem loginItem_;
    FakeUserDefaults defaults_;
    std::vector<LaunchAtLogin::Failure> failures_;
    bool storedBeforeReport_ = false;
    LaunchAtLogin launchAtLogin_{loginItem_, defaults_,
                                 [this](const LaunchAtLogin::Failure &failure) {
                                     failures_.push_back(failure);
                                     storedBeforeReport_ = defaults_.contains(u"launchAtLogin"_s);
                                 }};
};

TEST_F(LaunchAtLoginTest, TheStateIsThatOfTheSystem) {
    defaults_.setBoolean(u"launchAtLogin"_s, true);
    EXPECT_FALSE(launchAtLogin_.isLaunchAtLoginEnabled());
    loginItem_.setEnabledByOthers(true);
    EXPECT_TRUE(launchAtLogin_.isLaunchAtLoginEnabled());
}

TEST_F(LaunchAtLoginTest, AskingWritesNothing) {
    EXPECT_FALSE(launchAtLogin_.isLaunchAtLoginEnabled());
    EXPECT_EQ(defaults_.takeWrites(), QStringList());
    EXPECT_EQ(loginItem_.takeRequests(), QStringList());
}

TEST_F(LaunchAtLoginTest, BothWaysReachTheSystemAndTheSettings) {
    launchAtLogin_.setLaunchAtLogin(true);
    EXPECT_TRUE(launchAtLogin_.isLaunchAtLoginEnabled());
    launchAtLogin_.setLaunchAtLogin(false);
    EXPECT_FALSE(launchAtLogin_.isLaunchAtLoginEnabled());
    EXPECT_EQ(loginItem_.takeRequests(), (QStringList{u"enable"_s, u"disable"_s}));
    EXPECT_EQ(defaults_.takeWrites(),
              (QStringList{u"launchAtLogin=true"_s, u"launchAtLogin=false"_s}));
    EXPECT_TRUE(failures_.empty());
}

TEST_F(LaunchAtLoginTest, TheSystemIsAskedForWhatItHasAlready) {
    loginItem_.setEnabledByOthers(true);
    launchAtLogin_.setLaunchAtLogin(true);
    EXPECT_EQ(loginItem_.takeRequests(), QStringList{u"enable"_s});
}

TEST_F(LaunchAtLoginTest, AFailureToEnableIsReportedAndTheRequestStillStored) {
    loginItem_.setProblem(u"Operation not permitted"_s);
    launchAtLogin_.setLaunchAtLogin(true);
    ASSERT_EQ(failures_.size(), 1U);
    EXPECT_EQ(failures_[0].messageText, u"Launch at Login"_s);
    EXPECT_EQ(failures_[0].informativeText,
              u"Failed to enable launch at login: Operation not permitted"_s);
    EXPECT_EQ(failures_[0].buttonTitle, u"OK"_s);
    EXPECT_FALSE(storedBeforeReport_);
    EXPECT_EQ(defaults_.boolean(u"launchAtLogin"_s), true);
    EXPECT_FALSE(launchAtLogin_.isLaunchAtLoginEnabled());
}

TEST_F(LaunchAtLoginTest, AFailureToDisableIsReportedAndTheRequestStillStored) {
    loginItem_.setEnabledByOthers(true);
    loginItem_.setProblem(u"Disk full"_s);
    launchAtLogin_.setLaunchAtLogin(false);
    ASSERT_EQ(failures_.size(), 1U);
    EXPECT_EQ(failures_[0].informativeText, u"Failed to disable launch at login: Disk full"_s);
    EXPECT_EQ(defaults_.boolean(u"launchAtLogin"_s), false);
    EXPECT_TRUE(launchAtLogin_.isLaunchAtLoginEnabled());
}

TEST_F(LaunchAtLoginTest, AFailureReadsTheSameInChinese) {
    defaults_.setString(u"appLanguage"_s, u"zh"_s);
    loginItem_.setProblem(QString());
    launchAtLogin_.setLaunchAtLogin(true);
    ASSERT_EQ(failures_.size(), 1U);
    EXPECT_EQ(failures_[0].messageText, u"Launch at Login"_s);
    EXPECT_EQ(failures_[0].informativeText, u"Failed to enable launch at login: "_s);
}

TEST_F(LaunchAtLoginTest, AFailureNobodyListensToIsSurvived) {
    LaunchAtLogin quiet(loginItem_, defaults_, nullptr);
    loginItem_.setProblem(u"no"_s);
    quiet.setLaunchAtLogin(true);
    EXPECT_EQ(defaults_.boolean(u"launchAtLogin"_s), true);
}

TEST_F(LaunchAtLoginTest, AFailureIsNotTriedAgain) {
    loginItem_.setProblem(u"no"_s);
    launchAtLogin_.setLaunchAtLogin(true);
    EXPECT_EQ(loginItem_.takeRequests(), QStringList{u"enable"_s});
}

}  // namespace

}  // namespace kestrelbay
