#include <algorithm>
#include <array>
#include <csignal>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include "platform/linux/applications/matching/Processes.h"
#include "platform/linux/apps/bus.h"
#include "platform/linux/apps/desktop.h"
#include "support/Poll.h"

namespace kestrelbay::testing {
namespace {

constexpr const char *kFileManagerXml =
    "<node><interface name='org.freedesktop.FileManager1'>"
    "<method name='ShowFolders'><arg type='as' direction='in'/><arg type='s' direction='in'/>"
    "</method></interface></node>";
constexpr const char *kSystemdXml =
    "<node><interface name='org.freedesktop.systemd1.Manager'>"
    "<method name='StartTransientUnit'><arg type='s' direction='in'/><arg type='s' direction='in'/>"
    "<arg type='a(sv)' direction='in'/><arg type='a(sa(sv))' direction='in'/>"
    "<arg type='o' direction='out'/></method></interface></node>";

QStringList list(std::initializer_list<const char *> texts) {
    QStringList result;
    for (const char *text : texts)
        result.append(QString::fromUtf8(text));
    return result;
}

/// How the test program was started, as it wrote it down.
struct Start {
    QList<QByteArray> arguments, variables, descriptors, rest;

    [[nodiscard]] QByteArray variable(const QByteArray &name) const {
        for (const QByteArray &text : variables)
            if (text.startsWith(name + '='))
                return text.mid(name.size() + 1);
        return "(none)";
    }
    /// Behind --record.
    [[nodiscard]] QStringList extra() const {
        QStringList texts;
        for (const QByteArray &text : arguments.mid(2))
            texts.append(QString::fromUtf8(text));
        return texts;
    }
};

class WorkspaceLaunch : public AppsDesktop {
protected:
    void SetUp() override {
        AppsDesktop::SetUp();
        startWorkspace();
        QFile::remove(record());
    }
    void TearDown() override {
        AppsDesktop::TearDown();
        QFile::remove(record());
    }

    [[nodiscard]] static QString record() {
        return PrivateHome::instance().path(QStringLiteral("record"));
    }
    [[nodiscard]] static QByteArray recording() {
        return clientProgram() + " --record=" + record().toUtf8();
    }

    [[nodiscard]] static Start start() {
        Start result;
        QByteArray text;
        if (!waitUntil([&] {
                QFile file(record());
                if (file.open(QIODevice::ReadOnly))
                    text = file.readAll();
                return !text.isEmpty();
            }))
            return result;
        QFile::remove(record());
        // As long as it runs, it is on its way to a window, and not launched again.
        EXPECT_TRUE(waitUntil([] {
            return std::ranges::none_of(allProcesses(), [](std::int64_t pid) {
                return readOfProcess(pid, "cmdline").startsWith(recording().replace(' ', '\0'));
            });
        }));
        const std::array<QList<QByteArray> *, 4> parts{&result.arguments, &result.variables,
                                                       &result.descriptors, &result.rest};
        std::size_t part = 0;
        text.chop(1);
        for (const QByteArray &item : text.split('\0'))
            if (item == "--" && part < 3)
                ++part;
            else
                parts[part]->append(item);
        return result;
    }

