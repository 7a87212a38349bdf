#include "settings/L.h"

#include "platform/EventTap.h"
#include "settings/Language.h"

namespace kestrelbay {

QString LText::operator()() const {
    return (Language::current() == Language::en ? english : chinese).toString();
}

QString LSentence::operator()(const QString &name) const {
    return LText{english, chinese}().arg(name);
}

QString LSystemText::operator()() const {
#ifdef Q_OS_MACOS
    return onMacos();
#else
    return onLinux();
#endif
}

QString L::resolved(QStringView english, QStringView chinese) {
    return LText{english, chinese}();
}

QString L::programName() {
    return resolved(u"KestrelBay", u"KestrelBay");
}

QString L::cancel() {
    return resolved(u"Cancel", u"取消");
}

QString L::aboutKestrelBay() {
    return resolved(u"About KestrelBay", u"关于 KestrelBay");
}

QString L::preferencesTitle() {
    return resolved(u"KestrelBay Preferences", u"KestrelBay 偏好设置");
}

QString L::deleteConfirmMsg(const QString &name) {
    return resolved(u"Are you sure you want to delete the shortcut for \"", u"确定要删除「") +
           name + resolved(u"\"?", u"」的快捷键配置吗？");
}

QString L::advancedPanelTitle(const QString &appName) {
    return resolved(u"Advanced · ", u"高级选项 · ") + appName;
}

QString L::recorderEmpty() {
    return resolved(u"Click to record", u"点击录入");
}

QString L::recorderPrompt() {
    return resolved(u"Press hotkey...", u"按下快捷键...");
}

QString L::recorderClear() {
    return resolved(u"×", u"×");
}

QString L::recorderKeyboardHeld() {
    return resolved(u"Another program is using the keyboard, please try again",
                    u"其他程序正在占用键盘，请稍后再试");
}

QString L::disableAllShortcuts() {
    return resolved(u"Disable All Shortcuts", u"禁用全部快捷键");
}

QString L::enableAllShortcuts() {
    return resolved(u"Enable All Shortcuts", u"启用全部快捷键");
}

QString L::preferencesEntry() {
    return resolved(u"Preferences...", u"偏好设置...");
}

QString L::welcomeGuideEntry() {
    return resolved(u"Welcome Guide...", u"欢迎向导...");
}

QString L::quit() {
    return resolved(u"Quit", u"退出");
}

QString L::aboutVersion(const QString &version) {
    return resolved(u"Version ", u"Version ") + version;
}

QString L::checkForUpdates() {
    return resolved(u"Check for Updates", u"检查更新");
}

QString L::contactFeedback() {
    return resolved(u"Contact & Feedback", u"联系作者与反馈");
}

QString L::welcomeTitle() {
    return resolved(u"KestrelBay is running", u"KestrelBay 正在运行");
}

QString L::welcomeBody() {
    return resolved(u"You can locate it in the status bar and access its menu for settings.",
                    u"你可以在状态栏找到它，并通过菜单进行设置。");
}

QString L::welcomeStart() {
    return resolved(u"Get Started", u"开始设置");
}

QString L::welcomeDismiss() {
    return resolved(u"Dismiss", u"关闭");
}

QString L::permissionWaitingButton() {
    return resolved(u"Waiting...", u"正在等待...");
}

QString L::permissionGranted() {
    return resolved(u"✓ Granted", u"✓ 已授权");
}

QString L::skipForNow() {
    return resolved(u"Skip for now", u"稍后再说");
}

QString L::doneTitle() {
    return resolved(u"All set!", u"一切就绪！");
}

QString L::doneAddShortcut() {
    return resolved(u"Add First Shortcut", u"立即添加快捷键");
}

QString L::doneWithoutPermissionTitle() {
    return resolved(u"Setup complete", u"设置完成");
}

QString L::doneOpenPreferences() {
    return resolved(u"Open Preferences", u"打开偏好设置");
}

QString L::guideFinishedToast() {
    return resolved(u"Click ⚡ → Preferences to configure shortcuts",
                    u"点击状态栏的⚡️图标 → 偏好设置 进行快捷键配置");
}

QString L::guideSkippedToast() {
    return resolved(
        u"Onboarding skipped. Click ⚡ → Welcome Guide to reopen.",
        u"已跳过引导。可随时点击状态栏的⚡️图标 → 欢迎向导 重新打开");
}

QString L::accessMissing(TapProblem problem) {
    switch (problem) {
        case TapProblem::None:
        case TapProblem::NotPermitted:
            break;
        case TapProblem::WaylandSession:
            return accessWaylandSession();
        case TapProblem::NoDisplay:
            return accessNoDisplay();
        case TapProblem::NoInputExtension:
            return accessNoInputExtension();
        case TapProblem::OtherInstance:
            return accessOtherInstance();
    }
    return accessNotPermitted();
}

}  // namespace kestrelbay
