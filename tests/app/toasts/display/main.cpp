#include <cstdio>

#include <gtest/gtest.h>

#include <QApplication>
#include <QProcess>
#include <QStyleFactory>

#include "support/PrivateXServer.h"

namespace {

constexpr auto kInside = "KESTRELBAY_ON_PRIVATE_SERVER";

/// Runs this program again on a server of its own. Not in one process: what starts
/// the server needs an event loop, and that of Qt's X11 platform has to be the first.
int runOnPrivateServer(int argc, char **argv) {
    const kestrelbay::testing::PrivateXServer server;
    const auto windowManager = server.startWindowManager(QStringLiteral("openbox"));
    QProcessEnvironment environment = server.environment();
    for (const char *name : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS"})
        environment.remove(QLatin1String(name));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.insert(QLatin1String(kInside), QStringLiteral("1"));
    QStringList arguments;
    for (int index = 1; index < argc; ++index)
        arguments.append(QString::fromLocal8Bit(argv[index]));
    QProcess tests;
    tests.setProcessChannelMode(QProcess::ForwardedChannels);
    tests.setProcessEnvironment(environment);
    tests.start(QString::fromLocal8Bit(argv[0]), arguments);
    if (!tests.waitForFinished(-1) || tests.exitStatus() != QProcess::NormalExit) {
        std::fputs("the tests did not end by themselves\n", stderr);
        return 1;
    }
    return tests.exitCode();
}

}  // namespace

int main(int argc, char **argv) {
    if (!qEnvironmentVariableIsSet(kInside))
        return runOnPrivateServer(argc, argv);
    const QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
