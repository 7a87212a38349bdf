#pragma once

#include <cstdint>

#include <QString>
#include <QStringView>

#include "settings/Language.h"

namespace kestrelbay {

enum class ExtensionState : std::uint8_t;
enum class TapProblem : std::uint8_t;

/// A text in both languages. Called, it gives that of the language in force (see
/// Language::current).
struct LText {
    QStringView english;
    QStringView chinese;

    [[nodiscard]] QString operator()() const;
    [[nodiscard]] QString in(Language language) const;
};

/// A text with a place for a name, which is put in as it is given.
struct LSentence {
    QStringView english;
    QStringView chinese;

    [[nodiscard]] QString operator()(const QString &name) const;
    [[nodiscard]] QString in(Language language, const QString &name) const;
};

/// A text that names a place or a permission of the system, and so reads differently on
/// each. Called, it gives that of the system the program is built for.
struct LSystemText {
    LText onMacos;
    LText onLinux;

    [[nodiscard]] QString operator()() const;
};

/// A text that leads the user to the program's icon, and what it says where the desktop
/// shows none.
struct LTrayText {
    LSystemText withTray;
    LText withoutTray;

    [[nodiscard]] QString operator()(bool hasTray) const;
};

/// The texts of the user interface, each at its one place. What is on screen already
/// stays as it is until its owner builds it again.
class L {
public:
    L() = delete;

    // In several places.
    static constexpr LText programName{u"KestrelBay", u"KestrelBay"};
    static constexpr LText cancel{u"Cancel", u"取消"};
    static constexpr LText aboutKestrelBay{u"About KestrelBay", u"关于 KestrelBay"};
    static constexpr LText preferencesTitle{u"KestrelBay Preferences", u"KestrelBay 偏好设置"};
    static constexpr LSentence deleteConfirmMsg{
        u"Are you sure you want to delete the shortcut for \"%1\"?",
        u"确定要删除「%1」的快捷键配置吗？"};
    static constexpr LSentence advancedPanelTitle{u"Advanced · %1", u"高级选项 · %1"};

    // The field that records a hotkey.
    static constexpr LText recorderEmpty{u"Click to record", u"点击录入"};
    static constexpr LText recorderPrompt{u"Press hotkey...", u"按下快捷键..."};
    static constexpr LSystemText recorderNoAccess{
        .onMacos = {u"Accessibility permission required to record hotkeys",
                    u"需要辅助功能权限才能录入快捷键"},
        .onLinux = {u"No access to the keyboard: hotkeys cannot be recorded now",
                    u"目前无法访问键盘，不能录入快捷键"}};
    static constexpr LSystemText recorderGrantAccess{.onMacos = {u"Grant Access", u"前往授权"},
                                                     .onLinux = {u"See Why", u"查看原因"}};
    static constexpr LText recorderClear{u"×", u"×"};
    static constexpr LText recorderKeyboardHeld{
        u"Another program is using the keyboard, please try again",
        u"其他程序正在占用键盘，请稍后再试"};
    static constexpr LText recorderMissesKeys{
        u"This desktop keeps some keys for itself: they cannot be recorded",
        u"此桌面会保留部分按键，无法录入"};
    static constexpr LText recorderRecording{u"recording", u"正在录入"};
    static constexpr LSentence clearHotkeyOf{u"Clear hotkey of %1", u"清除快捷键：%1"};
    static constexpr LSentence hotkeyOf{u"Hotkey of %1", u"快捷键：%1"};
    static constexpr LText noHotkey{u"none", u"无"};

    // Keys as they are spoken.
    /// What is printed on a key as a word, that of the system's own keyboards; unchanged when it
    /// is none of the signs that screen readers leave out.
    [[nodiscard]] static QString spokenKey(const QString &printed);
    static constexpr LSentence leftKey{u"left %1", u"左 %1"};
    static constexpr LSentence rightKey{u"right %1", u"右 %1"};
    static constexpr LSentence keypadKey{u"keypad %1", u"小键盘 %1"};
    /// Between the keys of a hotkey.
    static constexpr LText keySeparator{u", ", u"，"};

    /// Where a button leads to an address that the program was built without.
    static constexpr LText noAddress{u"This build of KestrelBay has no address for that",
                                     u"此构建的 KestrelBay 未设置相应的地址"};

