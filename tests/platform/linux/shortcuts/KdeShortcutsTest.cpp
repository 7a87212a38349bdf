#include "platform/linux/shortcuts/ShortcutTables.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

using namespace Qt::StringLiterals;

namespace kestrelbay::testing {
namespace {

const LookedForKey kSuperT{modifier::kCommand, {XKB_KEY_t}};
const LookedForKey kSuperK{modifier::kCommand, {XKB_KEY_k}};
const LookedForKey kAltF4{modifier::kOption, {XKB_KEY_F4}};

TEST(KdeShortcuts, AreThoseInForce) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"kglobalshortcutsrc"_s);
    EXPECT_EQ(holderInKdeFile(path, kSuperT), std::nullopt);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        "[kwin]\n"
        "Overview=Meta+W\\tMeta+T,Meta+W,Toggle Overview\n"
        "Window Close=none,Alt+F4,Close Window\n"
        "_k_friendly_name=KWin\n"
        "\n"
        "[services][org.kde.konsole.desktop]\n"
        "_launch=Meta+K\n");
    file.close();
    EXPECT_EQ(holderInKdeFile(path, kSuperT), (HotkeyHolder{u"KWin"_s, u"Toggle Overview"_s, {}}));
    EXPECT_EQ(holderInKdeFile(path, kSuperK), (HotkeyHolder{u"org.kde.konsole.desktop"_s, {}, {}}));
    EXPECT_EQ(holderInKdeFile(path, kAltF4), std::nullopt) << "the user has taken it away";
}

}  // namespace
}  // namespace kestrelbay::testing