    [[nodiscard]] QString startNew(const QString &entry, const QStringList &arguments) {
        int completions = 0;
        QString error;
        workspace().openApplication(QUrl::fromLocalFile(entry), arguments,
                                    [&](const QString &text) {
                                        ++completions;
                                        error = text;
                                    });
        EXPECT_EQ(completions, 1);
        return error;
    }
    bool open(const QString &path) { return workspace().open(QUrl::fromLocalFile(path)); }
    static QString entry(const QByteArray &lines,
                         const QString &name = QStringLiteral("thing.desktop")) {
        return PrivateHome::instance().writeEntry(name, lines);
    }
};

TEST_F(WorkspaceLaunch, ArgumentsArriveByteForByte) {
    const QString path = entry("Exec=" + recording() + " %U");
    const QStringList arguments =
        list({"a b", "it's", "\"q\"", "$HOME", "`id`", "back\\slash", "100%", "%f", "%%", "",
              "tab\tnew\nline", "grün 日本", "*?[x]", "~", "#x", ";|&<>", "--"});
    EXPECT_EQ(startNew(path, arguments), QString());
    Start started = start();
    // The record's own separator looks like the last argument.
    EXPECT_EQ(started.extra(), arguments.first(arguments.size() - 1));
}

TEST_F(WorkspaceLaunch, TheChildStandsOnItsOwnFeet) {
    qputenv("DESKTOP_STARTUP_ID", "ours_TIME1");
    qputenv("GIO_LAUNCHED_DESKTOP_FILE_PID", QByteArray::number(getpid()));
    const int leaked = ::open("/dev/zero", O_RDONLY);
    ASSERT_GT(leaked, 2);
    const QString path = entry("Exec=" + recording() + "\nPath=/usr/share");
    for (const bool isNew : {false, true}) {
        EXPECT_TRUE(isNew ? startNew(path, list({"x"})).isEmpty() : open(path));
        const Start started = start();
        EXPECT_EQ(started.descriptors,
                  QList<QByteArray>({"0 /dev/null", "1 /dev/null", "2 /dev/null"}));
        EXPECT_EQ(started.rest.first(2), QList<QByteArray>({"leader", "/usr/share"}));
        EXPECT_EQ(started.variable("QT_QPA_PLATFORM"), "(none)");
        EXPECT_EQ(started.variable("GIO_LAUNCHED_DESKTOP_FILE"), path.toUtf8());
        EXPECT_NE(started.variable("GIO_LAUNCHED_DESKTOP_FILE_PID"), QByteArray::number(getpid()));
        EXPECT_EQ(started.variable("DISPLAY"), server_->displayName().toUtf8());
        const QByteArray id = started.variable("DESKTOP_STARTUP_ID");
        ASSERT_TRUE(id.contains("_TIME")) << id.constData();
        EXPECT_GT(id.mid(id.indexOf("_TIME") + 5).toULongLong(), 1U);
    }
    ::close(leaked);
    qunsetenv("DESKTOP_STARTUP_ID");
    qunsetenv("GIO_LAUNCHED_DESKTOP_FILE_PID");
}

TEST_F(WorkspaceLaunch, AnActivationTokenIsForOneLaunch) {
    const QString path = entry("Exec=" + recording());
    for (const bool isNew : {false, true}) {
        workspace().setActivationToken(QStringLiteral("a token"));
        for (const char *expected : {"a token", "(none)"}) {
            EXPECT_TRUE(isNew ? startNew(path, list({"x"})).isEmpty() : open(path));
            EXPECT_EQ(start().variable("XDG_ACTIVATION_TOKEN"), expected);
        }
    }
}

TEST_F(WorkspaceLaunch, TheChildHearsAllSignals) {
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    // What the sanitizers' and Qt's own threads need stays as it is.
    const std::array ignored{SIGALRM, SIGTSTP, SIGTTIN, SIGXFSZ, SIGWINCH, SIGRTMAX};
    std::array<void (*)(int), ignored.size()> handlers{};
    for (std::size_t i = 0; i < ignored.size(); ++i)
        handlers[i] = std::signal(ignored[i], SIG_IGN);
    pthread_sigmask(SIG_BLOCK, &all, &before);
    const QString inTerminal =
        entry("Terminal=true\nExec=" + recording() + " %U", QStringLiteral("terminal.desktop"));
    const QString plain = entry("Exec=" + recording() + " %U");
    const QString byBus = entry("DBusActivatable=true\nExec=" + recording() + " %U",
                                QStringLiteral("org.example.Unknown.desktop"));
    PrivateHome::instance().offerPrograms(list({"xterm", "sh"}));
    QList<QByteArray> signalsOfChildren;
    for (const QString &path : {plain, inTerminal, byBus}) {
        EXPECT_TRUE(open(path));
        signalsOfChildren += start().rest.mid(2);
        EXPECT_TRUE(startNew(path, list({"x"})).isEmpty());
        signalsOfChildren += start().rest.mid(2);
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    for (std::size_t i = 0; i < ignored.size(); ++i)
        std::signal(ignored[i], handlers[i]);
    EXPECT_EQ(signalsOfChildren.size(), 12);
    // xterm itself keeps this one from what it runs.
    constexpr qulonglong kOfXterm = 1ULL << (SIGTTOU - 1);
    for (const QByteArray &line : std::as_const(signalsOfChildren))
        EXPECT_EQ(line.mid(line.indexOf('\t') + 1).toULongLong(nullptr, 16) & ~kOfXterm, 0U)
            << line.constData();
}

TEST_F(WorkspaceLaunch, NoChildBecomesAZombie) {
    const QString path = entry("Exec=" + recording());
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(open(path));
        EXPECT_FALSE(start().arguments.isEmpty());
    }
    EXPECT_TRUE(waitUntil([] {
        QFile children(QStringLiteral("/proc/self/task/%1/children").arg(getpid()));
        if (!children.open(QIODevice::ReadOnly))
            return true;
        for (const QByteArray &pid : children.readAll().simplified().split(' ')) {
            QFile stat(QStringLiteral("/proc/%1/stat").arg(QString::fromLatin1(pid)));
            if (stat.open(QIODevice::ReadOnly) && stat.readAll().contains("linux_apps_cli"))
                return false;
        }
        return true;
    }));
}

TEST_F(WorkspaceLaunch, FieldCodes) {
    const QString path =
        entry("Icon=my-icon\nName[de]=Ding\nExec=" + recording() + " a %i %c %k %% %U");
    const QString spaced = PrivateHome::instance().write(QStringLiteral("a b%ü.txt"), "x");
    EXPECT_TRUE(open(path));
    EXPECT_EQ(start().extra(), list({"a", "--icon", "my-icon", "Ding"})
                                   << path << QStringLiteral("%"));

    const QList<QUrl> files{QUrl::fromLocalFile(spaced), QUrl(QStringLiteral("sftp://h/x%20y"))};
    EXPECT_TRUE(workspace().openFiles(files, QUrl::fromLocalFile(path)));
    const QStringList got = start().extra();
    ASSERT_EQ(got.size(), 8) << got.join(u'|').toStdString();
    EXPECT_EQ(got[6], spaced);
    EXPECT_EQ(got[7], QStringLiteral("sftp://h/x%20y"));

    EXPECT_EQ(startNew(path, list({"z"})), QString());
    EXPECT_EQ(start().extra(), list({"a", "--icon", "my-icon", "Ding"})
                                   << path << QStringLiteral("%") << QStringLiteral("z"));
    EXPECT_TRUE(open(entry("Exec=" + recording() + " a %d%D%n%N%v%m b")));
    EXPECT_EQ(start().extra(), list({"a", "b"}));
    // Paths, one and many; and a program that names no files gets them all the same.
    for (const char *code : {" %f", " %F", ""}) {
        const QString one = entry("Exec=" + recording() + code);
        EXPECT_TRUE(workspace().openFiles({QUrl::fromLocalFile(spaced)}, QUrl::fromLocalFile(one)));
        EXPECT_EQ(start().extra(), QStringList(spaced)) << code;
    }
}

TEST_F(WorkspaceLaunch, WhatCannotBeStartedSaysWhy) {
    const QString missing = PrivateHome::instance().path(QStringLiteral("gone.desktop"));
    const QString broken =
        PrivateHome::instance().write(QStringLiteral("broken.desktop"), "[Desktop Entry\nnonsense");
    const QString link = PrivateHome::instance().write(
        QStringLiteral("link.desktop"), "[Desktop Entry]\nType=Link\nName=L\nURL=file:///\n");
    const QString noProgram = entry("Exec=/nowhere/at/all", QStringLiteral("noprogram.desktop"));
    const QString noTry =
        entry("TryExec=/nowhere/at/all\nExec=" + recording(), QStringLiteral("notry.desktop"));
    const QString badExec = entry("Exec=\"unclosed", QStringLiteral("badexec.desktop"));
    const QString noExec = entry("", QStringLiteral("noexec.desktop"));
    const QString binary = PrivateHome::instance().write(
        QStringLiteral("binary.desktop"), QByteArray("[Desktop Entry]\0\xff\xfe\n", 20));
    for (const QString &path : {missing, broken, link, noProgram, noTry, badExec, noExec, binary,
                                QString(), PrivateHome::instance().path(QString())}) {
        EXPECT_FALSE(startNew(path, list({"x"})).isEmpty()) << path.toStdString();
        EXPECT_FALSE(
            workspace().openFiles({QUrl(QStringLiteral("file:///etc"))}, QUrl::fromLocalFile(path)))
            << path.toStdString();
    }
    for (const QString &path : {missing, broken, link, noProgram, noTry, badExec, noExec, binary})
        EXPECT_FALSE(open(path)) << path.toStdString();
    EXPECT_FALSE(workspace().openUrl(QStringLiteral("no-such-scheme-1://x")));
    EXPECT_FALSE(workspace().openUrl(QString()));
    EXPECT_FALSE(workspace().open(QUrl()));
    EXPECT_FALSE(workspace().open(QUrl(QStringLiteral("relative"))));
    EXPECT_FALSE(QFileInfo::exists(record()));
}

TEST_F(WorkspaceLaunch, ADeletedEntryThatARuleNamesStillStarts) {
    EXPECT_TRUE(open(entry("Hidden=true\nExec=" + recording())));
    EXPECT_FALSE(start().arguments.isEmpty());
}

TEST_F(WorkspaceLaunch, UrlsGoToTheirDefaultApplication) {
    entry("MimeType=x-scheme-handler/kestreltest;\nExec=" + recording() + " url %u",
          QStringLiteral("handler.desktop"));
    entry("MimeType=text/plain;\nExec=" + recording() + " file %f",
          QStringLiteral("texts.desktop"));
    PrivateHome::instance().write(QStringLiteral("config/mimeapps.list"),
                                  "[Default Applications]\n"
                                  "x-scheme-handler/kestreltest=handler.desktop\n"
                                  "text/plain=texts.desktop\n");
    const QString url = QStringLiteral("kestreltest://host/a%20b?c=%25");
    // GLib hears of new defaults in its own time.
    EXPECT_TRUE(waitUntil([&] { return workspace().openUrl(url); }));
    EXPECT_EQ(start().extra(), QStringList({QStringLiteral("url"), url}));
    const QString text = PrivateHome::instance().write(QStringLiteral("note.txt"), "hello\n");
    EXPECT_TRUE(open(text));
    EXPECT_EQ(start().extra(), list({"file"}) << text);
}

TEST_F(WorkspaceLaunch, UrlsArriveByteForByte) {
    const QStringList urls = list(
        {"tel://5551234", "steam://440", "shortcuts://RunMe/Do?Name=X", "x-item://8F5B2A1C",
         "foo:Bar%7ebaz", "message://%3CAb%40c%3E", "foo://a%20b/c", "foo://a..b", "foo://-x-",
         "foo://h:99999/", "FOO://h/../a/./b//c?%2f#%2F", "foo:%25f%25u", "foo://[::0001]:080"});
    QByteArray types;
    QByteArray defaults = "[Default Applications]\n";
    for (const char *scheme : {"tel", "steam", "shortcuts", "x-item", "foo", "message"}) {
        types += QByteArray("x-scheme-handler/") + scheme + ';';
        defaults += QByteArray("x-scheme-handler/") + scheme + "=handler.desktop\n";
    }
    const QByteArray entryOfTypes = "MimeType=" + types + "\nExec=" + recording();
    for (const char *code : {" %u", " %U"}) {
        entry(entryOfTypes + code, QStringLiteral("handler.desktop"));
        PrivateHome::instance().write(QStringLiteral("config/mimeapps.list"), defaults);
        for (const QString &url : urls) {
            ASSERT_TRUE(waitUntil([&] { return workspace().openUrl(url); })) << url.toStdString();
            EXPECT_EQ(start().extra(), QStringList(url)) << code;
        }
    }
    entry("DBusActivatable=true\n" + entryOfTypes, QStringLiteral("org.example.Handler.desktop"));
    PrivateHome::instance().write(
        QStringLiteral("config/mimeapps.list"),
        defaults.replace("handler.desktop", "org.example.Handler.desktop"));
    const BusService service(QStringLiteral("org.example.Handler"),
                             QStringLiteral("/org/example/Handler"), kApplicationXml,
                             BusService::Manner::Answers);
    for (const QString &url : urls) {
        const qsizetype before = service.calls().size();
        ASSERT_TRUE(waitUntil([&] {
            return workspace().openUrl(url) && service.calls().size() > before;
        })) << url.toStdString();
        EXPECT_TRUE(service.calls().last().startsWith(QStringLiteral("Open(['%1']").arg(url)))
            << service.calls().last().toStdString();
    }
}

TEST_F(WorkspaceLaunch, AnOwnWindowIsRecognisedByItsLaunch) {
    startWindowManager();
    // Two entries with one program whose windows say nothing of either.
    const QByteArray exec = "Exec=" + clientProgram() + " --windows=1 --class=Nobody";
    const QString one = entry(exec, QStringLiteral("one.desktop"));
    const QString two = entry(exec + " %U", QStringLiteral("two.desktop"));
    ASSERT_TRUE(waitUntil([&] { return open(one); }));
    Application first = waitForRunning(one);
    ASSERT_TRUE(first);
    EXPECT_FALSE(running(two));
    EXPECT_TRUE(becomesActive(one));

    // With arguments it is always another process.
    EXPECT_EQ(startNew(two, list({"--x"})), QString());
    const Application second = waitForRunning(two);
    ASSERT_TRUE(second);
    EXPECT_NE(first->processIdentifier(), second->processIdentifier());
    EXPECT_EQ(running(one)->windows().size(), 1U);
    EXPECT_EQ(startNew(two, list({"--x"})), QString());
    EXPECT_TRUE(waitForRunning(two, 2));
}

TEST_F(WorkspaceLaunch, TerminalProgramsRunInATerminal) {
    startWindowManager();
    PrivateHome::instance().offerPrograms(list({"xterm", "sh", "sleep"}));
    const QString path =
        entry("Terminal=true\nExec=sh -c \"" + recording() + " $0; exec sleep 60\" in-terminal");
    ASSERT_TRUE(open(path));
    EXPECT_EQ(start().extra(), list({"in-terminal"}));
    const Application application = waitForRunning(path);
    ASSERT_TRUE(application);
    EXPECT_TRUE(becomesActive(path));
    ::kill(static_cast<pid_t>(application->processIdentifier()), SIGTERM);
}

TEST_F(WorkspaceLaunch, AskedByDBusWhereThatIsWanted) {
    const QString path = entry("DBusActivatable=true\nExec=" + recording() + " %U",
                               QStringLiteral("org.example.My-App.desktop"));
    const QUrl file(QStringLiteral("file:///etc/hosts"));
    {
        const BusService service(QStringLiteral("org.example.My-App"),
                                 QStringLiteral("/org/example/My_App"), kApplicationXml,
                                 BusService::Manner::Answers);
        EXPECT_TRUE(open(path));
        EXPECT_TRUE(workspace().openFiles({file}, QUrl::fromLocalFile(path)));
        const QStringList calls = service.calls();
        ASSERT_EQ(calls.size(), 2);
        EXPECT_TRUE(calls[0].startsWith(QStringLiteral("Activate(")));
        EXPECT_TRUE(calls[0].contains(QStringLiteral("_TIME")));
        EXPECT_TRUE(calls[1].startsWith(QStringLiteral("Open(['file:///etc/hosts']")));
        EXPECT_FALSE(QFileInfo::exists(record()));
        // Arguments need a process.
        EXPECT_EQ(startNew(path, list({"x"})), QString());
        EXPECT_EQ(start().extra(), list({"x"}));
    }
    for (const auto manner : {BusService::Manner::Refuses, BusService::Manner::Dies}) {
        const BusService service(QStringLiteral("org.example.My-App"),
                                 QStringLiteral("/org/example/My_App"), kApplicationXml, manner);
        // One that knows nothing of the launches before.
        startWorkspace();
        EXPECT_TRUE(open(path));
        EXPECT_EQ(start().extra(), QStringList());
        EXPECT_EQ(service.calls().size(), 1);
    }
    // Nobody has the name.
    startWorkspace();
    EXPECT_TRUE(workspace().openFiles({file}, QUrl::fromLocalFile(path)));
    EXPECT_EQ(start().extra(), QStringList(QStringLiteral("/etc/hosts")));
}

TEST_F(WorkspaceLaunch, AServiceThatHangsIsNotStartedTwice) {
    // Trying to start it would fail.
    const QString path = entry("DBusActivatable=true\nExec=/nowhere/at/all",
                               QStringLiteral("org.example.Slow.desktop"));
    const BusService service(QStringLiteral("org.example.Slow"),
                             QStringLiteral("/org/example/Slow"), kApplicationXml,
                             BusService::Manner::KeepsSilent);
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(open(path));
    EXPECT_LT(timer.elapsed(), 9000);
    EXPECT_EQ(service.calls().size(), 1);
}

TEST_F(WorkspaceLaunch, FoldersAreShownByTheFileManager) {
    const QString folder = PrivateHome::instance().path(QStringLiteral("home/a b"));
    QDir().mkpath(folder);
    {
        const BusService service(QStringLiteral("org.freedesktop.FileManager1"),
                                 QStringLiteral("/org/freedesktop/FileManager1"), kFileManagerXml,
                                 BusService::Manner::Answers);
        EXPECT_TRUE(workspace().showFolder(folder));
        ASSERT_EQ(service.calls().size(), 1);
        EXPECT_TRUE(service.calls()[0].contains(QStringLiteral("/home/a%20b'], 'kestrelbay-")));
    }
    entry("MimeType=inode/directory;\nExec=" + recording() + " show %f",
          QStringLiteral("files.desktop"));
    PrivateHome::instance().write(QStringLiteral("config/mimeapps.list"),
                                  "[Default Applications]\ninode/directory=files.desktop\n");
    ASSERT_TRUE(waitUntil(
        [&] { return workspace().fileManagerIdentifier() == QStringLiteral("files.desktop"); }));
    EXPECT_TRUE(workspace().showFolder(folder));
    EXPECT_EQ(start().extra(), list({"show"}) << folder);
}

TEST_F(WorkspaceLaunch, AScopeOfItsOwn) {
    const BusService systemd(QStringLiteral("org.freedesktop.systemd1"),
                             QStringLiteral("/org/freedesktop/systemd1"), kSystemdXml,
                             BusService::Manner::Answers);
    const QString path =
        entry("Exec=" + recording() + " %U", QStringLiteral("org.my-thing.desktop"));
    EXPECT_TRUE(open(path));
    EXPECT_EQ(startNew(path, list({"x"})), QString());
    ASSERT_TRUE(waitUntil([&] { return systemd.calls().size() == 2; }));
    for (const QString &call : systemd.calls()) {
        EXPECT_TRUE(call.contains(QStringLiteral("app-kestrelbay-org.my\\\\x2dthing-")))
            << call.toStdString();
        EXPECT_TRUE(call.contains(QStringLiteral("'PIDs', <[uint32 "))) << call.toStdString();
    }
}

}  // namespace
}  // namespace kestrelbay::testing
