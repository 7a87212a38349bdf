#include "settings/LSystemTexts.h"

#include "platform/EventTap.h"

namespace kestrelbay {

const LSystemTexts &macosTexts() {
    // There is only one thing that can be missing.
    static constexpr LText kNotGranted{
        u"⚠️ Not granted — go to System Settings › Privacy & Security › Accessibility to "
        u"allow "
        u"KestrelBay",
        u"⚠️ 未授权 — 请前往系统设置 › 隐私与安全性 › "
        u"辅助功能，允许 "
        u"KestrelBay",
    };
    static constexpr LSystemTexts kTexts{
        .recorderNoAccess =
            {
                u"Accessibility permission required to record hotkeys",
                u"需要辅助功能权限才能录入快捷键",
            },
        .recorderGrantAccess = {u"Grant Access", u"前往授权"},
        .welcomeTip =
            {
                u"TIP: If you cannot find the app's icon, you may use Command + mouse drag to "
                u"rearrange the order, because there are too many icons that may be hidden.",
                u"提示：如果找不到应用图标，可以按住 Command "
                u"键拖拽图标来调整顺序，因为可能有过多图标被隐藏。",
            },
        .permissionTitle = {u"Accessibility Permission Required", u"需要辅助功能权限"},
        .permissionBody =
            {
                u"KestrelBay uses accessibility to listen for global hotkeys.\n"
                u"We only respond to hotkeys you configure — no other keystrokes are recorded.",
                u"KestrelBay 通过辅助功能权限监听全局快捷键。\n"
                u"我们只响应你配置的快捷键，不记录任何其他键盘输入。",
            },
        .permissionOpenSettings = {u"Open System Settings", u"前往系统设置"},
        .permissionWaiting = {u"Waiting for permission...", u"等待授权..."},
        .doneBody =
            {
                u"KestrelBay is ready in the menu bar\nAdd your first shortcut now",
                u"KestrelBay 已在菜单栏就绪\n现在来添加你的第一个快捷键配置吧",
            },
        .doneWithoutPermissionBody =
            {
                u"KestrelBay is ready in the menu bar\n"
                u"Click ⚡ in the menu bar to open settings\n"
                u"(Tip: remember to grant Accessibility permission in Advanced settings)",
                u"KestrelBay 已在菜单栏就绪\n"
                u"点击 ⚡ 图标可随时打开设置\n"
                u"（提示：记得前往高级设置完成辅助功能授权）",
            },
        .argumentFilePathHint = {u"/Users/me/project", u"/Users/me/project"},
        .launchAtLoginText =
            {
                u"Automatically run KestrelBay after login",
                u"macOS 登录后自动在后台运行 KestrelBay",
            },
        .configFolderShow = {u"Show in Finder", u"在 Finder 中显示"},
        .accessTitle = {u"Accessibility Permission", u"辅助功能权限"},
        .accessGranted =
            {
                u"✅ Granted — global shortcuts working",
                u"✅ 已授权 — 全局快捷键正常工作",
            },
        .accessOpenSettings = {u"Open System Settings...", u"打开系统设置..."},
        .accessNotPermitted = kNotGranted,
        .accessWaylandSession = kNotGranted,
        .accessNoDisplay = kNotGranted,
        .accessNoInputExtension = kNotGranted,
        .accessOtherInstance = kNotGranted,
    };
    return kTexts;
}

const LSystemTexts &linuxTexts() {
    static constexpr LSystemTexts kTexts{
        .recorderNoAccess =
            {
                u"No access to the keyboard: hotkeys cannot be recorded now",
                u"目前无法访问键盘，不能录入快捷键",
            },
        .recorderGrantAccess = {u"See Why", u"查看原因"},
        .welcomeTip =
            {
                u"TIP: If you cannot find the app's icon, look among the hidden icons of your "
                u"tray. Without a tray, start KestrelBay again to open its preferences.",
                u"提示：如果找不到应用图标，请查看系统托盘中被隐藏的图标。没有系统托盘时，再次启动 "
                u"KestrelBay 即可打开偏好设置。",
            },
        .permissionTitle = {u"Keyboard Access Required", u"需要键盘访问权限"},
        .permissionBody =
            {
                u"To listen for global hotkeys, KestrelBay needs an X11 session (not Wayland) with "
                u"XInput 2.1, and no other KestrelBay running in it.\n"
                u"We only respond to hotkeys you configure — no other keystrokes are recorded.",
                u"KestrelBay 监听全局快捷键需要支持 XInput 2.1 的 X11 会话（而非 "
                u"Wayland），且该会话中没有另一个 KestrelBay 正在运行。\n"
                u"我们只响应你配置的快捷键，不记录任何其他键盘输入。",
            },
        .permissionOpenSettings = {u"Check Access", u"检查权限"},
        .permissionWaiting = {u"Waiting for keyboard access...", u"等待键盘访问权限..."},
        .doneBody =
            {
                u"KestrelBay is ready in the tray\nAdd your first shortcut now",
                u"KestrelBay 已在系统托盘就绪\n现在来添加你的第一个快捷键配置吧",
            },
        .doneWithoutPermissionBody =
            {
                u"KestrelBay is ready in the tray\n"
                u"Click ⚡ in the tray to open settings\n"
                u"(Tip: Advanced settings say why hotkeys do not work yet)",
                u"KestrelBay 已在系统托盘就绪\n"
                u"点击 ⚡ 图标可随时打开设置\n"
                u"（提示：高级设置中说明了快捷键尚不可用的原因）",
            },
        .argumentFilePathHint = {u"/home/me/project", u"/home/me/project"},
        .launchAtLoginText =
            {
                u"Automatically run KestrelBay after login",
                u"登录后自动在后台运行 KestrelBay",
            },
        .configFolderShow = {u"Show in File Manager", u"在文件管理器中显示"},
        .accessTitle = {u"Keyboard Access", u"键盘访问权限"},
        .accessGranted =
            {
                u"✓ Available — global shortcuts working",
                u"✓ 可用 — 全局快捷键正常工作",
            },
        .accessOpenSettings = {u"Check Again", u"重新检查"},
        .accessNotPermitted =
            {
                u"⚠ Not available — KestrelBay is not allowed to see the keyboard",
                u"⚠ 不可用 — KestrelBay 无法访问键盘",
            },
        .accessWaylandSession =
            {
                u"⚠ Not available — this is a Wayland session; log out and choose an X11 "
                u"(Xorg) "
                u"session to use KestrelBay",
                u"⚠ 不可用 — 当前为 Wayland 会话，请注销并选择 "
                u"X11（Xorg）会话以使用 "
                u"KestrelBay",
            },
        .accessNoDisplay =
            {
                u"⚠ Not available — no X server can be reached; start KestrelBay within an "
                u"X11 "
                u"session",
                u"⚠ 不可用 — 无法连接 X 服务器，请在 X11 会话中启动 "
                u"KestrelBay",
            },
        .accessNoInputExtension =
            {
                u"⚠ Not available — the X server lacks XInput 2.1 or XKB, which global "
                u"shortcuts "
                u"need",
                u"⚠ 不可用 — X 服务器缺少全局快捷键所需的 XInput 2.1 或 "
                u"XKB",
            },
        .accessOtherInstance =
            {
                u"⚠ Not available — another KestrelBay has the keyboard; quit it and check "
                u"again",
                u"⚠ 不可用 — 另一个 KestrelBay "
                u"正在使用键盘，请退出它后重新检查",
            },
    };
    return kTexts;
}

const LText &accessMissing(const LSystemTexts &texts, TapProblem problem) {
    switch (problem) {
        case TapProblem::None:
        case TapProblem::NotPermitted:
            break;
        case TapProblem::WaylandSession:
            return texts.accessWaylandSession;
        case TapProblem::NoDisplay:
            return texts.accessNoDisplay;
        case TapProblem::NoInputExtension:
            return texts.accessNoInputExtension;
        case TapProblem::OtherInstance:
            return texts.accessOtherInstance;
    }
    return texts.accessNotPermitted;
}

}  // namespace kestrelbay
