#include "platform/linux/desktop/AutostartLoginItem.h"

#include <sys/wait.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gio/gdesktopappinfo.h>

#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

class AutostartEntryTest : public ::testing::Test {
protected:
    /// An executable that leaves its arguments in a file.
    QString makeProgram(const QString &name) {
        QString path = folder_.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\nprintf '%s|%s' \"$0\" \"$*\" > \"" + QFile::encodeName(started_) +
                   "\"\n");
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return path;
    }

    [[nodiscard]] autostart::Context contextOf(const QString &executable) const {
        return {executable, desktops_};
    }

    [[nodiscard]] bool starts(const QByteArray &lines) const {
        const auto entry = autostart::parse("[Desktop Entry]\n" + lines);
        return entry && autostart::startsProgram(*entry, contextOf(program_));
    }

    /// The entry's lines once it was made to start the program.
    [[nodiscard]] QByteArray enabled(const QByteArray &text) const {
        std::optional<KeyFile> entry = autostart::parse(text);
        if (!entry)
            return "(not an entry)";
        autostart::makeStartProgram(*entry, contextOf(program_));
        EXPECT_TRUE(autostart::startsProgram(*entry, contextOf(program_)));
        return entry->text();
    }

    /// What a desktop that takes the entry from this file starts: "program|arguments".
    QByteArray startedBy(const QString &path) {
        const GObjectPtr<GDesktopAppInfo> info(
            g_desktop_app_info_new_from_filename(QFile::encodeName(path).constData()));
        if (!info)
            return "(not loaded)";
        const auto wait = [](GDesktopAppInfo *, GPid child, gpointer) {
            int status = 0;
            ::waitpid(child, &status, 0);
        };
        if (!g_desktop_app_info_launch_uris_as_manager(info.get(), nullptr, nullptr,
                                                       G_SPAWN_DO_NOT_REAP_CHILD, nullptr, nullptr,
                                                       wait, nullptr, nullptr))
            return "(not started)";
        QFile file(started_);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(nothing)");
    }

    QTemporaryDir folder_;
    const QString started_ = folder_.filePath(u"started"_s);
    const QString program_ = makeProgram(u"kb"_s);
    const QByteArray exec_ = "Exec=" + program_.toUtf8() + "\n";
    const QByteArray valid_ = "Type=Application\nName=K\n" + exec_;
    QStringList desktops_{u"ubuntu"_s, u"GNOME"_s};
};

TEST_F(AutostartEntryTest, AFreshEntryStartsNothing) {
    EXPECT_FALSE(autostart::startsProgram(KeyFile(), contextOf(program_)));
}

TEST_F(AutostartEntryTest, AFreshEntryThatWasMadeToStart) {
    KeyFile entry;
    autostart::makeStartProgram(entry, contextOf(program_));
    EXPECT_EQ(entry.text(),
              "[Desktop Entry]\nType=Application\nName=KestrelBay\n"
              "Icon=org.kestrelbay.KestrelBay\n" +
                  exec_);
}

TEST_F(AutostartEntryTest, AFreshEntryThatHides) {
    KeyFile entry;
    autostart::hide(entry);
    EXPECT_EQ(entry.text(), "[Desktop Entry]\nType=Application\nName=KestrelBay\nHidden=true\n");
}

TEST_F(AutostartEntryTest, WhatIsNoEntryIsNotRead) {
    for (const char *text : {"", "\n", "x", "[Desktop", "[Other]\nType=Application\n", "\xff\xfe",
                             "Type=Application\n[Desktop Entry]\n"})
        EXPECT_FALSE(autostart::parse(text)) << text;
}

TEST_F(AutostartEntryTest, AWholeEntryStartsTheProgram) {
    EXPECT_TRUE(starts(valid_));
    EXPECT_TRUE(starts(valid_ + "Hidden=false\nX-GNOME-Autostart-enabled=true\n"));
    EXPECT_TRUE(starts(valid_ + "Hidden=maybe\nX-GNOME-Autostart-enabled=maybe\n"));
}

TEST_F(AutostartEntryTest, AnEntryThatIsSwitchedOffDoesNot) {
    EXPECT_FALSE(starts(valid_ + "Hidden=true\n"));
    EXPECT_FALSE(starts(valid_ + "X-GNOME-Autostart-enabled=false\n"));
}

