#include "platform/linux/wayland/sway/UserBindings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace kestrelbay::sway {
namespace {

std::set<QByteArray> boundBy(const QByteArray &text, const QString &path = u"/nowhere/config"_s) {
    std::set<QByteArray> texts;
    for (const auto &[position, command] : userBindings(readConfiguration(text, path)))
        texts.insert(toText(position));
    return texts;
}

using Texts = std::set<QByteArray>;

TEST(UserBindings, AreFoundInAllTheirForms) {
    EXPECT_EQ(boundBy("bindsym Mod4+t exec true"), Texts{"Mod4+28"});
    EXPECT_EQ(boundBy("  bindsym --to-code --no-repeat \"mod4+T\" exec true"), Texts{"Mod4+28"});
    EXPECT_EQ(boundBy("bindcode Super+Ctrl+28 exec true"), Texts{"Control+Mod4+28"});
    EXPECT_EQ(boundBy("bindsym Group1+Mod4+t exec true"), Texts{"Mod4+28"});
    EXPECT_EQ(boundBy("bindsym Mod4+\\\n t nop\nbindsym \\\nMod4+j nop"), Texts{"Mod4+44"});
    EXPECT_EQ(boundBy("bindsym {\n Mod4+t nop\n # Mod4+u nop\n Mod4+j nop\n}\nbindsym Mod4+k nop"),
              (Texts{"Mod4+28", "Mod4+44", "Mod4+45"}));
}

TEST(UserBindings, OfShiftedSignsAreWhereTheseAreTyped) {
    EXPECT_EQ(boundBy("bindsym Mod4+exclam nop"), Texts{"Shift+Mod4+10"});
    EXPECT_EQ(boundBy("bindsym Mod4+Shift+1 nop"), Texts{"Shift+Mod4+10"});
}

TEST(UserBindings, AreWhereAnyLayoutHasThem) {
    EXPECT_EQ(boundBy("input type:keyboard xkb_layout de\nbindsym Mod4+z nop"), Texts{"Mod4+29"});
    EXPECT_EQ(boundBy("input * {\n xkb_layout \"us,de\"\n}\nbindsym Mod4+z nop"),
              (Texts{"Mod4+29", "Mod4+52"}));
}

TEST(UserBindings, HaveVariablesFilledIn) {
    EXPECT_EQ(boundBy("set $mod Mod4\nset $mode Mod1\nset $key $mod+t\n"
                      "bindsym $key nop\nbindsym $mode+j nop"),
              (Texts{"Mod4+28", "Mod1+44"}));
}

TEST(UserBindings, OfOtherModesAndButtonsAreNone) {
    EXPECT_EQ(boundBy("mode \"resize\" {\n bindsym Mod4+t nop\n bindsym {\n Mod4+j nop\n }\n}\n"
                      "bindsym --whole-window button1 nop\nbindsym Mod4+a+b nop\n"
                      "bindswitch lid:on nop\n#bindsym Mod4+k nop\nbindcode 272 nop"),
              Texts{});
}

TEST(UserBindings, ThatAreTakenBackAreNone) {
    EXPECT_EQ(boundBy("bindsym Mod4+t nop\nbindsym Mod4+j nop\nunbindsym Mod4+t"),
              Texts{"Mod4+44"});
}

TEST(UserBindings, OfIncludedFilesCount) {
    const QTemporaryDir folder;
    const auto write = [&](const QString &name, const QByteArray &text) {
        QFile file(folder.filePath(name));
        QDir(folder.path()).mkpath(QFileInfo(name).path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    };
    write(u"config.d/a"_s, "bindsym $mod+t nop\ninclude ../config\ninclude b");
    write(u"config.d/b"_s, "bindsym $mod+j nop\ninclude a");
    write(u"ran"_s, "bindsym Mod4+k nop");
    EXPECT_EQ(boundBy("set $mod Mod4\ninclude config.d/*\ninclude /nowhere/*\n"
                      "include $(echo ran)\ninclude `echo ran`",
                      folder.filePath(u"config"_s)),
              (Texts{"Mod4+28", "Mod4+44"}));
}

TEST(UserBindings, SayWhatTheyRun) {
    const UserBindings bindings = userBindings(
        readConfiguration("set $run exec foot\nbindsym --release Mod4+t $run --title \"a b\"\n",
                          u"/nowhere/config"_s));
    ASSERT_EQ(bindings.size(), 1U);
    EXPECT_EQ(bindings.begin()->second, "exec foot --title a b");
}

TEST(UserBindings, AreWhereAFileOfXkbsHasThem) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"my.xkb"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        "xkb_keymap { xkb_keycodes { include \"evdev\" }; xkb_types { include \"complete\" };\n"
        "xkb_compat { include \"complete\" }; xkb_symbols { include \"pc+de\" }; };\n");
    file.close();
    EXPECT_EQ(boundBy("input * xkb_layout us\ninput * xkb_file my.xkb\nbindsym Mod4+z nop",
                      folder.filePath(u"config"_s)),
              Texts{"Mod4+29"});
}

TEST(UserBindings, OfCommandsThatIncludeRunsAreNotKnown) {
    const SwayConfiguration configuration = readConfiguration(
        "include $(echo a)\ninclude /nowhere/*\ninclude `echo b`\n", u"/nowhere/config"_s);
    EXPECT_EQ(configuration.unread,
              (std::vector<QByteArray>{"include $(echo a)", "include `echo b`"}));
}

TEST(UserBindings, SurviveWhateverStandsThere) {
    for (const QByteArray &text :
         {QByteArray(), QByteArray("}\n}\nbindsym"), QByteArray("bindsym --locked"),
          QByteArray("set $a\nset\nset $ Mod4"), QByteArray("bindsym \"Mod4+"),
          QByteArray("bindsym +++ nop"), QByteArray("bindcode Mod4+99999999999 nop"),
          QByteArray("include \"unbalanced ( & ;"), QByteArray("x {\n").repeated(10'000),
          QByteArray("\0\xff bindsym", 10), QByteArray("input * xkb_layout nonsense\nbindsym t x"),
          QByteArray("set $a $a$a\n").repeated(50) + "bindsym $a nop"})
        EXPECT_EQ(boundBy(text), Texts{}) << text.left(40).toStdString();
}

}  // namespace
}  // namespace kestrelbay::sway
