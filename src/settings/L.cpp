#include "settings/L.h"

#include <algorithm>
#include <array>

#include "platform/DesktopExtension.h"
#include "platform/EventTap.h"
#include "settings/Language.h"

namespace kestrelbay {

namespace {

struct SpokenKey {
    QStringView printed;
    LText word;
};

constexpr auto kSpokenKeys = std::to_array<SpokenKey>({
    {u"⌃", {u"Control", u"Control"}},
    {u"⇧", {u"Shift", u"Shift"}},
    {u"⇥", {u"Tab", u"Tab"}},
    {u"⌫", {u"Backspace", u"退格"}},
    {u"⎋", {u"Escape", u"Escape"}},
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
    // Of layouts other than the US one.
    {u"^", {u"Circumflex", u"脱字符"}},
    {u"´", {u"Acute Accent", u"尖音符"}},
    {u"¨", {u"Diaeresis", u"分音符"}},
    {u"~", {u"Tilde", u"波浪号"}},
    {u"ˇ", {u"Caron", u"抑扬符"}},
    {u"°", {u"Degree", u"度"}},
    {u"§", {u"Section", u"分节号"}},
    {u"!", {u"Exclamation Mark", u"感叹号"}},
    {u"\"", {u"Double Quote", u"双引号"}},
    {u"#", {u"Number Sign", u"井号"}},
    {u"$", {u"Dollar", u"美元符"}},
    {u"&", {u"Ampersand", u"和号"}},
    {u"(", {u"Left Parenthesis", u"左圆括号"}},
    {u")", {u"Right Parenthesis", u"右圆括号"}},
    {u"<", {u"Less Than", u"小于号"}},
    {u"_", {u"Underscore", u"下划线"}},
});

struct SystemKey {
    QStringView printed;
    LSystemText word;
};

/// Those that keyboards of the systems have different words on.
constexpr auto kSystemKeys = std::to_array<SystemKey>({
    {u"⌥", {.onMacos = {u"Option", u"Option"}, .onLinux = {u"Alt", u"Alt"}}},
    {u"⌘", {.onMacos = {u"Command", u"Command"}, .onLinux = {u"Super", u"Super"}}},
    {u"⌦", {.onMacos = {u"Forward Delete", u"向前删除"}, .onLinux = {u"Delete", u"Delete"}}},
    {u"⌧", {.onMacos = {u"Clear", u"清除"}, .onLinux = {u"Num Lock", u"Num Lock"}}},
    {u"Help", {.onMacos = {u"Help", u"Help"}, .onLinux = {u"Insert", u"Insert"}}},
});

}  // namespace

QString LText::operator()() const {
    return in(Language::current());
}

QString LText::in(Language language) const {
    return (language == Language::en ? english : chinese).toString();
}

QString LSentence::operator()(const QString &name) const {
    return in(Language::current(), name);
}

QString LSentence::in(Language language, const QString &name) const {
    return LText{english, chinese}.in(language).arg(name);
}

QString LSystemText::operator()() const {
#ifdef Q_OS_MACOS
    return onMacos();
#else
    return onLinux();
#endif
}

QString LTrayText::operator()(bool hasTray) const {
    return hasTray ? withTray() : withoutTray();
}

QString L::spokenKey(const QString &printed) {
    const auto *const known =
        std::ranges::find(kSystemKeys, QStringView(printed), &SystemKey::printed);
    if (known != kSystemKeys.end())
        return known->word();
    const auto *const found =
        std::ranges::find(kSpokenKeys, QStringView(printed), &SpokenKey::printed);
    return found == kSpokenKeys.end() ? printed : found->word();
}

QString L::extensionText(ExtensionState state) {
    switch (state) {
        case ExtensionState::Missing:
            return extensionMissing();
        case ExtensionState::AfterLogin:
            return extensionAfterLogin();
        case ExtensionState::Renewed:
            return extensionRenewed();
        case ExtensionState::Enabled:
            return extensionEnabled();
        case ExtensionState::Failed:
            return extensionFailed();
    }
    return {};
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
        case TapProblem::ExtensionMissing:
            return extensionMissing();
        case TapProblem::OtherInstance:
            return accessOtherInstance();
    }
    return accessNotPermitted();
}

}  // namespace kestrelbay
