#pragma once

#include <cstdint>

#include <QString>
#include <QStringView>

namespace kestrelbay {

enum class TapProblem : std::uint8_t;

/// A text in both languages. Called, it gives that of the language in force (see
/// Language::current).
struct LText {
    QStringView english;
    QStringView chinese;

    [[nodiscard]] QString operator()() const;
};

/// A text that names a place or a permission of the system, and so reads differently on
/// each. Called, it gives that of the system the program is built for.
struct LSystemText {
    LText onMacos;
    LText onLinux;

    [[nodiscard]] QString operator()() const;
};

/// The texts of the user interface, each at its one place. What is on screen already
/// stays as it is until its owner builds it again.
class L {
public:
    L() = delete;

    // In several places.
    static QString programName();
    static QString cancel();
    static QString aboutKestrelBay();
    static QString preferencesTitle();
    static QString deleteConfirmMsg(const QString &name);
    static QString advancedPanelTitle(const QString &appName);

    // The field that records a hotkey.
    static QString recorderEmpty();
    static QString recorderPrompt();
    static constexpr LSystemText recorderNoAccess{
        .onMacos = {u"Accessibility permission required to record hotkeys",
                    u"需要辅助功能权限才能录入快捷键"},
        .onLinux = {u"No access to the keyboard: hotkeys cannot be recorded now",
                    u"目前无法访问键盘，不能录入快捷键"}};
    static constexpr LSystemText recorderGrantAccess{.onMacos = {u"Grant Access", u"前往授权"},
                                                     .onLinux = {u"See Why", u"查看原因"}};
    static QString recorderClear();
    static QString recorderKeyboardHeld();
    static QString recorderRecording();
    static QString clearHotkeyOf(const QString &appName);
    static QString hotkeyOf(const QString &appName);
    static QString noHotkey();

    // Keys as they are spoken.
    /// What is printed on a key as a word; unchanged when it is none of the signs
    /// that screen readers leave out.
    [[nodiscard]] static QString spokenKey(const QString &printed);
    static QString leftKey(const QString &name);
    static QString rightKey(const QString &name);
    static QString keypadKey(const QString &name);
    /// Between the keys of a hotkey.
    static QString keySeparator();

    // The menu of the status item.
    static QString disableAllShortcuts();
    static QString enableAllShortcuts();
    static QString preferencesEntry();
    static QString welcomeGuideEntry();
    static QString quit();

    // The About window.
    static QString aboutVersion(const QString &version);
    static QString checkForUpdates();
    static QString contactFeedback();

    // The first-run guide, step by step.
    static QString welcomeTitle();
    static QString welcomeBody();
    static constexpr LSystemText welcomeTip{
        .onMacos = {u"TIP: If you cannot find the app's icon, you may use Command + mouse drag to "
                    u"rearrange the order, because there are too many icons that may be hidden.",
                    u"提示：如果找不到应用图标，可以按住 Command "
                    u"键拖拽图标来调整顺序，因为可能有过多图标被隐藏。"},
        .onLinux = {u"TIP: If you cannot find the app's icon, look among the hidden icons of your "
                    u"tray. Without a tray, start KestrelBay again to open its preferences.",
                    u"提示：如果找不到应用图标，请查看系统托盘中被隐藏的图标。"
                    u"没有系统托盘时，再次启动 KestrelBay 即可打开偏好设置。"}};
    static QString welcomeStart();
    static QString welcomeDismiss();