    // The menu of the status item.
    static constexpr LText disableAllShortcuts{u"Disable All Shortcuts", u"禁用全部快捷键"};
    static constexpr LText enableAllShortcuts{u"Enable All Shortcuts", u"启用全部快捷键"};
    static constexpr LText preferencesEntry{u"Preferences...", u"偏好设置..."};
    static constexpr LText welcomeGuideEntry{u"Welcome Guide...", u"欢迎向导..."};
    static constexpr LText quit{u"Quit", u"退出"};

    // The About window.
    static constexpr LSentence aboutVersion{u"Version %1", u"Version %1"};
    static constexpr LText checkForUpdates{u"Check for Updates", u"检查更新"};
    static constexpr LText contactFeedback{u"Contact & Feedback", u"联系作者与反馈"};

    // The first-run guide, step by step.
    static constexpr LText welcomeTitle{u"KestrelBay is running", u"KestrelBay 正在运行"};
    static constexpr LSystemText welcomeBody{
        .onMacos = {u"You can locate it in the status bar and access its menu for settings.",
                    u"你可以在状态栏找到它，并通过菜单进行设置。"},
        .onLinux = {u"You can locate it in the tray and access its menu for settings.",
                    u"你可以在系统托盘找到它，并通过菜单进行设置。"}};
    static constexpr LSystemText welcomeTip{
        .onMacos = {u"TIP: If you cannot find the app's icon, you may use Command + mouse drag to "
                    u"rearrange the order, because there are too many icons that may be hidden.",
                    u"提示：如果找不到应用图标，可以按住 Command "
                    u"键拖拽图标来调整顺序，因为可能有过多图标被隐藏。"},
        .onLinux = {u"TIP: If you cannot find the app's icon, look among the hidden icons of your "
                    u"tray. Without a tray, start KestrelBay again to open its preferences.",
                    u"提示：如果找不到应用图标，请查看系统托盘中被隐藏的图标。"
                    u"没有系统托盘时，再次启动 KestrelBay 即可打开偏好设置。"}};
    static constexpr LText welcomeStart{u"Get Started", u"开始设置"};
    static constexpr LText welcomeDismiss{u"Dismiss", u"关闭"};

    static constexpr LSystemText permissionTitle{
        .onMacos = {u"Accessibility Permission Required", u"需要辅助功能权限"},
        .onLinux = {u"Keyboard Access Required", u"需要键盘访问权限"}};
    static constexpr LSystemText permissionBody{
        .onMacos = {u"KestrelBay uses accessibility to listen for global hotkeys.\n"
                    u"We only respond to hotkeys you configure — no other keystrokes are recorded.",
                    u"KestrelBay 通过辅助功能权限监听全局快捷键。\n"
                    u"我们只响应你配置的快捷键，不记录任何其他键盘输入。"},
        .onLinux = {
            u"To listen for global hotkeys, KestrelBay needs an X11 session with XInput 2.1, "
            u"or a Wayland session that gives programs hotkeys, and no other KestrelBay "
            u"running in it.\n"
            u"We only respond to hotkeys you configure — no other keystrokes are recorded.",
            u"KestrelBay 监听全局快捷键需要支持 XInput 2.1 的 X11 会话，或向程序提供快捷键的 "
            u"Wayland 会话，且该会话中没有另一个 KestrelBay 正在运行。\n"
            u"我们只响应你配置的快捷键，不记录任何其他键盘输入。"}};
    // Of the same step in GNOME's own Wayland session.
    static constexpr LText permissionExtensionBody{
        u"GNOME gives hotkeys to its extensions only. KestrelBay's may bind your hotkeys, see "
        u"windows and their titles, bring them forward and minimise them — nothing else.\n"
        u"We only respond to hotkeys you configure — no other keystrokes are recorded.",
        u"GNOME 只向其扩展提供快捷键。KestrelBay "
        u"的扩展可以绑定你的快捷键、查看窗口及其标题、将窗口置于前台或最小化，仅此而已。\n"
        u"我们只响应你配置的快捷键，不记录任何其他键盘输入。"};
    static constexpr LSystemText permissionOpenSettings{
        .onMacos = {u"Open System Settings", u"前往系统设置"},
        .onLinux = {u"Check Access", u"检查权限"}};
    static constexpr LText permissionWaitingButton{u"Waiting...", u"正在等待..."};
    static constexpr LSystemText permissionWaiting{
        .onMacos = {u"Waiting for permission...", u"等待授权..."},
        .onLinux = {u"Waiting for keyboard access...", u"等待键盘访问权限..."}};
    static constexpr LText permissionGranted{u"✓ Granted", u"✓ 已授权"};
    // Of the same step, where keys can be seen already.
    static constexpr LText permissionThereTitle{u"Keyboard Access Available",
                                                u"键盘访问权限已可用"};
    static constexpr LText permissionThereBody{
        u"KestrelBay can listen for global hotkeys here.\n"
        u"We only respond to hotkeys you configure — no other keystrokes are recorded.",
        u"KestrelBay 已可监听全局快捷键。\n"
        u"我们只响应你配置的快捷键，不记录任何其他键盘输入。"};
    static constexpr LText permissionThereContinue{u"Continue", u"继续"};
    static constexpr LText skipForNow{u"Skip for now", u"稍后再说"};

