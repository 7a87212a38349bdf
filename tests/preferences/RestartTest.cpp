#include "preferences/Restart.h"

#include <gtest/gtest.h>

#include "core/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

TEST(Restart, AnApplicationBundleIsOpened) {
    const Command command =
        restartCommand(u"/Applications/Kestrel Bay.app/Contents/MacOS/kestrelbay"_s);
    EXPECT_EQ(command.program, u"/usr/bin/open"_s);
    EXPECT_EQ(command.arguments, QStringList{u"/Applications/Kestrel Bay.app"_s});
}

TEST(Restart, TheInnermostBundleIsMeant) {
    EXPECT_EQ(restartCommand(u"/a.app/Contents/MacOS/b.app/Contents/MacOS/c"_s).arguments,
              QStringList{u"/a.app/Contents/MacOS/b.app"_s});
}

TEST(Restart, AnythingElseIsStartedAsItIs) {
    const Command command = restartCommand(u"/usr/bin/kestrelbay"_s);
    EXPECT_EQ(command.program, u"/usr/bin/kestrelbay"_s);
    EXPECT_TRUE(command.arguments.isEmpty());
}

}  // namespace

}  // namespace kestrelbay
