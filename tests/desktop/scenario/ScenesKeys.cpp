#include "desktop/scenario/Scenes.h"

#include <functional>

#include <QDir>

#include "support/ChildProcess.h"
#include "support/Poll.h"

namespace kestrelbay::desktop {

namespace {

using testing::ChildProcess;
using Clock = std::chrono::steady_clock;

constexpr std::uint8_t kReturn = 36;

const QStringList kToggleAllShortcuts{QStringLiteral("call"),
                                      QStringLiteral("--session"),
                                      QStringLiteral("--dest"),
                                      QStringLiteral("org.kestrelbay.KestrelBay"),
                                      QStringLiteral("--object-path"),
                                      QStringLiteral("/org/kestrelbay/KestrelBay"),
                                      QStringLiteral("--method"),
                                      QStringLiteral("org.freedesktop.Application.ActivateAction"),
                                      QStringLiteral("toggle-all-shortcuts"),
                                      QStringLiteral("[]"),
                                      QStringLiteral("{}")};

/// Presses a chord that nothing may answer to, then the marker's hotkey. By the
/// time the marker is seen, an answer to the first would have been under way, too.
Step pressThenMarker(StageBase &stage, const Chord &chord) {
    return {.done = Stage::told(chord) + QStringLiteral(", then the marker's key"),
            .act =
                [&stage, chord] {
                    stage.press(chord);
                    stage.press(leftCommand(scenario::kMarker));
                },
            .seen = [&stage, after = stage.markers() + 1] { return stage.markers() == after; }};
}

/// The chord reaches the program in front, and nothing else comes of it.
void passesThrough(StageBase &stage, const Chord &chord, const QString &expected) {
    stage.bringFrontProgram();
    const std::uint8_t keycode = chord.keycodes.back();
    Step step = pressThenMarker(stage, chord);
    step.expected = expected + QStringLiteral(": the program in front gets the key, alone");
    step.saw = [&stage, keycode] {
        return QStringLiteral("%1 press at the program in front; %2")
            .arg(stage.front().pressesOf(keycode))
            .arg(stage.frontInWords());
    };
    step.objection = [&stage, keycode] {
        if (stage.front().pressesOf(keycode) != 1)
            return QStringLiteral("it should have had one press");
        return stage.view().isInFront(stage.front().id())
                   ? QString()
                   : QStringLiteral("the program in front lost its place");
    };
    stage.story().step(step);
}

void bringsTerminal(StageBase &stage, const Chord &chord, const QString &expected) {
    stage.bringFrontProgram();
    stage.press(chord, {.expected = expected,
                        .seen = [&] { return stage.isInFront(stage.cast().terminal.window); },
                        .saw = [&] { return stage.frontInWords(); },
                        .objection =
                            [&] {
                                return stage.front().pressesOf(chord.keycodes.back()) == 0
                                           ? QString()
                                           : QStringLiteral("the program in front saw the key");
                            }});
}

QByteArray typedIntoTerminal(Stage &stage) {
    QByteArray all;
    const QDir home(stage.desktop().home().path());
    for (const QString &name : home.entryList({QStringLiteral("typed.*")}))
        all += HomeFolder::read(home.filePath(name));
    return all;
}

void waitFor(Clock::duration time) {
    const Clock::time_point end = Clock::now() + time;
    (void)testing::waitUntil([&] { return Clock::now() > end; });
}

/// The hotkey with arguments, held for as long as another key took to repeat.
void holdsAsOnePress(StageBase &stage, const QString &done, const std::function<void()> &hold) {
    const auto started = [&stage] {
        return static_cast<int>(
            stage.desktop().processes().withArgument(QStringLiteral("-v")).size());
    };
    const int before = started();
    const int markers = stage.markers();
    stage.story().step({
        .done = done + QStringLiteral(" as long as another key took to repeat, then pressed "
                                      "the marker's key"),
        .expected = QStringLiteral("one press, one new process"),
        .act =
            [&] {
                hold();
                stage.press(leftCommand(scenario::kMarker));
            },
        // Each takes the time it takes to start.
        .seen = [&] { return stage.markers() == markers + 1 && started() > before; },
        .saw =
            [&] {
                return QStringLiteral("%1 new, %2 presses at the program in front")
                    .arg(started() - before)
                    .arg(stage.front().pressesOf(scenario::kArguments.xKeycode));
            },
        .objection =
            [&] {
                return started() == before + 1 &&
                               stage.front().pressesOf(scenario::kArguments.xKeycode) == 0
                           ? QString()
                           : QStringLiteral("the repeats were taken for presses");
            },
    });
}

}  // namespace

void sceneSides(Stage &stage) {
    bringsTerminal(stage, leftCommand(scenario::kTerminal),
                   QStringLiteral("the left Command key fires"));
    passesThrough(stage, rightCommand(scenario::kTerminal),
                  QStringLiteral("the right one does not"));
    passesThrough(stage, shiftCommand(scenario::kTerminal),
                  QStringLiteral("nor does the left one with Shift"));

    stage.bringForward(stage.windowOf(scenario::kTerminalClass));
    stage.story().step({
        .done = QStringLiteral("typed K, R⌘N, Return into the terminal"),
        .expected = QStringLiteral("the program in it reads “kn”"),
        .act =
            [&] {
                stage.press(plain(scenario::kMarker));
                stage.press(rightCommand(scenario::kTerminal));
                stage.press({QStringLiteral("Return"), {kReturn}});
            },
        .seen = [&] { return typedIntoTerminal(stage) == "kn\n"; },
        .saw = [&] { return QString::fromUtf8(typedIntoTerminal(stage).toPercentEncoding()); },
    });

    bringsTerminal(stage, leftCommand(scenario::kTerminalEitherSide),
                   QStringLiteral("a rule without a side: the left Command key fires"));
    bringsTerminal(stage, rightCommand(scenario::kTerminalEitherSide),
                   QStringLiteral("a rule without a side: the right one too"));
}

void sceneLocks(Stage &stage) {
    const Chord numLock{QStringLiteral("Num Lock"), {testing::xkey::kNumLock}};
    const Chord capsLock{QStringLiteral("Caps Lock"), {testing::xkey::kCapsLock}};
    const auto locks = [&] {
        XClient &client = stage.view().client();
        const Reply<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(
            client.get(), xcb_query_pointer(client.get(), client.root()), nullptr));
        return pointer ? pointer->mask : 0;
    };
    const auto toggle = [&](const Chord &lock) {
        const auto before = locks();
        stage.prepare(
            lock.text, [&] { stage.press(lock); }, [&] { return locks() != before; });
    };
    const Chord hotkey = leftCommand(scenario::kTerminal);
    toggle(numLock);
    bringsTerminal(stage, hotkey, QStringLiteral("with Num Lock on it fires"));
    toggle(capsLock);
    bringsTerminal(stage, hotkey, QStringLiteral("with both locks on it fires"));
    toggle(numLock);
    bringsTerminal(stage, hotkey, QStringLiteral("with Caps Lock on it fires"));
    toggle(capsLock);
}

