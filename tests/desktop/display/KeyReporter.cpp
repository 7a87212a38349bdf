#include "desktop/display/KeyReporter.h"

#include <algorithm>

#include "support/KeyPresser.h"
#include "support/Poll.h"

namespace kestrelbay::desktop {

namespace {

PtyProcess startIn(Session &session) {
    const Command command = session.command(QLatin1String(KeyReporter::kApplication),
                                            {QStringLiteral("-f"), QStringLiteral("wl_keyboard")});
    return {command.program, command.arguments, session.environment()};
}

QString linesOf(std::uint8_t keycode, bool pressed) {
    return QStringLiteral("key: %1; state: %2 ").arg(keycode).arg(pressed ? 1 : 0);
}

}  // namespace

KeyReporter::KeyReporter(Session &session, WindowsView &view, Keyboard &keyboard)
    : view_(view), keyboard_(keyboard), process_(startIn(session)) {}

WindowsView::Window KeyReporter::id() {
    const auto windows = view_.windowsOf(QLatin1String(kApplication));
    return windows.empty() ? WindowsView::Window{0} : windows.front();
}

qsizetype KeyReporter::count(const QString &words) {
    const QStringList lines = process_.lines().mid(forgotten_);
    return std::ranges::count_if(lines, [&](const QString &line) { return line.contains(words); });
}

void KeyReporter::catchUp() {
    if (!view_.hasFocus(id()))
        return;
    // A key that does nothing by itself, behind all others.
    const QString last = linesOf(testing::xkey::kLeftShift, false);
    const qsizetype before = count(last);
    keyboard_.press(testing::xkey::kLeftShift);
    keyboard_.release(testing::xkey::kLeftShift);
    (void)testing::waitUntil([&] { return count(last) > before; });
}

int KeyReporter::pressesOf(std::uint8_t keycode) {
    catchUp();
    return static_cast<int>(count(linesOf(keycode, true)));
}

void KeyReporter::forget() {
    catchUp();
    forgotten_ = process_.lines().size();
}

}  // namespace kestrelbay::desktop
