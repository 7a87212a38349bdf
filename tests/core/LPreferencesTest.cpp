#include "settings/L.h"

#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "core/LFixture.h"
#include "platform/EventTap.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

class LPreferencesTest : public LFixture {};

// Texts that are the same on every system.
const std::vector<LMember> &members() {
    static const std::vector<LMember> all{
        {L::rulesTab, u"Shortcut Rules"_s, u"快捷键规则"_s},
        {L::advancedTab, u"Advanced"_s, u"高级设置"_s},
        {L::rulesEmpty, u"Click the ＋ button to add your first shortcut"_s,
         u"点击左下角 ＋ 按钮，添加第一个快捷键配置"_s},
        {L::addRuleName, u"Add"_s, u"添加"_s},
        {L::noAppSelected, u"No app selected"_s, u"未选择应用"_s},
        {L::advancedOptions, u"Advanced Options"_s, u"高级选项"_s},
        {L::ruleDeleteName, u"Delete"_s, u"删除"_s},
        {L::ruleDragName, u"Drag to reorder"_s, u"拖拽以重新排序"_s},
        {L::hotkeyConflict, u"Hotkey conflict: already used by another rule, please re-enter"_s,
         u"快捷键冲突：已被其他规则使用，请重新录入"_s},
        {L::deleteConfirmTitle, u"Delete Shortcut"_s, u"删除快捷键"_s},
        {L::deleteConfirmButton, u"Delete"_s, u"删除"_s},
        {L::repeatHeader, u"When shortcut is pressed repeatedly"_s, u"连续重复按下快捷键时"_s},
        {L::repeatKeepOpen, u"Keep app open"_s, u"保持应用打开"_s},
        {L::repeatKeepOpenText, u"No extra effect when app is already in front (default)"_s,
         u"应用已在前台时，快捷键不产生额外效果（默认）"_s},
        {L::repeatToggleVisibility, u"Toggle show/hide"_s, u"打开和隐藏窗口切换"_s},
        {L::repeatToggleVisibilityText, u"Press again to hide the app when already in front"_s,
         u"应用已在前台时再次按下，则隐藏该应用"_s},
        {L::repeatCycleWindows, u"Cycle through windows"_s, u"同应用多窗口轮询"_s},
        {L::repeatCycleWindowsText, u"Cycle through multiple windows of the same app"_s,
         u"应用已在前台且有多个窗口时，轮流切换窗口"_s},
        {L::argumentHeader, u"Launch Args / URL Scheme / File Path"_s,
         u"启动参数 / URL Scheme / 文件路径"_s},
        {L::argumentSubtitle, u"Pick a type, then enter the value on the right"_s,
         u"先选择类型，再在右侧输入对应内容"_s},
        {L::argumentKindName, u"Type"_s, u"类型"_s},
        {L::argumentValueName, u"Value"_s, u"内容"_s},
        {L::argumentNone, u"Default (none)"_s, u"默认（不传）"_s},
        {L::argumentLaunchArgs, u"Launch arguments"_s, u"启动参数"_s},
        {L::argumentUrlScheme, u"URL Scheme"_s, u"URL Scheme"_s},
        {L::argumentFilePath, u"File path"_s, u"文件路径"_s},
        {L::argumentNoneHint, u"Select a type to enable"_s, u"请先在左侧选择类型"_s},
        {L::argumentLaunchArgsHint, u"--remote-debugging-port=9222 --user-data-dir=/tmp/foo"_s,
         u"--remote-debugging-port=9222 --user-data-dir=/tmp/foo"_s},
        {L::argumentUrlSchemeHint, u"notebook://open?vault=notes"_s,
         u"notebook://open?vault=notes"_s},
        {L::argumentPasteHint,
         u"To paste text into the field, right-click instead of using keyboard shortcuts."_s,
         u"如需粘贴文本到输入框，使用鼠标右键而非快捷键。"_s},
        {L::deepLaunchHelp, u"Learn more about Deep Launch"_s, u"进一步了解深度启动"_s},
        {L::helpName, u"Help"_s, u"帮助"_s},
        {L::save, u"Save"_s, u"保存"_s},
        {L::appPickerTitle, u"Select App"_s, u"选择应用"_s},
        {L::appPickerSearch, u"Search apps..."_s, u"搜索应用..."_s},
        {L::appPickerBrowse, u"Browse..."_s, u"从文件系统选择..."_s},
        {L::appPickerSelect, u"Select"_s, u"选择"_s},
        {L::appPickerLoading, u"Looking for apps..."_s, u"正在查找应用..."_s},
        {L::appPickerNothingFound, u"No apps found"_s, u"未找到应用"_s},
        {L::launchAtLogin, u"Launch at Login"_s, u"登录时自动启动"_s},
        {L::language, u"Language"_s, u"语言"_s},
        {L::languageText, u"Interface language for KestrelBay"_s, u"KestrelBay 界面语言"_s},
        {L::languageNameChinese, u"中文"_s, u"中文"_s},
        {L::languageNameEnglish, u"English"_s, u"English"_s},
        {L::sound, u"Sound on Shortcut Trigger"_s, u"快捷键触发时播放声音"_s},
        {L::soundText, u"Play a sound each time a shortcut fires"_s,
         u"每次触发快捷键时播放提示音"_s},
        {L::soundNone, u"No Sound"_s, u"无声音"_s},
        {L::launchToast, u"Launch Icon Toast"_s, u"启动图标弹窗"_s},
        {L::launchToastText, u"Show app icon popup when a shortcut fires"_s,
         u"快捷键触发后显示应用图标弹窗提示"_s},
        {L::launchToastNone, u"Off"_s, u"不显示"_s},
        {L::launchToastShort, u"Brief"_s, u"短暂显示"_s},
        {L::launchToastMedium, u"Medium"_s, u"适中显示"_s},
        {L::launchToastLong, u"Long"_s, u"较长显示"_s},
        {L::configFolder, u"Config File Location"_s, u"配置文件位置"_s},
        {L::restartTitle, u"Restart KestrelBay"_s, u"需要重启 KestrelBay"_s},
        {L::restartText,
         u"Accessibility permission changed. KestrelBay needs to restart to take effect."_s,
         u"辅助功能权限已更改，需要重启 KestrelBay 才能生效。"_s},
        {L::restartNow, u"Restart Now"_s, u"立即重启"_s},
        {L::restartLater, u"Later"_s, u"稍后"_s},
    };
    return all;
}