    static constexpr LText doneTitle{u"All set!", u"一切就绪！"};
    static constexpr LTrayText doneBody{
        .withTray =
            {.onMacos = {u"KestrelBay is ready in the menu bar\nAdd your first shortcut now",
                         u"KestrelBay 已在菜单栏就绪\n现在来添加你的第一个快捷键配置吧"},
             .onLinux = {u"KestrelBay is ready in the tray\nAdd your first shortcut now",
                         u"KestrelBay 已在系统托盘就绪\n现在来添加你的第一个快捷键配置吧"}},
        .withoutTray = {u"KestrelBay is ready\nAdd your first shortcut now",
                        u"KestrelBay 已就绪\n现在来添加你的第一个快捷键配置吧"}};
    static constexpr LText doneAddShortcut{u"Add First Shortcut", u"立即添加快捷键"};
    static constexpr LText doneWithoutPermissionTitle{u"Setup complete", u"设置完成"};
    static constexpr LTrayText doneWithoutPermissionBody{
        .withTray =
            {.onMacos = {u"KestrelBay is ready in the menu bar\n"
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
                         u"（提示：高级设置中说明了快捷键尚不可用的原因）"}},
        .withoutTray = {u"KestrelBay is ready\n"
                        u"Start it again to open settings\n"
                        u"(Tip: Advanced settings say why hotkeys do not work yet)",
                        u"KestrelBay 已就绪\n"
                        u"再次启动 KestrelBay 即可打开设置\n"
                        u"（提示：高级设置中说明了快捷键尚不可用的原因）"}};
    static constexpr LText doneOpenPreferences{u"Open Preferences", u"打开偏好设置"};

    // What the guide says when it goes.
    static constexpr LTrayText guideFinishedToast{
        .withTray =
            {.onMacos = {u"Click ⚡ → Preferences to configure shortcuts",
                         u"点击状态栏的⚡️图标 → 偏好设置 进行快捷键配置"},
             .onLinux =
                 {u"Click ⚡ → Preferences to configure shortcuts",
                  u"点击系统托盘的⚡️图标 → 偏好设置 进行快捷键配置"}},
        .withoutTray = {u"Start KestrelBay again to configure shortcuts",
                        u"再次启动 KestrelBay 即可进行快捷键配置"}};
    static constexpr LTrayText guideSkippedToast{
        .withTray =
            {.onMacos =
                 {u"Onboarding skipped. Click ⚡ → Welcome Guide to reopen.",
                  u"已跳过引导。可随时点击状态栏的⚡️图标 → 欢迎向导 "
                  u"重新打开"},
             .onLinux =
                 {u"Onboarding skipped. Click ⚡ → Welcome Guide to reopen.",
                  u"已跳过引导。可随时点击系统托盘的⚡️图标 → 欢迎向导 "
                  u"重新打开"}},
        .withoutTray = {u"Onboarding skipped. Run kestrelbay --action=welcome-guide to reopen.",
                        u"已跳过引导。可随时运行 kestrelbay --action=welcome-guide 重新打开"}};

    // The preferences window.
    static constexpr LText rulesTab{u"Shortcut Rules", u"快捷键规则"};
    static constexpr LText advancedTab{u"Advanced", u"高级设置"};

    // Its list of rules. The names are what screen readers say.
    static constexpr LText rulesEmpty{u"Click the ＋ button to add your first shortcut",
                                      u"点击左下角 ＋ 按钮，添加第一个快捷键配置"};
    [[nodiscard]] static QString rulesCount(qsizetype count) {
        return LSentence{u"%1 configured", u"已配置 %1 个"}(QString::number(count));
    }
    static constexpr LText addRuleName{u"Add", u"添加"};