TEST_F(AutostartEntryTest, AnEntryThatLacksSomethingDoesNot) {
    EXPECT_FALSE(starts("Type=Application\nName=K\n"));
    EXPECT_FALSE(starts("Type=Application\nExec=\n"));
    EXPECT_FALSE(starts("Type=Application\nExec=\"open\n"));
    EXPECT_FALSE(starts(exec_));
    EXPECT_FALSE(starts("Type=Link\n" + exec_));
}

TEST_F(AutostartEntryTest, AnEntryForAProgramThatIsGoneDoesNot) {
    EXPECT_FALSE(starts("Type=Application\nExec=/nowhere/kestrelbay\n"));
    EXPECT_FALSE(starts("Type=Application\nExec=kestrelbay-that-is-nowhere\n"));
    EXPECT_FALSE(starts(valid_ + "TryExec=/nowhere/kestrelbay\n"));
    EXPECT_TRUE(starts(valid_ + "TryExec=" + program_.toUtf8() + "\n"));
}

TEST_F(AutostartEntryTest, AnEntryForAnotherProgramDoesNot) {
    EXPECT_FALSE(starts("Type=Application\nExec=/bin/true\n"));
    EXPECT_FALSE(starts("Type=Application\nExec=/bin/sh -c \"exec another\"\n"));
}

TEST_F(AutostartEntryTest, AnotherCopyOrAScriptOfTheUsersCounts) {
    const QByteArray copy = makeProgram(u"opt/KestrelBay-0.9.AppImage"_s).toUtf8();
    EXPECT_TRUE(starts("Type=Application\nExec=" + copy + "\n"));
    EXPECT_TRUE(starts("Type=Application\nExec=env A=b " + program_.toUtf8() + "\n"));
    EXPECT_TRUE(starts("Type=Application\nExec=/bin/sh -c \"sleep 5; kestrelbay\"\n"));
    ASSERT_TRUE(QFile::link(program_, folder_.filePath(u"alias"_s)));
    EXPECT_TRUE(starts("Type=Application\nExec=" + folder_.filePath(u"alias"_s).toUtf8() + "\n"));
}

TEST_F(AutostartEntryTest, DesktopsThatAreLeftOutDoNotStartIt) {
    EXPECT_TRUE(starts(valid_ + "OnlyShowIn=XFCE;GNOME;\n"));
    EXPECT_FALSE(starts(valid_ + "OnlyShowIn=XFCE;\n"));
    EXPECT_FALSE(starts(valid_ + "NotShowIn=GNOME;\n"));
    EXPECT_TRUE(starts(valid_ + "NotShowIn=XFCE;\n"));
    // The desktop's own name decides before the one it derives from.
    EXPECT_TRUE(starts(valid_ + "OnlyShowIn=ubuntu;\nNotShowIn=GNOME;\n"));
    desktops_.clear();
    EXPECT_FALSE(starts(valid_ + "OnlyShowIn=GNOME;\n"));
    EXPECT_TRUE(starts(valid_ + "NotShowIn=GNOME;\n"));
}

TEST_F(AutostartEntryTest, MakingItStartTakesAwayWhatKeepsItFromThat) {
    const QByteArray head = "[Desktop Entry]\n" + valid_ + "Icon=i\n";
    for (const QByteArray &line :
         {QByteArray("Hidden=true\n"), QByteArray("X-GNOME-Autostart-enabled=false\n"),
          QByteArray("TryExec=/nowhere\n"), QByteArray("OnlyShowIn=XFCE;\n"),
          QByteArray("NotShowIn=GNOME;\n")})
        EXPECT_EQ(enabled(head + line), head);
}

TEST_F(AutostartEntryTest, MakingItStartKeepsEverythingElse) {
    const QByteArray text =
        "# mine\n\n[Desktop Entry]\nType=Application\nName=Keys\nName[de]=Tasten\n"
        "# wait for the panel\nX-GNOME-Autostart-Delay=5\nX-GNOME-Autostart-enabled=true\n"
        "Icon=i\nOnlyShowIn=GNOME;XFCE;\nComment=a\\sb \\\\ c\n" +
        exec_.chopped(1) + " --flag\n\n[Desktop Action x]\nName=X\n";
    EXPECT_EQ(enabled(text), text);
}

