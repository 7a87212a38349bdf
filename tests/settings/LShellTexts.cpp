#include "settings/LTexts.h"

#include "settings/L.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

std::vector<LMember> members() {
    return {
        {L::programName, u"KestrelBay"_s, u"KestrelBay"_s},
        {L::cancel, u"Cancel"_s, u"取消"_s},
        {L::aboutKestrelBay, u"About KestrelBay"_s, u"关于 KestrelBay"_s},
        {L::preferencesTitle, u"KestrelBay Preferences"_s, u"KestrelBay 偏好设置"_s},
        {L::recorderEmpty, u"Click to record"_s, u"点击录入"_s},
        {L::recorderPrompt, u"Press hotkey..."_s, u"按下快捷键..."_s},
        {L::recorderClear, u"\u00D7"_s, u"\u00D7"_s},
        {L::disableAllShortcuts, u"Disable All Shortcuts"_s, u"禁用全部快捷键"_s},
        {L::enableAllShortcuts, u"Enable All Shortcuts"_s, u"启用全部快捷键"_s},
        {L::preferencesEntry, u"Preferences..."_s, u"偏好设置..."_s},
        {L::welcomeGuideEntry, u"Welcome Guide..."_s, u"欢迎向导..."_s},
        {L::quit, u"Quit"_s, u"退出"_s},
        {L::checkForUpdates, u"Check for Updates"_s, u"检查更新"_s},
        {L::contactFeedback, u"Contact & Feedback"_s, u"联系作者与反馈"_s},
        {L::welcomeTitle, u"KestrelBay is running"_s, u"KestrelBay 正在运行"_s},
        {L::welcomeBody, u"You can locate it in the status bar and access its menu for settings."_s,
         u"你可以在状态栏找到它，并通过菜单进行设置。"_s},
        {L::welcomeStart, u"Get Started"_s, u"开始设置"_s},
        {L::welcomeDismiss, u"Dismiss"_s, u"关闭"_s},
        {L::permissionWaitingButton, u"Waiting..."_s, u"正在等待..."_s},
        {L::permissionGranted, u"\u2713 Granted"_s, u"\u2713 已授权"_s},
        {L::skipForNow, u"Skip for now"_s, u"稍后再说"_s},
        {L::doneTitle, u"All set!"_s, u"一切就绪！"_s},
        {L::doneAddShortcut, u"Add First Shortcut"_s, u"立即添加快捷键"_s},
        {L::doneWithoutPermissionTitle, u"Setup complete"_s, u"设置完成"_s},
        {L::doneOpenPreferences, u"Open Preferences"_s, u"打开偏好设置"_s},
        {L::guideFinishedToast, u"Click \u26A1 \u2192 Preferences to configure shortcuts"_s,
         u"点击状态栏的\u26A1\uFE0F图标 \u2192 偏好设置 进行快捷键配置"_s},
        {L::guideSkippedToast,
         u"Onboarding skipped. Click \u26A1 \u2192 Welcome Guide to reopen."_s,
         u"已跳过引导。可随时点击状态栏的\u26A1\uFE0F图标 \u2192 欢迎向导 重新打开"_s},
    };
}

std::vector<LSystemMember> systemMembers() {
    return {
        {L::recorderNoAccess, &LSystemTexts::recorderNoAccess,
         u"Accessibility permission required to record hotkeys"_s,
         u"需要辅助功能权限才能录入快捷键"_s},
        {L::recorderGrantAccess, &LSystemTexts::recorderGrantAccess, u"Grant Access"_s,
         u"前往授权"_s},
        {L::welcomeTip, &LSystemTexts::welcomeTip,
         u"TIP: If you cannot find the app's icon, you may use Command + mouse drag to rearrange the order, because there are too many icons that may be hidden."_s,
         u"提示：如果找不到应用图标，可以按住 Command 键拖拽图标来调整顺序，因为可能有过多图标被隐藏。"_s},
        {L::permissionTitle, &LSystemTexts::permissionTitle, u"Accessibility Permission Required"_s,
         u"需要辅助功能权限"_s},
        {L::permissionBody, &LSystemTexts::permissionBody,
         u"KestrelBay uses accessibility to listen for global hotkeys.\nWe only respond to hotkeys you configure \u2014 no other keystrokes are recorded."_s,
         u"KestrelBay 通过辅助功能权限监听全局快捷键。\n我们只响应你配置的快捷键，不记录任何其他键盘输入。"_s},
        {L::permissionOpenSettings, &LSystemTexts::permissionOpenSettings,
         u"Open System Settings"_s, u"前往系统设置"_s},
        {L::permissionWaiting, &LSystemTexts::permissionWaiting, u"Waiting for permission..."_s,
         u"等待授权..."_s},
        {L::doneBody, &LSystemTexts::doneBody,
         u"KestrelBay is ready in the menu bar\nAdd your first shortcut now"_s,
         u"KestrelBay 已在菜单栏就绪\n现在来添加你的第一个快捷键配置吧"_s},
        {L::doneWithoutPermissionBody, &LSystemTexts::doneWithoutPermissionBody,
         u"KestrelBay is ready in the menu bar\nClick \u26A1 in the menu bar to open settings\n(Tip: remember to grant Accessibility permission in Advanced settings)"_s,
         u"KestrelBay 已在菜单栏就绪\n点击 \u26A1 图标可随时打开设置\n（提示：记得前往高级设置完成辅助功能授权）"_s},
    };
}

}  // namespace

LTexts shellTexts() {
    return {.members = members(), .systemMembers = systemMembers()};
}

}  // namespace kestrelbay