    // One rule in it.
    static constexpr LText noAppSelected{u"No app selected", u"未选择应用"};
    static constexpr LText advancedOptions{u"Advanced Options", u"高级选项"};
    static constexpr LText ruleDeleteName{u"Delete", u"删除"};
    static constexpr LText ruleDragName{u"Drag to reorder", u"拖拽以重新排序"};
    static constexpr LSentence enableRule{u"Enable %1", u"启用 %1"};
    static constexpr LSentence advancedOptionsOf{u"Advanced Options: %1", u"高级选项：%1"};
    static constexpr LSentence deleteRule{u"Delete %1", u"删除 %1"};
    static constexpr LText windowsUnseen{
        u"This desktop doesn't let programs hide or switch windows, so shortcuts only open apps",
        u"此桌面不允许程序隐藏或切换窗口，快捷键只能打开应用"};
    static constexpr LText hotkeyConflict{
        u"Hotkey conflict: already used by another rule, please re-enter",
        u"快捷键冲突：已被其他规则使用，请重新录入"};
    static constexpr LText hotkeyRefused{u"Another program is using this hotkey",
                                         u"此快捷键已被其他程序占用"};
    static constexpr LSentence hotkeyRefusedBy{u"Probably %1 is using this hotkey",
                                               u"此快捷键可能已被 %1 占用"};
    static constexpr LText hotkeyUnheard{
        u"This hotkey never arrives: another program takes all keys pressed with this modifier",
        u"此快捷键无法送达：其他程序占用了与该修饰键一起按下的所有按键"};
    static constexpr LSentence hotkeyUnheardBy{
        u"This hotkey never arrives: probably %1 takes all keys pressed with this modifier",
        u"此快捷键无法送达：可能是 %1 占用了与该修饰键一起按下的所有按键"};
    static constexpr LText hotkeyUnassigned{
        u"The desktop has no keys for this hotkey yet: choose some in its settings",
        u"桌面尚未为此快捷键分配按键，请在桌面设置中选择"};
    static constexpr LText hotkeyNeedsSides{
        u"This hotkey never arrives: this session does not tell left modifier keys from right ones",
        u"此快捷键无法送达：当前会话无法区分左右修饰键"};
    static constexpr LText hotkeyEitherSideByClick{u"Click to have it mean either side",
                                                   u"点击即可改为不区分左右"};
    static constexpr LSentence hotkeyTrigger{u"Desktop: %1", u"桌面：%1"};
    static constexpr LSentence hotkeyAction{u"There it means: %1", u"对应的操作：%1"};
    static constexpr LSentence hotkeyRemedy{u"To free it: %1", u"解除占用：%1"};
    static constexpr LText deleteConfirmTitle{u"Delete Shortcut", u"删除快捷键"};
    static constexpr LText deleteConfirmButton{u"Delete", u"删除"};

    // What is done with a rule by the menu of the list.
    static constexpr LText recordHotkey{u"Record Hotkey", u"录入快捷键"};
    static constexpr LText useEitherSide{u"Use Either Side", u"改为不区分左右"};
    static constexpr LText showInFolder{u"Show in Folder", u"在文件夹中显示"};
    static constexpr LText duplicateRule{u"Duplicate", u"创建副本"};
    static constexpr LText undo{u"Undo", u"撤销"};
    static constexpr LText undoDeletion{u"Undo Delete", u"撤销删除"};
    static constexpr LSentence ruleDeleted{u"The shortcut for \"%1\" was deleted",
                                           u"已删除「%1」的快捷键配置"};
    static constexpr LSentence ruleRestored{u"The shortcut for \"%1\" is back",
                                            u"已恢复「%1」的快捷键配置"};
    static constexpr LSentence ruleRestoredWithoutHotkey{
        u"The shortcut for \"%1\" is back, but another rule has its hotkey now",
        u"已恢复「%1」的快捷键配置，但其快捷键已被其他规则使用"};
    static constexpr LSentence appNotInstalled{u"Not installed here: %1", u"此电脑上未安装：%1"};

