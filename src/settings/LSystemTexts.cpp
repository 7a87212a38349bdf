#include "settings/LSystemTexts.h"

namespace kestrelbay {

const LSystemTexts &macosTexts() {
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
    };
    return kTexts;
}

}  // namespace kestrelbay