    static constexpr LSystemText permissionTitle{
        .onMacos = {u"Accessibility Permission Required", u"需要辅助功能权限"},
        .onLinux = {u"Keyboard Access Required", u"需要键盘访问权限"}};
    static constexpr LSystemText permissionBody{
        .onMacos = {u"KestrelBay uses accessibility to listen for global hotkeys.\n"
                    u"We only respond to hotkeys you configure — no other keystrokes are recorded.",
                    u"KestrelBay 通过辅助功能权限监听全局快捷键。\n"
                    u"我们只响应你配置的快捷键，不记录任何其他键盘输入。"},
        .onLinux = {u"To listen for global hotkeys, KestrelBay needs an X11 session (not Wayland) "
                    u"with XInput 2.1, and no other KestrelBay running in it.\n"
                    u"We only respond to hotkeys you configure — no other keystrokes are recorded.",
                    u"KestrelBay 监听全局快捷键需要支持 XInput 2.1 的 X11 会话（而非 "
                    u"Wayland），且该会话中没有另一个 KestrelBay 正在运行。\n"
                    u"我们只响应你配置的快捷键，不记录任何其他键盘输入。"}};
    static constexpr LSystemText permissionOpenSettings{
        .onMacos = {u"Open System Settings", u"前往系统设置"},
        .onLinux = {u"Check Access", u"检查权限"}};
    static QString permissionWaitingButton();
    static constexpr LSystemText permissionWaiting{
        .onMacos = {u"Waiting for permission...", u"等待授权..."},
        .onLinux = {u"Waiting for keyboard access...", u"等待键盘访问权限..."}};
    static QString permissionGranted();
    static QString skipForNow();

    static QString doneTitle();
    static constexpr LSystemText doneBody{
        .onMacos = {u"KestrelBay is ready in the menu bar\nAdd your first shortcut now",
                    u"KestrelBay 已在菜单栏就绪\n现在来添加你的第一个快捷键配置吧"},
        .onLinux = {u"KestrelBay is ready in the tray\nAdd your first shortcut now",
                    u"KestrelBay 已在系统托盘就绪\n现在来添加你的第一个快捷键配置吧"}};
    static QString doneAddShortcut();
    static QString doneWithoutPermissionTitle();
    static constexpr LSystemText doneWithoutPermissionBody{
        .onMacos = {u"KestrelBay is ready in the menu bar\n"
                    u"Click ⚡ in the menu bar to open settings\n"
                    u"(Tip: remember to grant Accessibility permission in Advanced settings)",
                    u"KestrelBay 已在菜单栏就绪\n"
                    u"点击 ⚡ 图标可随时打开设置\n"
                    u"（提示：记得前往高级设置完成辅助功能授权）"},
        .onLinux = {u"KestrelBay is ready in the tray\n"
                    u"Click ⚡ in the tray to open settings\n"
                    u"(Tip: Advanced settings say why hotkeys do not work yet)",
                    u"KestrelBay 已在系统托盘就绪\n"
                    u"点击 ⚡ 图标可随时打开设置\n"
                    u"（提示：高级设置中说明了快捷键尚不可用的原因）"}};
    static QString doneOpenPreferences();

    // What the guide says when it goes.
    static QString guideFinishedToast();
    static QString guideSkippedToast();

    // The preferences window.
    static QString rulesTab();
    static QString advancedTab();

    // Its list of rules. The names are what screen readers say.
    static QString rulesEmpty();
    static QString rulesCount(qsizetype count);
    static QString addRuleName();

    // One rule in it.
    static QString noAppSelected();
    static QString advancedOptions();
    static QString ruleDeleteName();
    static QString ruleDragName();
    static QString enableRule(const QString &appName);
    static QString advancedOptionsOf(const QString &appName);
    static QString deleteRule(const QString &appName);
    static QString hotkeyConflict();
    static QString hotkeyRefused();
    static QString deleteConfirmTitle();
    static QString deleteConfirmButton();

    // The panel of a rule's advanced options.
    static QString repeatHeader();
    static QString repeatKeepOpen();
    static QString repeatKeepOpenText();
    static QString repeatToggleVisibility();
    static QString repeatToggleVisibilityText();
    static QString repeatCycleWindows();
    static QString repeatCycleWindowsText();
    static QString argumentHeader();
    static QString argumentSubtitle();
    static QString argumentKindName();
    static QString argumentValueName();
    static QString argumentNone();
    static QString argumentLaunchArgs();
    static QString argumentUrlScheme();
    static QString argumentFilePath();
    static QString argumentNoneHint();
    static QString argumentLaunchArgsHint();
    static QString argumentUrlSchemeHint();
    static constexpr LSystemText argumentFilePathHint{
        .onMacos = {u"/Users/me/project", u"/Users/me/project"},
        .onLinux = {u"/home/me/project", u"/home/me/project"}};
    static QString argumentPasteHint();
    static QString deepLaunchHelp();
    static QString helpName();
    static QString save();