    // Rules that are carried to other machines.
    static constexpr LText importEntry{u"Import...", u"导入..."};
    static constexpr LText exportEntry{u"Export...", u"导出..."};
    static constexpr LText importTitle{u"Import Shortcuts", u"导入快捷键"};
    static constexpr LText exportTitle{u"Export Shortcuts", u"导出快捷键"};
    /// What files to choose from, by the pattern of their names.
    static constexpr LSentence ruleFileFilter{u"Shortcuts (%1)", u"快捷键 (%1)"};
    [[nodiscard]] static QString importCounts(qsizetype added, qsizetype leftOut) {
        const QString counts = LSentence{u"To be added: %1", u"将添加：%1"}(QString::number(added));
        return leftOut == 0 ? counts
                            : counts + LSentence{u" · Left out: %1",
                                                 u" · 不导入：%1"}(QString::number(leftOut));
    }
    static constexpr LText importNotInstalled{u"not installed here", u"此电脑上未安装"};
    static constexpr LText importHotkeyTaken{u"without hotkey: it is in use",
                                             u"不含快捷键：已被使用"};
    static constexpr LText importIsDisabled{u"switched off", u"已停用"};
    static constexpr LText importAlreadyThere{u"left out: already in the list",
                                              u"不导入：列表中已存在"};
    static constexpr LText importNoApplication{u"left out: it has no application",
                                               u"不导入：未指定应用"};
    static constexpr LSentence importUnreadable{
        u"\"%1\" cannot be read as a file of shortcuts. Nothing was added.",
        u"无法将「%1」作为快捷键文件读取，未添加任何内容。"};
    static constexpr LText importNotSaved{u"The shortcuts could not be saved. Nothing was added.",
                                          u"快捷键无法保存，未添加任何内容。"};
    [[nodiscard]] static QString imported(qsizetype count) {
        return LSentence{u"Shortcuts added: %1", u"已添加 %1 个快捷键"}(QString::number(count));
    }
    static constexpr LSentence exported{u"Shortcuts saved in %1", u"快捷键已保存到 %1"};
    static constexpr LText exportNoRules{u"There are no shortcuts to export.",
                                         u"没有可导出的快捷键。"};
    static constexpr LSentence exportOtherFile{
        u"\"%1\" holds something other than exported shortcuts. It was left as it is.",
        u"「%1」中不是导出的快捷键，未作更改。"};
    static constexpr LSentence exportNotWritten{u"\"%1\" could not be written.",
                                                u"无法写入「%1」。"};
    static constexpr LText close{u"Close", u"关闭"};

    // The panel of a rule's advanced options.
    static constexpr LText repeatHeader{u"When shortcut is pressed repeatedly",
                                        u"连续重复按下快捷键时"};
    static constexpr LText repeatKeepOpen{u"Keep app open", u"保持应用打开"};
    static constexpr LText repeatKeepOpenText{
        u"No extra effect when app is already in front (default)",
        u"应用已在前台时，快捷键不产生额外效果（默认）"};
    static constexpr LText repeatToggleVisibility{u"Toggle show/hide", u"打开和隐藏窗口切换"};
    static constexpr LText repeatToggleVisibilityText{
        u"Press again to hide the app when already in front",
        u"应用已在前台时再次按下，则隐藏该应用"};
    static constexpr LText repeatCycleWindows{u"Cycle through windows", u"同应用多窗口轮询"};
    static constexpr LText repeatCycleWindowsText{u"Cycle through multiple windows of the same app",
                                                  u"应用已在前台且有多个窗口时，轮流切换窗口"};
    static constexpr LText argumentHeader{u"Launch Args / URL Scheme / File Path",
                                          u"启动参数 / URL Scheme / 文件路径"};
    static constexpr LText argumentSubtitle{u"Pick a type, then enter the value on the right",
                                            u"先选择类型，再在右侧输入对应内容"};
    static constexpr LText argumentKindName{u"Type", u"类型"};
    static constexpr LText argumentValueName{u"Value", u"内容"};
    static constexpr LText argumentNone{u"Default (none)", u"默认（不传）"};
    static constexpr LText argumentLaunchArgs{u"Launch arguments", u"启动参数"};
    static constexpr LText argumentUrlScheme{u"URL Scheme", u"URL Scheme"};
    static constexpr LText argumentFilePath{u"File path", u"文件路径"};
    static constexpr LText argumentNoneHint{u"Select a type to enable", u"请先在左侧选择类型"};
    static constexpr LText argumentLaunchArgsHint{
        u"--remote-debugging-port=9222 --user-data-dir=/tmp/foo",
        u"--remote-debugging-port=9222 --user-data-dir=/tmp/foo"};
    static constexpr LText argumentUrlSchemeHint{u"notebook://open?vault=notes",
                                                 u"notebook://open?vault=notes"};
    static constexpr LSystemText argumentFilePathHint{
        .onMacos = {u"/Users/me/project", u"/Users/me/project"},
        .onLinux = {u"/home/me/project", u"/home/me/project"}};
    /// Empty where the keyboard pastes too.
    static constexpr LSystemText argumentPasteHint{
        .onMacos = {u"To paste text into the field, right-click instead of using keyboard "
                    u"shortcuts.",
                    u"如需粘贴文本到输入框，使用鼠标右键而非快捷键。"},
        .onLinux = {u"", u""}};
    static constexpr LText deepLaunchHelp{u"Learn more about Deep Launch", u"进一步了解深度启动"};
    static constexpr LText helpName{u"Help", u"帮助"};
    static constexpr LText save{u"Save", u"保存"};

