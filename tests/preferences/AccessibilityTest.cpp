#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

#include <QApplication>

#include "fixtures/AccessibleTree.h"
#include "fixtures/ServicesFixture.h"
#include "preferences/advanced/Restart.h"
#include "preferences/options/RuleAdvancedPanel.h"
#include "preferences/picker/AppPickerPanel.h"
#include "preferences/rules/RuleRowView.h"
#include "preferences/window/PreferencesWindowController.h"
#include "preferences/window/TabBarView.h"
#include "ui/windows/Sheet.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

constexpr KeyCode kK{40};
constexpr ModifierFlags kLeftCommand{0x100008};

class Accessibility : public ServicesFixture {
protected:
    void addRules() {
        manager().addRule({.appName = u"Mail"_s,
                           .appPath = u"/mail"_s,
                           .keyCode = kK,
                           .modifierFlags = kLeftCommand});
        manager().addRule({.appName = u"Files"_s,
                           .appPath = u"/files"_s,
                           .isEnabled = false,
                           .launchArguments = u"--new-window"_s,
                           .argumentKind = ArgumentKind::LaunchArgs});
        manager().addRule({});
    }
    QWidget &window() {
        if (!controller_)
            controller_ = std::make_unique<PreferencesWindowController>(services());
        controller_->showWindow();
        QApplication::processEvents();
        return *controller_->window();
    }
    QWidget &advancedTab() {
        window().findChild<TabBarView *>()->clicked({240, 16});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return window();
    }
    QWidget &picker() {
        std::vector<InstalledApplication> applications;
        for (const QString &name : {u"Maps"_s, u"Notes"_s})
            applications.push_back({.name = name, .fileName = name, .path = name});
        catalog_.setInstalledApplications(std::move(applications));
        auto *const sheet = new AppPickerPanel(services(), {}, &window());
        sheet->open();
        backgroundQueue_.runAll();
        mainQueue_.runAll();
        return *sheet;
    }
    QWidget &advancedSheet(const ShortcutRule &rule) {
        auto *const sheet = new RuleAdvancedPanel(services(), rule, {}, &window());
        sheet->open();
        return *sheet;
    }

    static void expectTree(QWidget &view, const QStringList &expected) {
        EXPECT_EQ(accessibleTree(view), expected);
        EXPECT_EQ(namelessControls(view), QStringList());
    }

private:
    std::unique_ptr<PreferencesWindowController> controller_;
};

TEST_F(Accessibility, Rules) {
    tap_.setHeldByOthers({{kK, kLeftCommand}});
    addRules();
    expectTree(window(), {u"Window: KestrelBay Preferences"_s,
                          u"PageTab: Shortcut Rules (selected, focusable)"_s,
                          u"PageTab: Advanced"_s,
                          u"List: Shortcut Rules (focusable)"_s,
                          u"ListItem: Mail, left Super, K (focusable)"_s,
                          u"StaticText: Mail"_s,
                          u"StaticText: /mail"_s,
                          u"Graphic: Another program is using this hotkey"_s,
                          u"Button: Hotkey of Mail, left Super, K (focusable)"_s,
                          u"StaticText: left Super, K"_s,
                          u"Button: Clear hotkey of Mail"_s,
                          u"CheckBox: Enable Mail (checked, focusable)"_s,
                          u"Button: Advanced Options: Mail (focusable)"_s,
                          u"Button: Delete Mail (focusable)"_s,
                          u"Graphic: Drag to reorder"_s,
                          u"ListItem: Files, none (focusable)"_s,
                          u"StaticText: Files"_s,
                          u"StaticText: --new-window"_s,
                          u"StaticText: /files"_s,
                          u"Button: Hotkey of Files, none (focusable)"_s,
                          u"StaticText: none"_s,
                          u"CheckBox: Enable Files (focusable)"_s,
                          u"Button: Advanced Options: Files (focusable)"_s,
                          u"Button: Delete Files (focusable)"_s,
                          u"Graphic: Drag to reorder"_s,
                          u"ListItem: No app selected, none (focusable)"_s,
                          u"StaticText: No app selected"_s,
                          u"Button: Hotkey of No app selected, none (focusable)"_s,
                          u"StaticText: none"_s,
                          u"CheckBox: Enable No app selected (checked, focusable)"_s,
                          u"Button: Advanced Options: No app selected (focusable)"_s,
                          u"Button: Delete No app selected (focusable)"_s,
                          u"Graphic: Drag to reorder"_s,
                          u"Button: Add (focusable)"_s,
                          u"StaticText: 3 configured"_s});
}

