#include "app/status/StatusItem.h"

#include <QMenu>

#include <gtest/gtest.h>

#include "fakes/FakeSystemTray.h"
#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {
namespace {

TEST(StatusItem, TheSystemDrawsItsSymbolOnceItsItemIsThere) {
    FakeSystemTray tray;
    tray.setAvailable(false);
    QMenu menu;
    StatusItem item(tray, menu);
    item.setShortcutsEnabled(false);
    item.setShortcutsEnabled(true);
    EXPECT_EQ(tray.takeSymbols(), QStringList()) << "there is no item yet";
    tray.setAvailable(true);
    EXPECT_EQ(tray.takeSymbols(), QStringList{u"bolt.fill (KestrelBay)"_s});
    item.setShortcutsEnabled(false);
    EXPECT_EQ(tray.takeSymbols(), QStringList{u"bolt.slash.fill ()"_s});
}

}  // namespace
}  // namespace kestrelbay