    // The choice of an application.
    static constexpr LText appPickerTitle{u"Select App", u"选择应用"};
    static constexpr LText appPickerSearch{u"Search apps...", u"搜索应用..."};
    static constexpr LText appPickerBrowse{u"Browse...", u"从文件系统选择..."};
    static constexpr LText appPickerSelect{u"Select", u"选择"};
    static constexpr LText appPickerLoading{u"Looking for apps...", u"正在查找应用..."};
    static constexpr LText appPickerNothingFound{u"No apps found", u"未找到应用"};
    /// What files to choose from, by the pattern of their names.
    static constexpr LSentence appPickerFilter{u"Applications (%1)", u"应用程序 (%1)"};

    // The settings of the whole program.
    static constexpr LText launchAtLogin{u"Launch at Login", u"登录时自动启动"};
    static constexpr LSystemText launchAtLoginText{
        .onMacos = {u"Automatically run KestrelBay after login",
                    u"macOS 登录后自动在后台运行 KestrelBay"},
        .onLinux = {u"Automatically run KestrelBay after login",
                    u"登录后自动在后台运行 KestrelBay"}};
    static constexpr LText language{u"Language", u"语言"};
    static constexpr LText languageText{u"Interface language for KestrelBay",
                                        u"KestrelBay 界面语言"};
    static constexpr LText languageNameChinese{u"中文", u"中文"};
    static constexpr LText languageNameEnglish{u"English", u"English"};
    static constexpr LText sound{u"Sound on Shortcut Trigger", u"快捷键触发时播放声音"};
    static constexpr LText soundText{u"Play a sound each time a shortcut fires",
                                     u"每次触发快捷键时播放提示音"};
    static constexpr LText soundNone{u"No Sound", u"无声音"};
    static constexpr LText launchToast{u"Launch Icon Toast", u"启动图标弹窗"};
    static constexpr LText launchToastText{u"Show app icon popup when a shortcut fires",
                                           u"快捷键触发后显示应用图标弹窗提示"};
    static constexpr LText launchToastNone{u"Off", u"不显示"};
    static constexpr LText launchToastShort{u"Brief", u"短暂显示"};
    static constexpr LText launchToastMedium{u"Medium", u"适中显示"};
    static constexpr LText launchToastLong{u"Long", u"较长显示"};
    static constexpr LText configFolder{u"Config File Location", u"配置文件位置"};
    static constexpr LSystemText configFolderShow{
        .onMacos = {u"Show in Finder", u"在 Finder 中显示"},
        .onLinux = {u"Show in File Manager", u"在文件管理器中显示"}};
    static constexpr LSystemText accessTitle{
        .onMacos = {u"Accessibility Permission", u"辅助功能权限"},
        .onLinux = {u"Keyboard Access", u"键盘访问权限"}};
    static constexpr LSystemText accessGranted{
        .onMacos = {u"✅ Granted — global shortcuts working", u"✅ 已授权 — 全局快捷键正常工作"},
        .onLinux = {u"✓ Available — global shortcuts working", u"✓ 可用 — 全局快捷键正常工作"}};
    static constexpr LSentence accessGrantedThrough{
        u"✓ Available, through %1 — global shortcuts working",
        u"✓ 可用（通过 %1）— 全局快捷键正常工作"};
    static constexpr LSystemText accessWithheld{
        .onMacos = {u"⚠️ Granted, but the system withholds keys now — shortcuts rest while a "
                    u"password "
                    u"field or another program has secure input on",
                    u"⚠️ 已授权，但系统目前不提供按键 — "
                    u"密码框或其他程序启用安全输入期间，快捷键暂停工作"},
        .onLinux = {u"⚠ Available, but shortcuts rest while GNOME's extension of KestrelBay is "
                    u"disabled",
                    u"⚠ 可用，但 KestrelBay 的 GNOME 扩展停用期间，快捷键暂停工作"}};
    /// Why hotkeys do not work, and what to do about it: one of the six below.
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
            u"⚠ Not available — this Wayland session gives programs no hotkeys; bind rules in its "
            u"own "
            u"settings (kestrelbay --action=run-rule), or log out and choose an X11 (Xorg) session",
            u"⚠ 不可用 — 当前 Wayland 会话不向程序提供快捷键，请在桌面设置中绑定规则"
            u"（kestrelbay --action=run-rule），或注销并选择 X11（Xorg）会话"}};
    static constexpr LSystemText accessNoDisplay{
        .onMacos = accessNotPermitted.onMacos,
        .onLinux = {u"⚠ Not available — the display server cannot be reached; start KestrelBay "
                    u"within a graphical session",
                    u"⚠ 不可用 — 无法连接显示服务器，请在图形会话中启动 KestrelBay"}};
    static constexpr LSystemText accessNoInputExtension{
        .onMacos = accessNotPermitted.onMacos,
        .onLinux = {u"⚠ Not available — the X server lacks XInput 2.1 or XKB, which global "
                    u"shortcuts need",
                    u"⚠ 不可用 — X 服务器缺少全局快捷键所需的 XInput 2.1 或 XKB"}};
    /// The one of a missing extension, by how far its installation is.
    [[nodiscard]] static QString extensionText(ExtensionState state);
    static constexpr LText extensionMissing{
        u"⚠ Not available — GNOME gives shortcuts to its extensions only; KestrelBay's may bind "
        u"them, see windows and their titles, bring them forward and minimise them",
        u"⚠ 不可用 — GNOME 只向其扩展提供快捷键；KestrelBay "
        u"的扩展可以绑定快捷键、查看窗口及其标题、将窗口置于前台或最小化"};
    static constexpr LText extensionAfterLogin{
        u"✓ Installed — log out and in again, then GNOME starts the extension and shortcuts work",
        u"✓ 已安装 — 请注销并重新登录，GNOME 将启动扩展，快捷键随即可用"};
    static constexpr LText extensionEnabled{u"✓ Enabled — waiting for GNOME to start it",
                                            u"✓ 已启用 — 正在等待 GNOME 启动扩展"};
    static constexpr LText extensionRenewed{
        u"Its GNOME extension has been updated — log out and in again to use the new one",
        u"其 GNOME 扩展已更新，注销并重新登录后生效"};
    // Where hotkeys come without it.
    static constexpr LText extensionForWindows{
        u"GNOME shows windows to its extensions only; KestrelBay's may see them and their titles, "
        u"bring them forward and minimise them",
        u"GNOME 只向其扩展显示窗口；KestrelBay 的扩展可以查看窗口及其标题、将窗口置于前台或最小化"};
    static constexpr LText extensionFailed{
        u"⚠ The extension could not be installed for this version of GNOME",
        u"⚠ 无法为当前版本的 GNOME 安装扩展"};
    static constexpr LText extensionInstall{u"Install Extension", u"安装扩展"};
    static constexpr LSystemText accessOtherInstance{
        .onMacos = accessNotPermitted.onMacos,
        .onLinux = {
            u"⚠ Not available — another KestrelBay has the keyboard; quit it and check again",
            u"⚠ 不可用 — 另一个 KestrelBay 正在使用键盘，请退出它后重新检查"}};
    static constexpr LSystemText accessOpenSettings{
        .onMacos = {u"Open System Settings...", u"打开系统设置..."},
        .onLinux = {u"Check Again", u"重新检查"}};
    static constexpr LText restartTitle{u"Restart KestrelBay", u"需要重启 KestrelBay"};
    static constexpr LText restartText{
        u"Accessibility permission changed. KestrelBay needs to restart to take effect.",
        u"辅助功能权限已更改，需要重启 KestrelBay 才能生效。"};
    static constexpr LText restartNow{u"Restart Now", u"立即重启"};
    static constexpr LText restartLater{u"Later", u"稍后"};
};

}  // namespace kestrelbay
