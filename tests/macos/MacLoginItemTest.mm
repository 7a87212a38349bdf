#include "platform/macos/desktop/MacLoginItem.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "fakes/FakeServices.h"
#include "fakes/MacJournal.h"
#include "fixtures/QtPrinters.h"
#include "platform/LoginItemContract.h"
#include "platform/macos/cocoa/Strings.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::testing {
namespace {

class Service {
public:
    Service() { macos::resetLoginItems(); }
    ~Service() { macos::resetLoginItems(); }
    Service(const Service &) = delete;
    Service &operator=(const Service &) = delete;

    LoginItem &item() { return item_; }
    void setRefusing(bool refusing) {
        macos::setLoginItemRefusal(refusing ? u"Operation not permitted"_s : QString());
    }

private:
    ServiceLoginItem item_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(MacService, LoginItemContract, Service);

class ServiceLoginItemTest : public ::testing::Test {
protected:
    Service service_;
    LoginItem &item_ = service_.item();
};

TEST_F(ServiceLoginItemTest, OnlyTheStatusEnabledCounts) {
    for (const SMAppServiceStatus status :
         {SMAppServiceStatusNotRegistered, SMAppServiceStatusRequiresApproval,
          SMAppServiceStatusNotFound}) {
        macos::setLoginItemStatus(status);
        EXPECT_FALSE(item_.isEnabled()) << status;
    }
    macos::setLoginItemStatus(SMAppServiceStatusEnabled);
    EXPECT_TRUE(item_.isEnabled());
}

TEST_F(ServiceLoginItemTest, EachWayIsOneRequest) {
    EXPECT_EQ(item_.setEnabled(true), std::nullopt);
    EXPECT_EQ(macos::takeCalls(), QStringList{u"register the main application"_s});
    EXPECT_EQ(item_.setEnabled(false), std::nullopt);
    EXPECT_EQ(macos::takeCalls(), QStringList{u"unregister the main application"_s});
}

TEST_F(ServiceLoginItemTest, TheReasonIsTheSystems) {
    service_.setRefusing(true);
    EXPECT_EQ(item_.setEnabled(true), u"Operation not permitted"_s);
    macos::setLoginItemStatus(SMAppServiceStatusEnabled);
    EXPECT_EQ(item_.setEnabled(false), u"Operation not permitted"_s);
    EXPECT_TRUE(item_.isEnabled());
}

TEST_F(ServiceLoginItemTest, AnItemThatWaitsForApprovalIsNotThereYet) {
    macos::setLoginItemStatus(SMAppServiceStatusRequiresApproval);
    service_.setRefusing(true);
    EXPECT_EQ(item_.setEnabled(true), u"Operation not permitted"_s);
    EXPECT_EQ(item_.setEnabled(false), u"Operation not permitted"_s);
    service_.setRefusing(false);
    EXPECT_EQ(item_.setEnabled(false), std::nullopt);
}

TEST_F(ServiceLoginItemTest, OneThatIsNotFoundIsDisabledAlready) {
    macos::setLoginItemStatus(SMAppServiceStatusNotFound);
    service_.setRefusing(true);
    EXPECT_EQ(item_.setEnabled(false), std::nullopt);
}

class MakeLoginItemTest : public ::testing::Test {
protected:
    MakeLoginItemTest() : oldHome_(qgetenv("HOME")) { qputenv("HOME", home_.path().toUtf8()); }
    ~MakeLoginItemTest() override {
        qputenv("HOME", oldHome_);
        macos::setSystemVersion({15, 1, 0});
    }

    const QByteArray oldHome_;
    const QTemporaryDir home_;
};

TEST_F(MakeLoginItemTest, FromMacOS13OnItIsTheService) {
    for (const NSOperatingSystemVersion version :
         {NSOperatingSystemVersion{13, 0, 0}, NSOperatingSystemVersion{26, 1, 0}}) {
        macos::setSystemVersion(version);
        EXPECT_NE(dynamic_cast<ServiceLoginItem *>(makeLoginItem().get()), nullptr);
    }
}

TEST_F(MakeLoginItemTest, BeforeItIsAFileForTheRunningBundle) {
    macos::setSystemVersion({12, 7, 6});
    const std::unique_ptr<LoginItem> item = makeLoginItem();
    EXPECT_EQ(item->setEnabled(true), std::nullopt);
    EXPECT_EQ(macos::takeCalls(), QStringList());
    QFile file(home_.filePath(u"Library/LaunchAgents/org.kestrelbay.KestrelBay.plist"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(),
              launchAgentPropertyList(u"org.kestrelbay.KestrelBay"_s,
                                      toQString([[NSBundle mainBundle] bundlePath])));
}

}  // namespace
}  // namespace kestrelbay::testing
