#include <functional>
#include <optional>

#include "desktop/scenario/Scenes.h"
#include "support/Poll.h"

namespace kestrelbay::desktop {

using namespace std::chrono_literals;

void sceneSwayReloaded(SwayStage &stage) {
    const int before = stage.usersPresses();
    stage.story().step({
        .done = QStringLiteral("told sway to read its configuration again"),
        .expected = QStringLiteral("within a second KestrelBay has its hotkeys again"),
        .act = [&] { stage.desktop().ipc().command(QStringLiteral("reload")); },
        .seen = [&] { return stage.hasHotkeys(); },
        .saw =
            [&] {
                return stage.hasHotkeys() ? QStringLiteral("a hotkey") : QStringLiteral("none");
            },
        .timeout = 1s,
    });
    stage.press(
        leftCommand(SwayStage::kUsersKey),
        {.expected = QStringLiteral("and the user theirs"),
         .seen = [&] { return stage.usersPresses() == before + 1; },
         .saw = [&] { return QStringLiteral("%1 run").arg(stage.usersPresses() - before); }});
}

void sceneSwayHolder(SwayStage &stage) {
    const QString report = stage.startAgain({QStringLiteral("--diagnose")}).output;
    const QString holder =
        QStringLiteral("⌘T (Probably sway is using this hotkey; There it means: exec echo pressed");
    stage.story().step({
        .done = QStringLiteral("kestrelbay --diagnose"),
        .expected = u'“' + holder + u'”',
        .act = [] {},
        .seen = [&] { return report.contains(holder); },
        .saw =
            [&] {
                const qsizetype line = report.indexOf(u"Hotkeys held");
                return report.mid(line, report.indexOf(u'\n', line) - line);
            },
        .timeout = 0s,
    });
}

void sceneSwayFloats(SwayStage &stage) {
    stage.startProgram({QStringLiteral("--action=preferences")});
    const auto preferences = [&]() -> std::optional<SwayWindow> {
        for (const SwayWindow &window : stage.desktop().ipc().windows())
            if (window.processId == stage.program().processId())
                return window;
        return std::nullopt;
    };
    stage.story().step({
        .done = QStringLiteral("opened the preferences"),
        .expected = QStringLiteral("their window floats, in its own size"),
        .act = [] {},
        .seen = [&] { return preferences() && preferences()->isFloating; },
        .saw =
            [&] {
                const auto window = preferences();
                return !window              ? QStringLiteral("no window")
                       : window->isFloating ? QStringLiteral("a floating one")
                                            : QStringLiteral("a tile");
            },
    });
    stage.screenshot(QStringLiteral("preferences-floating"));
    stage.view().close(preferences()->id);
}

void sceneSwayFocusBefore(SwayStage &stage) {
    constexpr int kRounds = 10;
    const char *const editors = stage.cast().editor.window;
    stage.closeAll(editors);
    stage.prepare(
        QStringLiteral("an editor"),
        [&] { stage.desktop().start(QLatin1String(stage.cast().editor.program)); },
        [&] { return !stage.windowsOf(editors).empty(); });
    const StageBase::Window editor = stage.windowOf(editors);
    const StageBase::Window front = stage.front().id();
    const auto has = [&](StageBase::Window window) { return stage.view().hasFocus(window); };
    const auto isHidden = [&] { return stage.view().isMinimised(editor); };

    // Sway's own bindings of two keys that no rule has.
    const Key toEditor = keys::kH;
    const Key toFront = keys::kP;
    const auto bindTo = [&](const Key &key, StageBase::Window window) {
        stage.desktop().ipc().command(
            QStringLiteral("bindcode Mod4+%1 [con_id=%2] focus")
                .arg(QString::number(key.xKeycode), QString::number(window)));
    };
    bindTo(toEditor, editor);
    bindTo(toFront, front);
    const auto rounds = [&](const Key &first, StageBase::Window before,
                            const std::function<bool()> &seen) {
        // The second key follows while the first is down.
        Chord both = leftCommand(first);
        both.keycodes.push_back(scenario::kEditorToggle.xKeycode);
        int right = 0;
        for (int i = 0; i < kRounds; ++i) {
            stage.bringForward(editor);
            stage.bringForward(before);
            stage.hold(both);
            right += testing::waitUntil(seen, 2s) ? 1 : 0;
            stage.letGo(both);
        }
        return right;
    };
    const auto tell = [&](const QString &done, const QString &expected,
                          const std::function<int()> &act) {
        int right = 0;
        stage.story().step({
            .done = done,
            .expected = expected + QStringLiteral(", %1 times").arg(kRounds),
            .act = [&] { right = act(); },
            .seen = [&] { return right == kRounds; },
            .saw = [&] { return QStringLiteral("%1 times").arg(right); },
            .timeout = 0s,
        });
    };
    tell(QStringLiteral("sway's binding focuses the editor, and at once its hotkey"),
         QStringLiteral("it is hidden"), [&] { return rounds(toEditor, front, isHidden); });
    tell(QStringLiteral("sway's binding takes the focus from the editor, and at once its hotkey"),
         QStringLiteral("it has the focus"),
         [&] { return rounds(toFront, editor, [&] { return has(editor); }); });
}

}  // namespace kestrelbay::desktop
