#include "app/UnseenWindows.h"

#include <gtest/gtest.h>

#include "fakes/FakeSystemLog.h"
#include "fixtures/QtPrinters.h"
#include "settings/L.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {
namespace {

class UnseenWindowsTest : public testing::Test {
protected:
    FakeSystemLog log_;
    QStringList toasts_;
    UnseenWindows unseen_{log_, [this](const QString &message) { toasts_.append(message); }};
};

TEST_F(UnseenWindowsTest, LaunchingIsNoReasonToSayAnything) {
    unseen_.opened(u"/apps/a.desktop"_s);
    unseen_.opened(u"/apps/b.desktop"_s);
    EXPECT_EQ(toasts_, QStringList());
}

TEST_F(UnseenWindowsTest, SaysOnceThatAnApplicationWasOpenedInsteadOfBroughtForward) {
    unseen_.opened(u"/apps/a.desktop"_s);
    for (int i = 0; i < 3; ++i)
        unseen_.opened(u"/apps/a.desktop"_s);
    EXPECT_EQ(toasts_, QStringList{L::windowsUnseen()});
    EXPECT_EQ(log_.lines().size(), 1);
}

}  // namespace
}  // namespace kestrelbay
