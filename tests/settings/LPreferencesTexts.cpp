#include "settings/LTexts.h"

#include "settings/L.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

std::vector<LMember> members() {
    return {
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
}

std::vector<LSystemMember> systemMembers() {
    return {
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
}

}  // namespace

LTexts preferencesTexts() {
    return {.members = members(), .systemMembers = systemMembers()};
}

}  // namespace kestrelbay
