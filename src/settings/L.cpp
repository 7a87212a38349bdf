#include "settings/L.h"

#include <algorithm>
#include <array>

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

QString L::spokenKey(const QString &printed) {
    const auto *const found =
        std::ranges::find(kSpokenKeys, QStringView(printed), &SpokenKey::printed);
    return found == kSpokenKeys.end() ? printed : found->word();
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
