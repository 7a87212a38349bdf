#include "platform/linux/x11/connection/XlibLoss.h"

#include <csignal>
#include <cstdlib>

#include <QLibrary>

#include <gtest/gtest.h>

#include "support/PrivateXServer.h"

namespace kestrelbay::x11 {
namespace {

constexpr int kTold = 3;

/// Has a connection by Xlib whose server is killed, and does not return.
[[noreturn]] void loseServer(testing::PrivateXServer &server) {
    QLibrary xlib(QStringLiteral("X11"), 6);
    auto *const open = reinterpret_cast<void *(*)(const char *)>(xlib.resolve("XOpenDisplay"));
    auto *const sync = reinterpret_cast<int (*)(void *, int)>(xlib.resolve("XSync"));
    void *const connection = open(server.displayName().toLatin1().constData());
    setXlibLossHandler([] { std::_Exit(kTold); });
    ::kill(static_cast<pid_t>(server.process().processId()), SIGKILL);
    while (true)
        sync(connection, 0);
}

TEST(XlibLossTest, TellsOfTheLossInPlaceOfEndingTheProcess) {
    testing::PrivateXServer server;
    EXPECT_EXIT(loseServer(server), ::testing::ExitedWithCode(kTold), "");
}

}  // namespace
}  // namespace kestrelbay::x11
