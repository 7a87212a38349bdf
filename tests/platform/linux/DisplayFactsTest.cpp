#include "platform/linux/DisplayFacts.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>

#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {
namespace {

const DisplayFacts kX11{.xName = u":0"_s, .doesXAnswer = true};
const DisplayFacts kWithXwayland{
    .xName = u":0"_s, .waylandName = u"wayland-0"_s, .isWaylandSession = true, .doesXAnswer = true};
const DisplayFacts kWaylandOnly{.waylandName = u"wayland-0"_s,
                                .isWaylandSession = true,
                                .doesWaylandAnswer = true,
                                .hasQtWaylandPlugin = true};

/// As the facts, but for one.
DisplayFacts with(DisplayFacts facts, bool DisplayFacts::*fact, bool value) {
    facts.*fact = value;
    return facts;
}

TEST(QtPlatformFor, AnXServerInAWaylandSessionIsPreferred) {
    EXPECT_EQ(qtPlatformFor(kWithXwayland), u"xcb"_s);
}

TEST(QtPlatformFor, WithoutAnXServerWindowsAreWaylands) {
    EXPECT_EQ(qtPlatformFor(kWaylandOnly), u"wayland"_s);
    EXPECT_EQ(qtPlatformFor(with(kWithXwayland, &DisplayFacts::doesXAnswer, false)), u"wayland"_s);
}

TEST(QtPlatformFor, AnX11SessionAndTheUsersWordAreLeftAlone) {
    EXPECT_EQ(qtPlatformFor(kX11), QString());
    for (const DisplayFacts &facts : {kX11, kWithXwayland, kWaylandOnly})
        EXPECT_EQ(qtPlatformFor(with(facts, &DisplayFacts::isQtPlatformNamed, true)), QString());
}

TEST(DisplayProblem, ThereIsNoneWhereAWindowCanBeShown) {
    for (const DisplayFacts &facts : {kX11, kWithXwayland, kWaylandOnly})
        EXPECT_EQ(displayProblem(facts), QString());
    DisplayFacts named = with(kWaylandOnly, &DisplayFacts::hasQtWaylandPlugin, false);
    EXPECT_EQ(displayProblem(named),
              u"no X server answers, and Qt has no plugin for Wayland (Debian: qt6-wayland)"_s);
    named.isQtPlatformNamed = true;
    EXPECT_EQ(displayProblem(named), QString());
}

TEST(DisplayProblem, NamesWhatDoesNotAnswer) {
    EXPECT_EQ(displayProblem({}),
              u"there is no display to work with (neither DISPLAY nor WAYLAND_DISPLAY is set)"_s);
    EXPECT_EQ(displayProblem({.xName = u":7"_s}), u"the X server :7 does not answer"_s);
    EXPECT_EQ(displayProblem({.waylandName = u"wayland-1"_s, .isWaylandSession = true}),
              u"the Wayland compositor wayland-1 does not answer"_s);
    EXPECT_EQ(
        displayProblem({.xName = u":7"_s, .waylandName = u"wayland-1"_s, .isWaylandSession = true}),
        u"neither the X server :7 nor the Wayland compositor wayland-1 answers"_s);
}

/// The environment of a session, for the time of a test.
class ReadDisplayFacts : public ::testing::Test {
protected:
    void SetUp() override {
        clear();
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder_.path()));
    }
    ~ReadDisplayFacts() override {
        clear();
        qunsetenv("XDG_RUNTIME_DIR");
        qputenv("QT_QPA_PLATFORM", platform_);
    }

    static void clear() {
        for (const char *name :
             {"DISPLAY", "WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "QT_QPA_PLATFORM"})
            qunsetenv(name);
    }

    const QByteArray platform_ = qgetenv("QT_QPA_PLATFORM");
    const QTemporaryDir folder_;
};

TEST_F(ReadDisplayFacts, WhatIsNotSetIsNotThere) {
    const DisplayFacts facts = readDisplayFacts();
    EXPECT_EQ(facts.xName, QString());
    EXPECT_EQ(facts.waylandName, QString());
    EXPECT_FALSE(facts.isWaylandSession || facts.doesXAnswer || facts.doesWaylandAnswer ||
                 facts.isQtPlatformNamed);
}

TEST_F(ReadDisplayFacts, EitherVariableTellsOfAWaylandSession) {
    qputenv("XDG_SESSION_TYPE", "wayland");
    EXPECT_TRUE(readDisplayFacts().isWaylandSession);
    qputenv("XDG_SESSION_TYPE", "x11");
    EXPECT_FALSE(readDisplayFacts().isWaylandSession);
    qputenv("WAYLAND_DISPLAY", "wayland-0");
    EXPECT_TRUE(readDisplayFacts().isWaylandSession);
}

TEST_F(ReadDisplayFacts, ACompositorAnswersAtItsSocketOnly) {
    qputenv("WAYLAND_DISPLAY", "wayland-9");
    EXPECT_FALSE(readDisplayFacts().doesWaylandAnswer);

    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray path = QFile::encodeName(folder_.filePath(u"wayland-9"_s));
    std::strncpy(address.sun_path, path.constData(), sizeof address.sun_path - 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    EXPECT_FALSE(readDisplayFacts().doesWaylandAnswer) << "its socket was left behind";
    ASSERT_EQ(::listen(socket, 1), 0);
    EXPECT_TRUE(readDisplayFacts().doesWaylandAnswer);
    qputenv("WAYLAND_DISPLAY", path);
    EXPECT_TRUE(readDisplayFacts().doesWaylandAnswer) << "by its path";
    ::close(socket);
}

TEST_F(ReadDisplayFacts, TheUsersPlatformOfQtIsKnown) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    EXPECT_TRUE(readDisplayFacts().isQtPlatformNamed);
}

}  // namespace
}  // namespace kestrelbay