TEST_F(Accessibility, AdvancedTabWithAccess) {
    expectTree(advancedTab(), {u"Window: KestrelBay Preferences"_s,
                               u"PageTab: Shortcut Rules"_s,
                               u"PageTab: Advanced (selected, focusable)"_s,
                               u"StaticText: Launch at Login"_s,
                               u"StaticText: Automatically run KestrelBay after login"_s,
                               u"CheckBox: Launch at Login (focusable)"_s,
                               u"StaticText: Language"_s,
                               u"StaticText: Interface language for KestrelBay"_s,
                               u"ComboBox: English (focusable, of Language)"_s,
                               u"StaticText: Sound on Shortcut Trigger"_s,
                               u"StaticText: Play a sound each time a shortcut fires"_s,
                               u"ComboBox: No Sound (focusable, of Sound on Shortcut Trigger)"_s,
                               u"StaticText: Launch Icon Toast"_s,
                               u"StaticText: Show app icon popup when a shortcut fires"_s,
                               u"ComboBox: Off (focusable, of Launch Icon Toast)"_s,
                               u"StaticText: Config File Location"_s,
                               u"StaticText: "_s + storageDirectory(),
                               u"Button: Config File Location (focusable)"_s,
                               u"StaticText: Keyboard Access"_s,
                               u"StaticText: ✓ Available — global shortcuts working"_s});
}

TEST_F(Accessibility, AdvancedTabWithoutAccess) {
    tap_.setPermission(false);
    expectTree(advancedTab(),
               {u"Window: KestrelBay Preferences"_s,
                u"PageTab: Shortcut Rules"_s,
                u"PageTab: Advanced (selected, focusable)"_s,
                u"StaticText: Launch at Login"_s,
                u"StaticText: Automatically run KestrelBay after login"_s,
                u"CheckBox: Launch at Login (focusable)"_s,
                u"StaticText: Language"_s,
                u"StaticText: Interface language for KestrelBay"_s,
                u"ComboBox: English (focusable, of Language)"_s,
                u"StaticText: Sound on Shortcut Trigger"_s,
                u"StaticText: Play a sound each time a shortcut fires"_s,
                u"ComboBox: No Sound (focusable, of Sound on Shortcut Trigger)"_s,
                u"StaticText: Launch Icon Toast"_s,
                u"StaticText: Show app icon popup when a shortcut fires"_s,
                u"ComboBox: Off (focusable, of Launch Icon Toast)"_s,
                u"StaticText: Config File Location"_s,
                u"StaticText: "_s + storageDirectory(),
                u"Button: Config File Location (focusable)"_s,
                u"StaticText: Keyboard Access"_s,
                u"StaticText: ⚠ Not available — KestrelBay is not allowed to see the keyboard"_s,
                u"Button: Keyboard Access (focusable)"_s});
}

TEST_F(Accessibility, Picker) {
    expectTree(picker(), {u"Dialog: Select App"_s, u"StaticText: Select App"_s,
                          u"EditableText: Search apps... (focusable)"_s,
                          u"List: Select App (focusable)"_s, u"ListItem: Maps (focusable)"_s,
                          u"ListItem: Notes (focusable)"_s, u"Button: Browse... (focusable)"_s,
                          u"Button: Cancel (focusable)"_s, u"Button: Select (focusable)"_s});
}

TEST_F(Accessibility, AdvancedSheet) {
    addRules();
    expectTree(
        advancedSheet(manager().rules()[1]),
        {u"Dialog: Advanced · Files"_s, u"StaticText: Advanced · Files"_s,
         u"StaticText: When shortcut is pressed repeatedly"_s,
         u"Grouping: When shortcut is pressed repeatedly"_s,
         u"RadioButton: Keep app open (checked, focusable)"_s,
         u"StaticText: No extra effect when app is already in front (default)"_s,
         u"RadioButton: Toggle show/hide (focusable)"_s,
         u"StaticText: Press again to hide the app when already in front"_s,
         u"RadioButton: Cycle through windows (focusable)"_s,
         u"StaticText: Cycle through multiple windows of the same app"_s,
         u"StaticText: Launch Args / URL Scheme / File Path"_s,
         u"StaticText: Pick a type, then enter the value on the right"_s,
         u"ComboBox: Launch arguments (focusable, of Launch Args / URL Scheme / File Path)"_s,
         u"EditableText: Value (focusable)"_s,
         u"Button: Learn more about Deep Launch (focusable)"_s, u"Button: Cancel (focusable)"_s,
         u"Button: Save (focusable)"_s});
}

TEST_F(Accessibility, DeleteConfirmation) {
    expectTree(*openDeleteConfirmation(&window(), u"Mail"_s, [] {}),
               {u"Dialog: Delete Shortcut"_s, u"StaticText: Delete Shortcut"_s,
                u"StaticText: Are you sure you want to delete the shortcut for \"Mail\"?"_s,
                u"Button: Cancel (focusable)"_s, u"Button: Delete (focusable)"_s});
}

