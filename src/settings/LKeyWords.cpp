#include "settings/L.h"

#include <algorithm>
#include <array>

namespace kestrelbay {

namespace {

struct SpokenKey {
    QStringView printed;
    LText word;
};

constexpr auto kSpokenKeys = std::to_array<SpokenKey>({
    {u"⌃", {u"Control", u"Control"}},
    {u"⌥", {u"Option", u"Option"}},
    {u"⇧", {u"Shift", u"Shift"}},
    {u"⌘", {u"Command", u"Command"}},
    {u"⇥", {u"Tab", u"Tab"}},
    {u"⌫", {u"Backspace", u"退格"}},
    {u"⌦", {u"Forward Delete", u"向前删除"}},
    {u"⎋", {u"Escape", u"Escape"}},
    {u"⌧", {u"Clear", u"清除"}},
    {u"↩", {u"Enter", u"回车"}},
    {u"Key(36)", {u"Return", u"回车"}},
    {u"Space", {u"Space", u"空格"}},
    {u"↖", {u"Home", u"Home"}},
    {u"↘", {u"End", u"End"}},
    {u"⇞", {u"Page Up", u"上一页"}},
    {u"⇟", {u"Page Down", u"下一页"}},
    {u"←", {u"Left Arrow", u"左箭头"}},
    {u"→", {u"Right Arrow", u"右箭头"}},
    {u"↓", {u"Down Arrow", u"下箭头"}},
    {u"↑", {u"Up Arrow", u"上箭头"}},
    {u"=", {u"Equals", u"等号"}},
    {u"-", {u"Minus", u"减号"}},
    {u"+", {u"Plus", u"加号"}},
    {u"*", {u"Asterisk", u"星号"}},
    {u"[", {u"Left Bracket", u"左方括号"}},
    {u"]", {u"Right Bracket", u"右方括号"}},
    {u"'", {u"Quote", u"引号"}},
    {u";", {u"Semicolon", u"分号"}},
    {u"\\", {u"Backslash", u"反斜杠"}},
    {u",", {u"Comma", u"逗号"}},
    {u"/", {u"Slash", u"斜杠"}},
    {u".", {u"Period", u"句点"}},
    {u"`", {u"Grave Accent", u"反引号"}},
});

}  // namespace

QString L::recorderRecording() {
    return resolved(u"recording", u"正在录入");
}

QString L::clearHotkeyOf(const QString &appName) {
    return resolved(u"Clear hotkey of ", u"清除快捷键：") + appName;
}

QString L::hotkeyOf(const QString &appName) {
    return resolved(u"Hotkey of ", u"快捷键：") + appName;
}

QString L::noHotkey() {
    return resolved(u"none", u"无");
}

QString L::spokenKey(const QString &printed) {
    const auto *const found =
        std::ranges::find(kSpokenKeys, QStringView(printed), &SpokenKey::printed);
    return found == kSpokenKeys.end() ? printed : found->word();
}

QString L::leftKey(const QString &name) {
    return resolved(u"left ", u"左 ") + name;
}

QString L::rightKey(const QString &name) {
    return resolved(u"right ", u"右 ") + name;
}

QString L::keypadKey(const QString &name) {
    return resolved(u"keypad ", u"小键盘 ") + name;
}

QString L::keySeparator() {
    return resolved(u", ", u"，");
}

}  // namespace kestrelbay
