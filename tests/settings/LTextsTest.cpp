#include "settings/L.h"

#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include "settings/LFixture.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

struct Member {
    std::function<QString()> text;
    QString english;
    QString chinese;
};

struct Sentence {
    std::function<QString(const QString &)> text;
    /// With the name "Files".
    QString english;
    QString chinese;
};

struct SystemMember {
    LSystemText text;
    QString macosEnglish;
    QString macosChinese;
    QString linuxEnglish;
    QString linuxChinese;
};

std::vector<Member> members() {
    return {
        {L::programName, u"KestrelBay"_s, u"KestrelBay"_s},
        {L::cancel, u"Cancel"_s, u"取消"_s},
        {L::aboutKestrelBay, u"About KestrelBay"_s, u"关于 KestrelBay"_s},
        {L::preferencesTitle, u"KestrelBay Preferences"_s, u"KestrelBay 偏好设置"_s},
        {L::recorderEmpty, u"Click to record"_s, u"点击录入"_s},
        {L::recorderPrompt, u"Press hotkey..."_s, u"按下快捷键..."_s},
        {L::recorderClear, u"\u00D7"_s, u"\u00D7"_s},
        {L::recorderKeyboardHeld, u"Another program is using the keyboard, please try again"_s,
         u"其他程序正在占用键盘，请稍后再试"_s},
        {L::recorderRecording, u"recording"_s, u"正在录入"_s},
        {L::noHotkey, u"none"_s, u"无"_s},
        {L::keySeparator, u", "_s, u"\uFF0C"_s},
        {L::noAddress, u"This build of KestrelBay has no address for that"_s,
         u"此构建的 KestrelBay 未设置相应的地址"_s},
        {L::disableAllShortcuts, u"Disable All Shortcuts"_s, u"禁用全部快捷键"_s},
        {L::enableAllShortcuts, u"Enable All Shortcuts"_s, u"启用全部快捷键"_s},
        {L::preferencesEntry, u"Preferences..."_s, u"偏好设置..."_s},
        {L::welcomeGuideEntry, u"Welcome Guide..."_s, u"欢迎向导..."_s},
        {L::quit, u"Quit"_s, u"退出"_s},
        {L::checkForUpdates, u"Check for Updates"_s, u"检查更新"_s},
        {L::contactFeedback, u"Contact & Feedback"_s, u"联系作者与反馈"_s},
        {L::welcomeTitle, u"KestrelBay is running"_s, u"KestrelBay 正在运行"_s},
        {L::welcomeStart, u"Get Started"_s, u"开始设置"_s},
        {L::welcomeDismiss, u"Dismiss"_s, u"关闭"_s},
        {L::permissionWaitingButton, u"Waiting..."_s, u"正在等待..."_s},
        {L::permissionThereTitle, u"Keyboard Access Available"_s, u"键盘访问权限已可用"_s},
        {L::permissionThereBody,
         u"KestrelBay can listen for global hotkeys here.\nWe only respond to hotkeys you configure \u2014 no other keystrokes are recorded."_s,
         u"KestrelBay 已可监听全局快捷键。\n我们只响应你配置的快捷键，不记录任何其他键盘输入。"_s},
        {L::permissionThereContinue, u"Continue"_s, u"继续"_s},
        {L::permissionGranted, u"\u2713 Granted"_s, u"\u2713 已授权"_s},
        {L::skipForNow, u"Skip for now"_s, u"稍后再说"_s},
        {L::doneTitle, u"All set!"_s, u"一切就绪！"_s},
        {L::doneAddShortcut, u"Add First Shortcut"_s, u"立即添加快捷键"_s},
        {L::doneWithoutPermissionTitle, u"Setup complete"_s, u"设置完成"_s},
        {L::doneOpenPreferences, u"Open Preferences"_s, u"打开偏好设置"_s},
        {[] { return L::doneBody(false); }, u"KestrelBay is ready\nAdd your first shortcut now"_s,
         u"KestrelBay 已就绪\n现在来添加你的第一个快捷键配置吧"_s},
        {[] { return L::doneWithoutPermissionBody(false); },
         u"KestrelBay is ready\nStart it again to open settings\n(Tip: Advanced settings say why hotkeys do not work yet)"_s,
         u"KestrelBay 已就绪\n再次启动 KestrelBay 即可打开设置\n（提示：高级设置中说明了快捷键尚不可用的原因）"_s},
        {[] { return L::guideFinishedToast(false); },
         u"Start KestrelBay again to configure shortcuts"_s,
         u"再次启动 KestrelBay 即可进行快捷键配置"_s},
        {[] { return L::guideSkippedToast(false); },
         u"Onboarding skipped. Run kestrelbay --action=welcome-guide to reopen."_s,
         u"已跳过引导。可随时运行 kestrelbay --action=welcome-guide 重新打开"_s},
        {L::rulesTab, u"Shortcut Rules"_s, u"快捷键规则"_s},
        {L::advancedTab, u"Advanced"_s, u"高级设置"_s},
        {L::rulesEmpty, u"Click the ＋ button to add your first shortcut"_s,
         u"点击左下角 ＋ 按钮，添加第一个快捷键配置"_s},
        {L::addRuleName, u"Add"_s, u"添加"_s},
        {L::noAppSelected, u"No app selected"_s, u"未选择应用"_s},
        {L::advancedOptions, u"Advanced Options"_s, u"高级选项"_s},
        {L::ruleDeleteName, u"Delete"_s, u"删除"_s},
        {L::ruleDragName, u"Drag to reorder"_s, u"拖拽以重新排序"_s},
        {L::windowsUnseen,
         u"This desktop doesn't let programs hide or switch windows, so shortcuts only open apps"_s,
         u"此桌面不允许程序隐藏或切换窗口，快捷键只能打开应用"_s},
        {L::hotkeyConflict, u"Hotkey conflict: already used by another rule, please re-enter"_s,
         u"快捷键冲突：已被其他规则使用，请重新录入"_s},
        {L::hotkeyRefused, u"Another program is using this hotkey"_s,
         u"此快捷键已被其他程序占用"_s},
        {L::hotkeyNeedsSides,
         u"This hotkey never arrives: this session does not tell left modifier keys from right "
         u"ones"_s,
         u"此快捷键无法送达：当前会话无法区分左右修饰键"_s},
        {L::hotkeyEitherSideByClick, u"Click to have it mean either side"_s,
         u"点击即可改为不区分左右"_s},
        {L::useEitherSide, u"Use Either Side"_s, u"改为不区分左右"_s},
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

std::vector<Sentence> sentences() {
    return {
        {L::deleteConfirmMsg, u"Are you sure you want to delete the shortcut for \"Files\"?"_s,
         u"确定要删除「Files」的快捷键配置吗？"_s},
        {L::advancedPanelTitle, u"Advanced \u00B7 Files"_s, u"高级选项 \u00B7 Files"_s},
        {L::clearHotkeyOf, u"Clear hotkey of Files"_s, u"清除快捷键：Files"_s},
        {L::hotkeyOf, u"Hotkey of Files"_s, u"快捷键：Files"_s},
        {L::leftKey, u"left Files"_s, u"左 Files"_s},
        {L::rightKey, u"right Files"_s, u"右 Files"_s},
        {L::keypadKey, u"keypad Files"_s, u"小键盘 Files"_s},
        {L::aboutVersion, u"Version Files"_s, u"Version Files"_s},
        {L::enableRule, u"Enable Files"_s, u"启用 Files"_s},
        {L::advancedOptionsOf, u"Advanced Options: Files"_s, u"高级选项：Files"_s},
        {L::deleteRule, u"Delete Files"_s, u"删除 Files"_s},
        {L::appPickerFilter, u"Applications (Files)"_s, u"应用程序 (Files)"_s},
    };
}

std::vector<SystemMember> systemMembers() {
    const QString notGranted =
        u"\u26A0\uFE0F Not granted \u2014 go to System Settings \u203A Privacy & Security \u203A Accessibility to allow KestrelBay"_s;
    const QString notGrantedChinese =
        u"\u26A0\uFE0F 未授权 \u2014 请前往系统设置 \u203A 隐私与安全性 \u203A 辅助功能，允许 KestrelBay"_s;
    return {
        {L::recorderNoAccess, u"Accessibility permission required to record hotkeys"_s,
         u"需要辅助功能权限才能录入快捷键"_s,
         u"No access to the keyboard: hotkeys cannot be recorded now"_s,
         u"目前无法访问键盘，不能录入快捷键"_s},
        {L::recorderGrantAccess, u"Grant Access"_s, u"前往授权"_s, u"See Why"_s, u"查看原因"_s},
        {L::welcomeBody, u"You can locate it in the status bar and access its menu for settings."_s,
         u"你可以在状态栏找到它，并通过菜单进行设置。"_s,
         u"You can locate it in the tray and access its menu for settings."_s,
         u"你可以在系统托盘找到它，并通过菜单进行设置。"_s},
        {L::guideFinishedToast.withTray,
         u"Click \u26A1 \u2192 Preferences to configure shortcuts"_s,
         u"点击状态栏的\u26A1\uFE0F图标 \u2192 偏好设置 进行快捷键配置"_s,
         u"Click \u26A1 \u2192 Preferences to configure shortcuts"_s,
         u"点击系统托盘的\u26A1\uFE0F图标 \u2192 偏好设置 进行快捷键配置"_s},
        {L::guideSkippedToast.withTray,
         u"Onboarding skipped. Click \u26A1 \u2192 Welcome Guide to reopen."_s,
         u"已跳过引导。可随时点击状态栏的\u26A1\uFE0F图标 \u2192 欢迎向导 重新打开"_s,
         u"Onboarding skipped. Click \u26A1 \u2192 Welcome Guide to reopen."_s,
         u"已跳过引导。可随时点击系统托盘的\u26A1\uFE0F图标 \u2192 欢迎向导 重新打开"_s},
        {L::welcomeTip,
         u"TIP: If you cannot find the app's icon, you may use Command + mouse drag to rearrange the order, because there are too many icons that may be hidden."_s,
         u"提示：如果找不到应用图标，可以按住 Command 键拖拽图标来调整顺序，因为可能有过多图标被隐藏。"_s,
         u"TIP: If you cannot find the app's icon, look among the hidden icons of your tray. Without a tray, start KestrelBay again to open its preferences."_s,
         u"提示：如果找不到应用图标，请查看系统托盘中被隐藏的图标。没有系统托盘时，再次启动 KestrelBay 即可打开偏好设置。"_s},
        {L::permissionTitle, u"Accessibility Permission Required"_s, u"需要辅助功能权限"_s,
         u"Keyboard Access Required"_s, u"需要键盘访问权限"_s},
        {L::permissionBody,
         u"KestrelBay uses accessibility to listen for global hotkeys.\nWe only respond to hotkeys you configure \u2014 no other keystrokes are recorded."_s,
         u"KestrelBay 通过辅助功能权限监听全局快捷键。\n我们只响应你配置的快捷键，不记录任何其他键盘输入。"_s,
         u"To listen for global hotkeys, KestrelBay needs an X11 session with XInput 2.1, or a Wayland session that gives programs hotkeys, and no other KestrelBay running in it.\nWe only respond to hotkeys you configure \u2014 no other keystrokes are recorded."_s,
         u"KestrelBay 监听全局快捷键需要支持 XInput 2.1 的 X11 会话，或向程序提供快捷键的 Wayland 会话，且该会话中没有另一个 KestrelBay 正在运行。\n我们只响应你配置的快捷键，不记录任何其他键盘输入。"_s},
        {L::permissionOpenSettings, u"Open System Settings"_s, u"前往系统设置"_s, u"Check Access"_s,
         u"检查权限"_s},
        {L::permissionWaiting, u"Waiting for permission..."_s, u"等待授权..."_s,
         u"Waiting for keyboard access..."_s, u"等待键盘访问权限..."_s},
        {L::doneBody.withTray,
         u"KestrelBay is ready in the menu bar\nAdd your first shortcut now"_s,
         u"KestrelBay 已在菜单栏就绪\n现在来添加你的第一个快捷键配置吧"_s,
         u"KestrelBay is ready in the tray\nAdd your first shortcut now"_s,
         u"KestrelBay 已在系统托盘就绪\n现在来添加你的第一个快捷键配置吧"_s},
        {L::doneWithoutPermissionBody.withTray,
         u"KestrelBay is ready in the menu bar\nClick \u26A1 in the menu bar to open settings\n(Tip: remember to grant Accessibility permission in Advanced settings)"_s,
         u"KestrelBay 已在菜单栏就绪\n点击 \u26A1 图标可随时打开设置\n（提示：记得前往高级设置完成辅助功能授权）"_s,
         u"KestrelBay is ready in the tray\nClick \u26A1 in the tray to open settings\n(Tip: Advanced settings say why hotkeys do not work yet)"_s,
         u"KestrelBay 已在系统托盘就绪\n点击 \u26A1 图标可随时打开设置\n（提示：高级设置中说明了快捷键尚不可用的原因）"_s},
        {L::argumentFilePathHint, u"/Users/me/project"_s, u"/Users/me/project"_s,
         u"/home/me/project"_s, u"/home/me/project"_s},
        {L::launchAtLoginText, u"Automatically run KestrelBay after login"_s,
         u"macOS 登录后自动在后台运行 KestrelBay"_s, u"Automatically run KestrelBay after login"_s,
         u"登录后自动在后台运行 KestrelBay"_s},
        {L::configFolderShow, u"Show in Finder"_s, u"在 Finder 中显示"_s, u"Show in File Manager"_s,
         u"在文件管理器中显示"_s},
        {L::accessTitle, u"Accessibility Permission"_s, u"辅助功能权限"_s, u"Keyboard Access"_s,
         u"键盘访问权限"_s},
        {L::accessGranted, u"\u2705 Granted \u2014 global shortcuts working"_s,
         u"\u2705 已授权 \u2014 全局快捷键正常工作"_s,
         u"\u2713 Available \u2014 global shortcuts working"_s,
         u"\u2713 可用 \u2014 全局快捷键正常工作"_s},
        {L::accessOpenSettings, u"Open System Settings..."_s, u"打开系统设置..."_s,
         u"Check Again"_s, u"重新检查"_s},
        {L::accessNotPermitted, notGranted, notGrantedChinese,
         u"\u26A0 Not available \u2014 KestrelBay is not allowed to see the keyboard"_s,
         u"\u26A0 不可用 \u2014 KestrelBay 无法访问键盘"_s},
        {L::accessWaylandSession, notGranted, notGrantedChinese,
         u"\u26A0 Not available \u2014 this Wayland session gives programs no hotkeys; bind rules in its own settings (kestrelbay --action=run-rule), or log out and choose an X11 (Xorg) session"_s,
         u"\u26A0 不可用 \u2014 当前 Wayland 会话不向程序提供快捷键，请在桌面设置中绑定规则（kestrelbay --action=run-rule），或注销并选择 X11（Xorg）会话"_s},
        {L::accessNoDisplay, notGranted, notGrantedChinese,
         u"\u26A0 Not available \u2014 the display server cannot be reached; start KestrelBay within a graphical session"_s,
         u"\u26A0 不可用 \u2014 无法连接显示服务器，请在图形会话中启动 KestrelBay"_s},
        {L::accessNoInputExtension, notGranted, notGrantedChinese,
         u"\u26A0 Not available \u2014 the X server lacks XInput 2.1 or XKB, which global shortcuts need"_s,
         u"\u26A0 不可用 \u2014 X 服务器缺少全局快捷键所需的 XInput 2.1 或 XKB"_s},
        {L::accessOtherInstance, notGranted, notGrantedChinese,
         u"\u26A0 Not available \u2014 another KestrelBay has the keyboard; quit it and check again"_s,
         u"\u26A0 不可用 \u2014 另一个 KestrelBay 正在使用键盘，请退出它后重新检查"_s},
    };
}

/// Every text, in both languages and on both systems.
class LTextsTest : public LFixture {};

TEST_F(LTextsTest, EveryTextInEnglish) {
    choose(Language::en);
    for (const Member &member : members())
        EXPECT_EQ(member.text(), member.english);
    for (const Sentence &sentence : sentences())
        EXPECT_EQ(sentence.text(u"Files"_s), sentence.english);
}

TEST_F(LTextsTest, EveryTextInChinese) {
    choose(Language::zh);
    for (const Member &member : members())
        EXPECT_EQ(member.text(), member.chinese);
    for (const Sentence &sentence : sentences())
        EXPECT_EQ(sentence.text(u"Files"_s), sentence.chinese);
}

TEST_F(LTextsTest, AFreshUserReadsEnglish) {
    for (const Member &member : members())
        EXPECT_EQ(member.text(), member.english);
}

TEST_F(LTextsTest, TextsOfMacosAreTheGivenOnes) {
    for (const SystemMember &member : systemMembers()) {
        EXPECT_EQ(member.text.onMacos.english.toString(), member.macosEnglish);
        EXPECT_EQ(member.text.onMacos.chinese.toString(), member.macosChinese);
    }
}

TEST_F(LTextsTest, TextsOfLinuxAreTheGivenOnes) {
    for (const SystemMember &member : systemMembers()) {
        EXPECT_EQ(member.text.onLinux.english.toString(), member.linuxEnglish);
        EXPECT_EQ(member.text.onLinux.chinese.toString(), member.linuxChinese);
    }
}

TEST_F(LTextsTest, TextsOfLinuxNameNothingThatIsNotThere) {
    for (const SystemMember &member : systemMembers())
        expectNothingOfMacos(member.text.onLinux);
}

TEST_F(LTextsTest, OnLinuxThePlaceOfTheIconHasOneName) {
    for (const SystemMember &member : systemMembers()) {
        for (const auto *other : {u"status bar", u"menu bar", u"panel"})
            EXPECT_FALSE(member.text.onLinux.english.toString().contains(QStringView(other)));
        for (const auto *other : {u"状态栏", u"菜单栏", u"面板"})
            EXPECT_FALSE(member.text.onLinux.chinese.toString().contains(QStringView(other)));
    }
}

TEST_F(LTextsTest, NothingIsSaidOfPastingWhereTheKeyboardCan) {
    EXPECT_EQ(L::argumentPasteHint.onMacos.in(Language::en),
              u"To paste text into the field, right-click instead of using keyboard shortcuts."_s);
    EXPECT_EQ(L::argumentPasteHint.onMacos.in(Language::zh),
              u"如需粘贴文本到输入框，使用鼠标右键而非快捷键。"_s);
    for (const Language language : {Language::en, Language::zh})
        EXPECT_EQ(L::argumentPasteHint.onLinux.in(language), QString());
}

TEST_F(LTextsTest, TextsForDesktopsWithoutATrayNameNone) {
    for (const LTrayText &text :
         {L::doneBody, L::doneWithoutPermissionBody, L::guideFinishedToast, L::guideSkippedToast}) {
        EXPECT_EQ(text(true), text.withTray());
        for (const Language language : {Language::en, Language::zh}) {
            choose(language);
            for (const auto *place : {u"⚡", u"tray", u"bar", u"托盘", u"栏"})
                EXPECT_FALSE(text(false).contains(QStringView(place))) << text(false).toStdString();
        }
    }
}

TEST_F(LTextsTest, TextsOfTheSystemAreThoseOfThisOne) {
    for (const SystemMember &member : systemMembers()) {
#ifdef Q_OS_MACOS
        const LText &text = member.text.onMacos;
#else
        const LText &text = member.text.onLinux;
#endif
        choose(Language::en);
        EXPECT_EQ(member.text(), text.english.toString());
        choose(Language::zh);
        EXPECT_EQ(member.text(), text.chinese.toString());
    }
}

}  // namespace

}  // namespace kestrelbay