void sceneDisabledRule(StageBase &stage) {
    stage.bringFrontProgram();
    const Chord hotkey = leftCommand(scenario::kDisabled);
    Step step = pressThenMarker(stage, hotkey);
    step.expected = QStringLiteral("disabled: the key is swallowed and nothing happens");
    step.saw = [&] {
        return QStringLiteral("%1 press at the program in front; %2")
            .arg(stage.front().pressesOf(scenario::kDisabled.xKeycode))
            .arg(stage.frontInWords());
    };
    step.objection = [&] {
        if (stage.front().pressesOf(scenario::kDisabled.xKeycode) != 0)
            return QStringLiteral("the program in front saw the key");
        return stage.desktop()
                       .processes()
                       .withArgument(QLatin1String(scenario::kDisabledArgument))
                       .empty()
                   ? QString()
                   : QStringLiteral("its application was started");
    };
    stage.story().step(step);
}

void sceneGlobalSwitch(StageBase &stage) {
    const Chord hotkey = leftCommand(scenario::kTerminal);
    const auto toggle = [&](bool on) {
        stage.story().step({
            .done = QStringLiteral("turned all shortcuts %1 over the session bus")
                        .arg(on ? QStringLiteral("on") : QStringLiteral("off")),
            .expected = on ? QStringLiteral("KestrelBay has the hotkeys again")
                           : QStringLiteral("it has none"),
            .act =
                [&] {
                    const Command call =
                        stage.desktop().command(QStringLiteral("gdbus"), kToggleAllShortcuts);
                    ChildProcess process(call.program, call.arguments,
                                         stage.desktop().environment());
                    (void)process.waitForExit();
                },
            .seen = [&, on] { return stage.hasHotkeys() == on; },
            .saw =
                [&] {
                    return stage.hasHotkeys() ? QStringLiteral("hotkeys") : QStringLiteral("none");
                },
        });
    };
    toggle(false);
    stage.bringFrontProgram();
    stage.press(hotkey,
                {.expected = QStringLiteral("switched off: the program in front gets the key"),
                 .seen = [&] { return stage.front().pressesOf(hotkey.keycodes.back()) == 1; },
                 .saw = [&] { return stage.frontInWords(); },
                 .objection =
                     [&] {
                         return stage.view().isInFront(stage.front().id())
                                    ? QString()
                                    : QStringLiteral("the program in front lost its place");
                     }});
    toggle(true);
    bringsTerminal(stage, hotkey, QStringLiteral("switched on: it fires"));
}

void sceneHeldKey(StageBase &stage) {
    const Clock::duration longEnough = stage.timeToRepeat();
    stage.bringFrontProgram();
    const Chord hotkey = leftCommand(scenario::kArguments);
    holdsAsOnePress(stage, QStringLiteral("held %1").arg(hotkey.text), [&] {
        stage.hold(hotkey);
        waitFor(longEnough);
        stage.letGo(hotkey);
    });
    holdsAsOnePress(stage, QStringLiteral("held %1, the key longer").arg(hotkey.text), [&] {
        stage.hold(hotkey);
        stage.letGo({QStringLiteral("L⌘"), {hotkey.keycodes.front()}});
        waitFor(longEnough);
        stage.letGo({QString(), {hotkey.keycodes.back()}});
    });
}

}  // namespace kestrelbay::desktop
