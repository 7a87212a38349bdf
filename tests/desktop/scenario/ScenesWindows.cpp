#include "desktop/scenario/Scenes.h"

#include <algorithm>

namespace kestrelbay::desktop {

namespace {

using Window = StageBase::Window;

/// Presses the hotkey of a rule that cycles through these windows, the one used last first;
/// `order` says which of them comes forward each time.
void cycles(StageBase &stage, const Chord &hotkey, const char *windowClass,
            const std::vector<Window> &windows, const std::vector<std::size_t> &order) {
    const auto letter = [](std::size_t index) {
        return QString(QChar(u'A' + static_cast<int>(index)));
    };
    const auto letters = [&](const std::vector<Window> &some) {
        QStringList names;
        for (const Window window : some) {
            const auto at = std::ranges::find(windows, window) - windows.begin();
            names += letter(static_cast<std::size_t>(at));
        }
        return names.join(QStringLiteral(", "));
    };
    for (const std::size_t next : order) {
        stage.press(hotkey, {.expected = QStringLiteral("%1 comes forward").arg(letter(next)),
                             .seen = [&] { return stage.view().isInFront(windows.at(next)); },
                             .saw =
                                 [&] {
                                     return QStringLiteral("front to back %1")
                                         .arg(letters(stage.windowsOf(windowClass)));
                                 }});
    }
}

/// Opens windows until there are so many; each comes to the front before the next. They are
/// returned in the order of their use, the latest first.
std::vector<Window> prepareWindows(StageBase &stage, const char *windowClass, std::size_t count,
                                   const std::function<void(std::size_t)> &open) {
    std::vector<Window> windows = stage.windowsOf(windowClass);
    stage.bringForward(windows.at(0));
    while (windows.size() < count) {
        stage.prepare(
            QStringLiteral("one more window of ") + QLatin1String(windowClass),
            [&] { open(windows.size()); },
            [&] {
                const Window active = stage.view().active();
                return stage.isInFront(windowClass) &&
                       std::ranges::find(windows, active) == windows.end() &&
                       stage.view().hasFocus(active);
            });
        windows.insert(windows.begin(), stage.view().active());
    }
    return windows;
}

}  // namespace

void sceneHideAndShow(StageBase &stage) {
    const Chord hotkey = leftCommand(scenario::kEditorToggle);
    const auto shown = [&] { return stage.isInFront(stage.cast().editor.window); };
    const auto saw = [&] {
        const auto windows = stage.windowsOf(stage.cast().editor.window);
        const auto hidden =
            std::ranges::count_if(windows, [&](Window w) { return !stage.view().isShown(w); });
        return QStringLiteral("%1 of %2 editor windows hidden, %3")
            .arg(hidden)
            .arg(windows.size())
            .arg(stage.frontInWords());
    };
    const auto hidden = [&] {
        return stage.areHidden(stage.windowsOf(stage.cast().editor.window));
    };
    stage.bringFrontProgram();
    stage.press(hotkey, {.expected = QStringLiteral("not running: the editor is launched"),
                         .seen = shown,
                         .saw = saw});
    stage.press(hotkey, {.expected = QStringLiteral("in front: ") + stage.hidingInWords(),
                         .seen = hidden,
                         .saw = saw});
    stage.press(hotkey,
                {.expected = QStringLiteral("hidden: it shows again"), .seen = shown, .saw = saw});

    (void)prepareWindows(stage, stage.cast().editor.window, 2, [&](std::size_t) {
        stage.desktop().start(QLatin1String(stage.cast().editor.program),
                              {QStringLiteral("-o"), QStringLiteral("window")});
    });
    stage.press(
        hotkey,
        {.expected = QStringLiteral("the same with two windows"), .seen = hidden, .saw = saw});
    stage.press(hotkey, {.expected = QStringLiteral("both are back"),
                         .seen =
                             [&] {
                                 const auto windows = stage.windowsOf(stage.cast().editor.window);
                                 return shown() && std::ranges::all_of(windows, [&](Window w) {
                                            return stage.view().isShown(w);
                                        });
                             },
                         .saw = saw});
}

void sceneCycle(StageBase &stage) {
    // One process with three windows.
    const auto note = [&](std::size_t number) {
        return stage.desktop().home().path(QStringLiteral("notes/%1.txt").arg(number));
    };
    const auto editors =
        prepareWindows(stage, stage.cast().editor.window, 3, [&](std::size_t have) {
            stage.desktop().write(note(have), "Another note.\n");
            stage.desktop().start(QLatin1String(stage.cast().editor.program),
                                  {QStringLiteral("-o"), QStringLiteral("window"), note(have)});
        });
    stage.screenshot(QStringLiteral("three-windows"));
    cycles(stage, leftCommand(scenario::kEditorCycle), stage.cast().editor.window, editors,
           {2, 1, 0, 2});

    // Three processes with a window each.
    const Window first = stage.windowOf(stage.cast().terminal.window);
    const auto terminals = prepareWindows(stage, stage.cast().terminal.window, 3, [&](std::size_t) {
        stage.desktop().start(QLatin1String(stage.cast().terminal.program));
    });
    cycles(stage, leftCommand(scenario::kTerminalCycle), stage.cast().terminal.window, terminals,
           {2, 1, 0, 2});
    stage.closeAll(stage.cast().terminal.window, {first});

    stage.bringFrontProgram();
    stage.press(leftCommand(scenario::kTerminalCycle),
                {.expected = QStringLiteral("not in front: it comes forward"),
                 .seen = [&] { return stage.view().isInFront(first); },
                 .saw = [&] { return stage.frontInWords(); }});
}

}  // namespace kestrelbay::desktop