TEST_F(LPreferencesTest, EveryTextInBothLanguages) {
    choose(Language::en);
    expectEnglish(members());
    choose(Language::zh);
    expectChinese(members());
}

TEST_F(LPreferencesTest, AnyNumberOfRulesIsCounted) {
    EXPECT_EQ(L::rulesCount(0), u"0 configured"_s);
    EXPECT_EQ(L::rulesCount(1234), u"1234 configured"_s);
    choose(Language::zh);
    EXPECT_EQ(L::rulesCount(0), u"已配置 0 个"_s);
    EXPECT_EQ(L::rulesCount(1234), u"已配置 1234 个"_s);
}

// As they read on macOS.
const std::vector<LSystemMember> &systemMembers() {
    static const std::vector<LSystemMember> all{
        {L::argumentFilePathHint, &LSystemTexts::argumentFilePathHint, u"/Users/me/project"_s,
         u"/Users/me/project"_s},
        {L::launchAtLoginText, &LSystemTexts::launchAtLoginText,
         u"Automatically run KestrelBay after login"_s, u"macOS 登录后自动在后台运行 KestrelBay"_s},
        {L::configFolderShow, &LSystemTexts::configFolderShow, u"Show in Finder"_s,
         u"在 Finder 中显示"_s},
        {L::accessTitle, &LSystemTexts::accessTitle, u"Accessibility Permission"_s,
         u"辅助功能权限"_s},
        {L::accessGranted, &LSystemTexts::accessGranted,
         u"\u2705 Granted \u2014 global shortcuts working"_s,
         u"\u2705 已授权 \u2014 全局快捷键正常工作"_s},
        {L::accessOpenSettings, &LSystemTexts::accessOpenSettings, u"Open System Settings..."_s,
         u"打开系统设置..."_s},
    };
    return all;
}

constexpr TapProblem kProblems[]{TapProblem::NotPermitted, TapProblem::WaylandSession,
                                 TapProblem::NoDisplay, TapProblem::NoInputExtension,
                                 TapProblem::OtherInstance};

TEST_F(LPreferencesTest, TextsOfMacosAreTheGivenOnes) {
    expectTextsOfMacos(systemMembers());
}

TEST_F(LPreferencesTest, MacosAlwaysPointsToTheSettings) {
    for (const TapProblem problem : kProblems) {
        const LText &text = accessMissing(macosTexts(), problem);
        EXPECT_EQ(
            text.english.toString(),
            u"\u26A0\uFE0F Not granted \u2014 go to System Settings \u203A Privacy & Security \u203A Accessibility to allow KestrelBay"_s);
        EXPECT_EQ(
            text.chinese.toString(),
            u"\u26A0\uFE0F 未授权 \u2014 请前往系统设置 \u203A 隐私与安全性 \u203A 辅助功能，允许 KestrelBay"_s);
    }
}

TEST_F(LPreferencesTest, TextsOfLinuxNameNothingThatIsNotThere) {
    const QStringList words{u"accessibility"_s, u"System Settings"_s, u"macOS"_s,   u"Finder"_s,
                            u"/Users"_s,        u"辅助功能"_s,        u"系统设置"_s};
    for (const LSystemMember &member : systemMembers())
        expectNoneOf(words, linuxTexts().*member.pair);
    for (const TapProblem problem : kProblems)
        expectNoneOf(words, accessMissing(linuxTexts(), problem));
}

TEST_F(LPreferencesTest, LinuxNamesWhatIsMissing) {
    const auto english = [](TapProblem problem) {
        return accessMissing(linuxTexts(), problem).english;
    };
    const auto chinese = [](TapProblem problem) {
        return accessMissing(linuxTexts(), problem).chinese;
    };
    for (const auto &[problem, word] : {std::pair{TapProblem::WaylandSession, u"Wayland"_s},
                                        std::pair{TapProblem::NoDisplay, u"X11"_s},
                                        std::pair{TapProblem::NoInputExtension, u"XInput 2.1"_s},
                                        std::pair{TapProblem::OtherInstance, u"KestrelBay"_s}}) {
        EXPECT_TRUE(english(problem).contains(word)) << word.toStdString();
        EXPECT_TRUE(chinese(problem).contains(word)) << word.toStdString();
        EXPECT_TRUE(english(problem).startsWith(u"\u26A0 Not available \u2014 "));
        EXPECT_NE(english(problem), english(TapProblem::NotPermitted));
    }
    EXPECT_EQ(english(TapProblem::None), english(TapProblem::NotPermitted));
}

TEST_F(LPreferencesTest, TextsOfTheSystemAreThoseOfThisOne) {
    expectTextsOfThisSystem(systemMembers());
    for (const TapProblem problem : kProblems) {
        choose(Language::en);
        EXPECT_EQ(L::accessMissing(problem),
                  accessMissing(systemTexts(), problem).english.toString());
        choose(Language::zh);
        EXPECT_EQ(L::accessMissing(problem),
                  accessMissing(systemTexts(), problem).chinese.toString());
    }
}

}  // namespace

}  // namespace kestrelbay