    // The choice of an application.
    static QString appPickerTitle();
    static QString appPickerSearch();
    static QString appPickerBrowse();
    static QString appPickerSelect();
    static QString appPickerLoading();
    static QString appPickerNothingFound();
    /// What files to choose from, by the pattern of their names.
    static QString appPickerFilter(const QString &pattern);

    // The settings of the whole program.
    static QString launchAtLogin();
    static constexpr LSystemText launchAtLoginText{
        .onMacos = {u"Automatically run KestrelBay after login",
                    u"macOS 登录后自动在后台运行 KestrelBay"},
        .onLinux = {u"Automatically run KestrelBay after login",
                    u"登录后自动在后台运行 KestrelBay"}};
    static QString language();
    static QString languageText();
    static QString languageNameChinese();
    static QString languageNameEnglish();
    static QString sound();
    static QString soundText();
    static QString soundNone();
    static QString launchToast();
    static QString launchToastText();
    static QString launchToastNone();
    static QString launchToastShort();
    static QString launchToastMedium();
    static QString launchToastLong();
    static QString configFolder();
    static constexpr LSystemText configFolderShow{
        .onMacos = {u"Show in Finder", u"在 Finder 中显示"},
        .onLinux = {u"Show in File Manager", u"在文件管理器中显示"}};
    static constexpr LSystemText accessTitle{
        .onMacos = {u"Accessibility Permission", u"辅助功能权限"},
        .onLinux = {u"Keyboard Access", u"键盘访问权限"}};
    static constexpr LSystemText accessGranted{
        .onMacos = {u"✅ Granted — global shortcuts working", u"✅ 已授权 — 全局快捷键正常工作"},
        .onLinux = {u"✓ Available — global shortcuts working", u"✓ 可用 — 全局快捷键正常工作"}};
    /// Why hotkeys do not work, and what to do about it: one of the five below.
    [[nodiscard]] static QString accessMissing(TapProblem problem);
    static constexpr LSystemText accessNotPermitted{
        .onMacos = {u"⚠️ Not granted — go to System Settings › Privacy & Security › "
                    u"Accessibility to allow KestrelBay",
                    u"⚠️ 未授权 — 请前往系统设置 › 隐私与安全性 › "
                    u"辅助功能，"
                    u"允许 KestrelBay"},
        .onLinux = {u"⚠ Not available — KestrelBay is not allowed to see the keyboard",
                    u"⚠ 不可用 — KestrelBay 无法访问键盘"}};
    // On macOS there is only one thing that can be missing.
    static constexpr LSystemText accessWaylandSession{
        .onMacos = accessNotPermitted.onMacos,
        .onLinux = {
            u"⚠ Not available — this is a Wayland session; log out and choose an X11 (Xorg) "
            u"session to use KestrelBay",
            u"⚠ 不可用 — 当前为 Wayland 会话，请注销并选择 X11（Xorg）会话以使用 KestrelBay"}};
    static constexpr LSystemText accessNoDisplay{
        .onMacos = accessNotPermitted.onMacos,
        .onLinux = {u"⚠ Not available — no X server can be reached; start KestrelBay within an "
                    u"X11 session",
                    u"⚠ 不可用 — 无法连接 X 服务器，请在 X11 会话中启动 KestrelBay"}};
    static constexpr LSystemText accessNoInputExtension{
        .onMacos = accessNotPermitted.onMacos,
        .onLinux = {u"⚠ Not available — the X server lacks XInput 2.1 or XKB, which global "
                    u"shortcuts need",
                    u"⚠ 不可用 — X 服务器缺少全局快捷键所需的 XInput 2.1 或 XKB"}};
    static constexpr LSystemText accessOtherInstance{
        .onMacos = accessNotPermitted.onMacos,
        .onLinux = {
            u"⚠ Not available — another KestrelBay has the keyboard; quit it and check again",
            u"⚠ 不可用 — 另一个 KestrelBay 正在使用键盘，请退出它后重新检查"}};
    static constexpr LSystemText accessOpenSettings{
        .onMacos = {u"Open System Settings...", u"打开系统设置..."},
        .onLinux = {u"Check Again", u"重新检查"}};
    static QString restartTitle();
    static QString restartText();
    static QString restartNow();
    static QString restartLater();

private:
    static QString resolved(QStringView english, QStringView chinese);
};

}  // namespace kestrelbay