TEST_F(Accessibility, RestartSheet) {
    expectTree(
        *openRestartSheet(&window(), [] {}),
        {u"Dialog: Restart KestrelBay"_s, u"StaticText: Restart KestrelBay"_s,
         u"StaticText: Accessibility permission changed. KestrelBay needs to restart to take effect."_s,
         u"Button: Later (focusable)"_s, u"Button: Restart Now (focusable)"_s});
}

TEST_F(Accessibility, RulesInChinese) {
    tap_.setHeldByOthers({{kK, kLeftCommand}});
    choose(Language::zh);
    addRules();
    expectTree(window(), {u"Window: KestrelBay 偏好设置"_s,
                          u"PageTab: 快捷键规则 (selected, focusable)"_s,
                          u"PageTab: 高级设置"_s,
                          u"List: 快捷键规则 (focusable)"_s,
                          u"ListItem: Mail，左 Super，K (focusable)"_s,
                          u"StaticText: Mail"_s,
                          u"StaticText: /mail"_s,
                          u"Graphic: 此快捷键已被其他程序占用"_s,
                          u"Button: 快捷键：Mail，左 Super，K (focusable)"_s,
                          u"StaticText: 左 Super，K"_s,
                          u"Button: 清除快捷键：Mail"_s,
                          u"CheckBox: 启用 Mail (checked, focusable)"_s,
                          u"Button: 高级选项：Mail (focusable)"_s,
                          u"Button: 删除 Mail (focusable)"_s,
                          u"Graphic: 拖拽以重新排序"_s,
                          u"ListItem: Files，无 (focusable)"_s,
                          u"StaticText: Files"_s,
                          u"StaticText: --new-window"_s,
                          u"StaticText: /files"_s,
                          u"Button: 快捷键：Files，无 (focusable)"_s,
                          u"StaticText: 无"_s,
                          u"CheckBox: 启用 Files (focusable)"_s,
                          u"Button: 高级选项：Files (focusable)"_s,
                          u"Button: 删除 Files (focusable)"_s,
                          u"Graphic: 拖拽以重新排序"_s,
                          u"ListItem: 未选择应用，无 (focusable)"_s,
                          u"StaticText: 未选择应用"_s,
                          u"Button: 快捷键：未选择应用，无 (focusable)"_s,
                          u"StaticText: 无"_s,
                          u"CheckBox: 启用 未选择应用 (checked, focusable)"_s,
                          u"Button: 高级选项：未选择应用 (focusable)"_s,
                          u"Button: 删除 未选择应用 (focusable)"_s,
                          u"Graphic: 拖拽以重新排序"_s,
                          u"Button: 添加 (focusable)"_s,
                          u"StaticText: 已配置 3 个"_s});
}

TEST_F(Accessibility, AdvancedTabWithAccessInChinese) {
    choose(Language::zh);
    expectTree(advancedTab(), {u"Window: KestrelBay 偏好设置"_s,
                               u"PageTab: 快捷键规则"_s,
                               u"PageTab: 高级设置 (selected, focusable)"_s,
                               u"StaticText: 登录时自动启动"_s,
                               u"StaticText: 登录后自动在后台运行 KestrelBay"_s,
                               u"CheckBox: 登录时自动启动 (focusable)"_s,
                               u"StaticText: 语言"_s,
                               u"StaticText: KestrelBay 界面语言"_s,
                               u"ComboBox: 中文 (focusable, of 语言)"_s,
                               u"StaticText: 快捷键触发时播放声音"_s,
                               u"StaticText: 每次触发快捷键时播放提示音"_s,
                               u"ComboBox: 无声音 (focusable, of 快捷键触发时播放声音)"_s,
                               u"StaticText: 启动图标弹窗"_s,
                               u"StaticText: 快捷键触发后显示应用图标弹窗提示"_s,
                               u"ComboBox: 不显示 (focusable, of 启动图标弹窗)"_s,
                               u"StaticText: 配置文件位置"_s,
                               u"StaticText: "_s + storageDirectory(),
                               u"Button: 配置文件位置 (focusable)"_s,
                               u"StaticText: 键盘访问权限"_s,
                               u"StaticText: ✓ 可用 — 全局快捷键正常工作"_s});
}