TEST_F(AutostartEntryTest, MakingItStartReplacesWhatStartsSomethingElse) {
    const QByteArray head = "[Desktop Entry]\nType=Application\nName=K\nIcon=i\n";
    EXPECT_EQ(enabled(head + "Exec=/bin/true\n"), head + exec_);
    EXPECT_EQ(enabled(head + "Exec=/nowhere/kestrelbay\n"), head + exec_);
    const QByteArray copy = makeProgram(u"opt/kestrelbay"_s).toUtf8();
    EXPECT_EQ(enabled(head + "Exec=" + copy + "\n"), head + exec_);
    EXPECT_EQ(enabled("[Desktop Entry]\nType=Link\nName=K\nIcon=i\n" + exec_), head + exec_);
}

TEST_F(AutostartEntryTest, MakingItStartKeepsAScriptOfTheUsers) {
    const QByteArray text =
        "[Desktop Entry]\nType=Application\nName=K\nIcon=i\n"
        "Exec=/bin/sh -c \"sleep 5; kestrelbay\"\n";
    EXPECT_EQ(enabled(text), text);
}

TEST_F(AutostartEntryTest, HidingKeepsEverythingElse) {
    auto entry = autostart::parse("# mine\n\n[Desktop Entry]\n" + valid_ + "X-Other=1\n");
    ASSERT_TRUE(entry);
    autostart::hide(*entry);
    EXPECT_EQ(entry->text(), "# mine\n\n[Desktop Entry]\n" + valid_ + "X-Other=1\nHidden=true\n");
    EXPECT_FALSE(autostart::startsProgram(*entry, contextOf(program_)));
    autostart::makeStartProgram(*entry, contextOf(program_));
    EXPECT_TRUE(autostart::startsProgram(*entry, contextOf(program_)));
}

TEST_F(AutostartEntryTest, ExecLines) {
    EXPECT_EQ(autostart::execLine(u"/usr/bin/kestrelbay"_s), u"/usr/bin/kestrelbay"_s);
    EXPECT_EQ(autostart::execLine(u"/opt/Kestrel Bay-1.0_x86~64.AppImage"_s),
              u"\"/opt/Kestrel Bay-1.0_x86~64.AppImage\""_s);
    EXPECT_EQ(autostart::execLine(u"/a\"b`c$d\\e"_s), u"\"/a\\\"b\\`c\\$d\\\\e\""_s);
    EXPECT_EQ(autostart::execLine(u"/100%"_s), u"nice -n 0 \"/100%%\""_s);
    EXPECT_EQ(autostart::execLine(u"/a=b"_s), u"nice -n 0 \"/a=b\""_s);
}

TEST_F(AutostartEntryTest, DesktopsStartProgramsOfAnyName) {
    const QString entryPath = folder_.filePath(u"x.desktop"_s);
    for (const QString &name :
         {u"plain"_s, u"with space"_s, u" lead"_s, u"a\"b"_s, u"a'b"_s, u"a`b$c"_s, u"a\\b"_s,
          u"a\\\\nb"_s, u"100%"_s, u"%f %U %%u"_s, u"a=b"_s, u"a=100%"_s,
          u"a;b&c|d<e>f*g?h#i(j)~"_s, u"line\nbreak\ttab"_s, u"键é🐦"_s, u"$HOME"_s, u"-dash"_s}) {
        const QString program = makeProgram(u"dir "_s + name + u'/' + name);
        KeyFile entry;
        autostart::makeStartProgram(entry, contextOf(program));
        EXPECT_TRUE(autostart::startsProgram(entry, contextOf(program))) << name.toStdString();
        const auto again = autostart::parse(entry.text());
        ASSERT_TRUE(again);
        EXPECT_TRUE(autostart::startsProgram(*again, contextOf(program))) << name.toStdString();

        QFile file(entryPath);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(entry.text());
        file.close();
        EXPECT_EQ(startedBy(entryPath), QFile::encodeName(program) + '|') << entry.text().data();

        ASSERT_TRUE(QFile::remove(program));
        EXPECT_FALSE(autostart::startsProgram(*again, contextOf(program))) << name.toStdString();
    }
}

}  // namespace

}  // namespace kestrelbay
