#include <gtest/gtest.h>

#include "fakes/FakeServices.h"
#include "fakes/MacJournal.h"
#include "fixtures/QtPrinters.h"
#include "platform/macos/desktop/MacServices.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::macos {
namespace {

TEST(MacSystemSounds, AreTheSystemsOwn) {
    const MacSystemSounds sounds;
    EXPECT_EQ(sounds.directories(), QStringList{u"/System/Library/Sounds"_s});
    EXPECT_EQ(sounds.suffixes(), (QStringList{u".aiff"_s, u".aif"_s}));
}

TEST(MacSystemSounds, ArePlayedOnceByName) {
    setSounds({u"Jump"_s});
    MacSystemSounds sounds;
    sounds.play(u"Jump"_s);
    EXPECT_EQ(takeCalls(), QStringList{u"play Jump"_s});
    sounds.play(u"Nobody knows"_s);
    EXPECT_EQ(takeCalls(), QStringList());
}

TEST(UnifiedLog, TellsWarningsFromOtherLinesAndHidesNothing) {
    UnifiedLog log;
    log.write(u"KestrelBay: 100 % of “中文”"_s);
    log.write(u"KestrelBay [WARN] failed to create event tap"_s);
    EXPECT_EQ(takeCalls(),
              (QStringList{u"log to org.kestrelbay.KestrelBay/general, type 0, format %{public}s: "
                           "KestrelBay: 100 % of “中文”"_s,
                           u"log to org.kestrelbay.KestrelBay/general, type 16, format %{public}s: "
                           "KestrelBay [WARN] failed to create event tap"_s}));
}

TEST(MacSystemTray, IsThereAtOnceAndTintsIconsItself) {
    MacSystemTray area;
    int calls = 0;
    area.whenAvailable([&] { ++calls; });
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(area.isDark(), std::nullopt);
    EXPECT_TRUE(area.opensMenus());
}

}  // namespace
}  // namespace kestrelbay::macos