TEST_F(Accessibility, AdvancedTabWithoutAccessInChinese) {
    choose(Language::zh);
    tap_.setPermission(false);
    expectTree(advancedTab(), {u"Window: KestrelBay 偏好设置"_s,
                               u"PageTab: 快捷键规则"_s,
                               u"PageTab: 高级设置 (selected, focusable)"_s,
                               u"StaticText: 登录时自动启动"_s,
                               u"StaticText: 登录后自动在后台运行 KestrelBay"_s,
                               u"CheckBox: 登录时自动启动 (focusable)"_s,
                               u"StaticText: 语言"_s,
                               u"StaticText: KestrelBay 界面语言"_s,
                               u"ComboBox: 中文 (focusable, of 语言)"_s,
                               u"StaticText: 快捷键触发时播放声音"_s,
                               u"StaticText: 每次触发快捷键时播放提示音"_s,
                               u"ComboBox: 无声音 (focusable, of 快捷键触发时播放声音)"_s,
                               u"StaticText: 启动图标弹窗"_s,
                               u"StaticText: 快捷键触发后显示应用图标弹窗提示"_s,
                               u"ComboBox: 不显示 (focusable, of 启动图标弹窗)"_s,
                               u"StaticText: 配置文件位置"_s,
                               u"StaticText: "_s + storageDirectory(),
                               u"Button: 配置文件位置 (focusable)"_s,
                               u"StaticText: 键盘访问权限"_s,
                               u"StaticText: ⚠ 不可用 — KestrelBay 无法访问键盘"_s,
                               u"Button: 键盘访问权限 (focusable)"_s});
}

TEST_F(Accessibility, PickerInChinese) {
    choose(Language::zh);
    expectTree(picker(),
               {u"Dialog: 选择应用"_s, u"StaticText: 选择应用"_s,
                u"EditableText: 搜索应用... (focusable)"_s, u"List: 选择应用 (focusable)"_s,
                u"ListItem: Maps (focusable)"_s, u"ListItem: Notes (focusable)"_s,
                u"Button: 从文件系统选择... (focusable)"_s, u"Button: 取消 (focusable)"_s,
                u"Button: 选择 (focusable)"_s});
}

TEST_F(Accessibility, AdvancedSheetInChinese) {
    choose(Language::zh);
    addRules();
    expectTree(advancedSheet(manager().rules()[1]),
               {u"Dialog: 高级选项 · Files"_s, u"StaticText: 高级选项 · Files"_s,
                u"StaticText: 连续重复按下快捷键时"_s, u"Grouping: 连续重复按下快捷键时"_s,
                u"RadioButton: 保持应用打开 (checked, focusable)"_s,
                u"StaticText: 应用已在前台时，快捷键不产生额外效果（默认）"_s,
                u"RadioButton: 打开和隐藏窗口切换 (focusable)"_s,
                u"StaticText: 应用已在前台时再次按下，则隐藏该应用"_s,
                u"RadioButton: 同应用多窗口轮询 (focusable)"_s,
                u"StaticText: 应用已在前台且有多个窗口时，轮流切换窗口"_s,
                u"StaticText: 启动参数 / URL Scheme / 文件路径"_s,
                u"StaticText: 先选择类型，再在右侧输入对应内容"_s,
                u"ComboBox: 启动参数 (focusable, of 启动参数 / URL Scheme / 文件路径)"_s,
                u"EditableText: 内容 (focusable)"_s, u"Button: 进一步了解深度启动 (focusable)"_s,
                u"Button: 取消 (focusable)"_s, u"Button: 保存 (focusable)"_s});
}

TEST_F(Accessibility, DeleteConfirmationInChinese) {
    choose(Language::zh);
    expectTree(*openDeleteConfirmation(&window(), u"Mail"_s, [] {}),
               {u"Dialog: 删除快捷键"_s, u"StaticText: 删除快捷键"_s,
                u"StaticText: 确定要删除「Mail」的快捷键配置吗？"_s, u"Button: 取消 (focusable)"_s,
                u"Button: 删除 (focusable)"_s});
}

TEST_F(Accessibility, RestartSheetInChinese) {
    choose(Language::zh);
    expectTree(*openRestartSheet(&window(), [] {}),
               {u"Dialog: 需要重启 KestrelBay"_s, u"StaticText: 需要重启 KestrelBay"_s,
                u"StaticText: 辅助功能权限已更改，需要重启 KestrelBay 才能生效。"_s,
                u"Button: 稍后 (focusable)"_s, u"Button: 立即重启 (focusable)"_s});
}

TEST_F(Accessibility, AFieldWithoutUseIsDisabled) {
    addRules();
    EXPECT_TRUE(accessibleTree(advancedSheet(manager().rules()[0]))
                    .contains(u"EditableText: Value (disabled, focusable)"_s));
}

TEST_F(Accessibility, AnEmptyListIsNoPlaceForTheKeyboard) {
    expectTree(window(), {u"Window: KestrelBay Preferences"_s,
                          u"PageTab: Shortcut Rules (selected, focusable)"_s,
                          u"PageTab: Advanced"_s, u"List: Shortcut Rules"_s,
                          u"Button: Add (focusable)"_s, u"StaticText: 0 configured"_s,
                          u"StaticText: Click the \uff0b button to add your first shortcut"_s});
}

}  // namespace

}  // namespace kestrelbay
