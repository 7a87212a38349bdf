#include "settings/L.h"

namespace kestrelbay {

QString L::rulesTab() {
    return resolved(u"Shortcut Rules", u"快捷键规则");
}

QString L::advancedTab() {
    return resolved(u"Advanced", u"高级设置");
}

QString L::rulesEmpty() {
    return resolved(u"Click the ＋ button to add your first shortcut",
                    u"点击左下角 ＋ 按钮，添加第一个快捷键配置");
}

QString L::rulesCount(qsizetype count) {
    return resolved(u"", u"已配置 ") + QString::number(count) + resolved(u" configured", u" 个");
}

QString L::addRuleName() {
    return resolved(u"Add", u"添加");
}

QString L::noAppSelected() {
    return resolved(u"No app selected", u"未选择应用");
}

QString L::advancedOptions() {
    return resolved(u"Advanced Options", u"高级选项");
}

QString L::ruleDeleteName() {
    return resolved(u"Delete", u"删除");
}

QString L::ruleDragName() {
    return resolved(u"Drag to reorder", u"拖拽以重新排序");
}

QString L::enableRule(const QString &appName) {
    return resolved(u"Enable ", u"启用 ") + appName;
}

QString L::advancedOptionsOf(const QString &appName) {
    return resolved(u"Advanced Options: ", u"高级选项：") + appName;
}

QString L::deleteRule(const QString &appName) {
    return resolved(u"Delete ", u"删除 ") + appName;
}

QString L::hotkeyRefused() {
    return resolved(u"Another program is using this hotkey", u"此快捷键已被其他程序占用");
}

QString L::hotkeyConflict() {
    return resolved(u"Hotkey conflict: already used by another rule, please re-enter",
                    u"快捷键冲突：已被其他规则使用，请重新录入");
}

QString L::deleteConfirmTitle() {
    return resolved(u"Delete Shortcut", u"删除快捷键");
}

QString L::deleteConfirmButton() {
    return resolved(u"Delete", u"删除");
}

QString L::repeatHeader() {
    return resolved(u"When shortcut is pressed repeatedly", u"连续重复按下快捷键时");
}

QString L::repeatKeepOpen() {
    return resolved(u"Keep app open", u"保持应用打开");
}

QString L::repeatKeepOpenText() {
    return resolved(u"No extra effect when app is already in front (default)",
                    u"应用已在前台时，快捷键不产生额外效果（默认）");
}

QString L::repeatToggleVisibility() {
    return resolved(u"Toggle show/hide", u"打开和隐藏窗口切换");
}

QString L::repeatToggleVisibilityText() {
    return resolved(u"Press again to hide the app when already in front",
                    u"应用已在前台时再次按下，则隐藏该应用");
}

QString L::repeatCycleWindows() {
    return resolved(u"Cycle through windows", u"同应用多窗口轮询");
}

QString L::repeatCycleWindowsText() {
    return resolved(u"Cycle through multiple windows of the same app",
                    u"应用已在前台且有多个窗口时，轮流切换窗口");
}

QString L::argumentHeader() {
    return resolved(u"Launch Args / URL Scheme / File Path", u"启动参数 / URL Scheme / 文件路径");
}

QString L::argumentSubtitle() {
    return resolved(u"Pick a type, then enter the value on the right",
                    u"先选择类型，再在右侧输入对应内容");
}

QString L::argumentKindName() {
    return resolved(u"Type", u"类型");
}

QString L::argumentValueName() {
    return resolved(u"Value", u"内容");
}

QString L::argumentNone() {
    return resolved(u"Default (none)", u"默认（不传）");
}

QString L::argumentLaunchArgs() {
    return resolved(u"Launch arguments", u"启动参数");
}

QString L::argumentUrlScheme() {
    return resolved(u"URL Scheme", u"URL Scheme");
}

QString L::argumentFilePath() {
    return resolved(u"File path", u"文件路径");
}

QString L::argumentNoneHint() {
    return resolved(u"Select a type to enable", u"请先在左侧选择类型");
}

QString L::argumentLaunchArgsHint() {
    return resolved(u"--remote-debugging-port=9222 --user-data-dir=/tmp/foo",
                    u"--remote-debugging-port=9222 --user-data-dir=/tmp/foo");
}

QString L::argumentUrlSchemeHint() {
    return resolved(u"notebook://open?vault=notes", u"notebook://open?vault=notes");
}

QString L::argumentPasteHint() {
    return resolved(
        u"To paste text into the field, right-click instead of using keyboard shortcuts.",
        u"如需粘贴文本到输入框，使用鼠标右键而非快捷键。");
}

QString L::deepLaunchHelp() {
    return resolved(u"Learn more about Deep Launch", u"进一步了解深度启动");
}

QString L::helpName() {
    return resolved(u"Help", u"帮助");
}

QString L::save() {
    return resolved(u"Save", u"保存");
}

QString L::appPickerTitle() {
    return resolved(u"Select App", u"选择应用");
}

QString L::appPickerSearch() {
    return resolved(u"Search apps...", u"搜索应用...");
}

QString L::appPickerBrowse() {
    return resolved(u"Browse...", u"从文件系统选择...");
}

QString L::appPickerSelect() {
    return resolved(u"Select", u"选择");
}

QString L::appPickerLoading() {
    return resolved(u"Looking for apps...", u"正在查找应用...");
}

QString L::appPickerNothingFound() {
    return resolved(u"No apps found", u"未找到应用");
}

QString L::appPickerFilter(const QString &pattern) {
    return resolved(u"Applications (", u"应用程序 (") + pattern + u')';
}

QString L::launchAtLogin() {
    return resolved(u"Launch at Login", u"登录时自动启动");
}

QString L::language() {
    return resolved(u"Language", u"语言");
}

QString L::languageText() {
    return resolved(u"Interface language for KestrelBay", u"KestrelBay 界面语言");
}

QString L::languageNameChinese() {
    return resolved(u"中文", u"中文");
}

QString L::languageNameEnglish() {
    return resolved(u"English", u"English");
}

QString L::sound() {
    return resolved(u"Sound on Shortcut Trigger", u"快捷键触发时播放声音");
}

QString L::soundText() {
    return resolved(u"Play a sound each time a shortcut fires", u"每次触发快捷键时播放提示音");
}

QString L::soundNone() {
    return resolved(u"No Sound", u"无声音");
}

QString L::launchToast() {
    return resolved(u"Launch Icon Toast", u"启动图标弹窗");
}

QString L::launchToastText() {
    return resolved(u"Show app icon popup when a shortcut fires",
                    u"快捷键触发后显示应用图标弹窗提示");
}

QString L::launchToastNone() {
    return resolved(u"Off", u"不显示");
}

QString L::launchToastShort() {
    return resolved(u"Brief", u"短暂显示");
}

QString L::launchToastMedium() {
    return resolved(u"Medium", u"适中显示");
}

QString L::launchToastLong() {
    return resolved(u"Long", u"较长显示");
}

QString L::configFolder() {
    return resolved(u"Config File Location", u"配置文件位置");
}

QString L::restartTitle() {
    return resolved(u"Restart KestrelBay", u"需要重启 KestrelBay");
}

QString L::restartText() {
    return resolved(
        u"Accessibility permission changed. KestrelBay needs to restart to take effect.",
        u"辅助功能权限已更改，需要重启 KestrelBay 才能生效。");
}

QString L::restartNow() {
    return resolved(u"Restart Now", u"立即重启");
}

QString L::restartLater() {
    return resolved(u"Later", u"稍后");
}

}  // namespace kestrelbay
