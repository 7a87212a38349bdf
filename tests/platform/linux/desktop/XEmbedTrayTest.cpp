#include "platform/linux/desktop/XEmbedTray.h"

#include <chrono>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>

#include "support/Poll.h"

namespace kestrelbay::testing {
namespace {

/// Counts how often timers other than its own wake up the program.
class WakeUps final : public QObject {
public:
    WakeUps() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject *receiver, QEvent *event) override {
        if (event->type() == QEvent::Timer && qobject_cast<QTimer *>(receiver) != nullptr)
            ++count;
        return false;
    }

    int count = 0;
};

TEST(XEmbedTray, WithoutAServerThereIsNothingToLookAtAgain) {
    const QString noServer = QStringLiteral(":99999");
    x11::XEmbedTray tray(noServer, [] { ADD_FAILURE() << "nothing has changed"; });
    EXPECT_FALSE(tray.isPresent());
    const WakeUps wakeUps;
    tray.lookSoon();
    bool isOver = false;
    // A single shot is no QTimer. A look would come after a second.
    QTimer::singleShot(std::chrono::milliseconds(1100), qApp, [&isOver] { isOver = true; });
    ASSERT_TRUE(waitUntil([&isOver] { return isOver; }));
    EXPECT_EQ(wakeUps.count, 0);
}

}  // namespace
}  // namespace kestrelbay::testing
