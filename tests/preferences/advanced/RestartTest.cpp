#include "preferences/advanced/Restart.h"

#include <gtest/gtest.h>

#include <QProcess>

#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

TEST(Restart, AnApplicationBundleIsOpened) {
    const Command command =
        openCommand(u"/Applications/Kestrel Bay.app/Contents/MacOS/kestrelbay"_s);
    EXPECT_EQ(command.program, u"/usr/bin/open"_s);
    EXPECT_EQ(command.arguments, QStringList{u"/Applications/Kestrel Bay.app"_s});
}

TEST(Restart, TheInnermostBundleIsMeant) {
    EXPECT_EQ(openCommand(u"/a.app/Contents/MacOS/b.app/Contents/MacOS/c"_s).arguments,
              QStringList{u"/a.app/Contents/MacOS/b.app"_s});
}

TEST(Restart, TheNewInstanceMeetsNoOldOne) {
    QProcess old;
    old.start(u"/bin/cat"_s, {});
    ASSERT_TRUE(old.waitForStarted());
    const QString pid = QString::number(old.processId());
    const Command command = afterProcess(
        old.processId(), {u"/bin/sh"_s,
                          {u"-c"_s, u"kill -0 $0 2>/dev/null && echo met it || echo \"$1\""_s, pid,
                           u"alone; it's \"me\""_s}});
    QProcess next;
    next.start(command.program, command.arguments);
    ASSERT_TRUE(next.waitForStarted());
    old.closeWriteChannel();
    ASSERT_TRUE(old.waitForFinished());
    ASSERT_TRUE(next.waitForFinished());
    EXPECT_EQ(QString::fromUtf8(next.readAllStandardOutput()), u"alone; it's \"me\"\n"_s);
}

}  // namespace

}  // namespace kestrelbay
