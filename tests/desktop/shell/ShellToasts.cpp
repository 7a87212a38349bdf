#include "desktop/shell/ShellScenes.h"

#include <array>
#include <cmath>

#include "desktop/display/Picture.h"
#include "support/Poll.h"

namespace kestrelbay::desktop {

namespace {

using namespace std::chrono_literals;
using Toast = ToastWatch::Toast;
using Milliseconds = std::chrono::duration<double, std::milli>;

/// One frame of a usual display; what a toast is meant to keep to.
constexpr Milliseconds kFrame{1000.0 / 60};
/// What a machine that does other things besides may add to each of them.
constexpr Milliseconds kNoise{50};
constexpr int kTries = 3;
/// Within the toast, and not on its icon.
constexpr QPoint kBesideIcon{30, 96};

struct Times {
    const char *name;
    Milliseconds opaque, fading, gone;
};
constexpr std::array kDurations{
    Times{"short", 80ms, 330ms, 450ms},
    Times{"medium", 100ms, 600ms, 850ms},
    Times{"long", 150ms, 1050ms, 1500ms},
};

QString duration() {
    return QStringLiteral("launchToastDuration");
}

const Chord &hotkey() {
    static const Chord chord = leftCommand(scenario::kMarker);
    return chord;
}

/// How far each line of pixels is of the colour of the first one.
std::vector<int> insetsOf(const QImage &corner) {
    std::vector<int> insets;
    for (int y = 0; y < corner.height(); ++y) {
        int x = 0;
        while (x < corner.width() && corner.pixel(x, y) == corner.pixel(0, 0))
            ++x;
        insets.push_back(x);
    }
    return insets;
}

struct Deviation {
    double opaque = 0, fading = 0, gone = 0;
    int steps = 0;
    [[nodiscard]] double worst() const {
        return std::max({std::abs(opaque), std::abs(fading), std::abs(gone)});
    }
};

Deviation deviation(const Toast &toast, const Times &wanted) {
    const auto since = [&](const std::optional<ToastWatch::Time> &time, Milliseconds due) {
        return time ? (Milliseconds(*time - toast.mapped) - due).count() : 1e6;
    };
    return {.opaque = since(toast.opaque, wanted.opaque),
            .fading = since(toast.fading, wanted.fading),
            .gone = since(toast.unmapped, wanted.gone),
            .steps = toast.steps};
}

QString signedNumber(double milliseconds) {
    return QStringLiteral("%1%2")
        .arg(milliseconds < 0 ? QString() : QStringLiteral("+"))
        .arg(milliseconds, 0, 'f', 1);
}

bool comesAndGoes(ShellStage &stage) {
    const auto &toasts = stage.toasts().launchToasts();
    return toasts.size() == 1 && toasts.front().unmapped;
}

void measure(ShellStage &stage, const Times &wanted) {
    stage.restartProgram({{duration(), QLatin1String(wanted.name)}});
    stage.bringFrontProgram();
    // The first time everything is loaded, which is not what is measured.
    stage.toasts().forget();
    stage.prepare(
        QStringLiteral("a first toast"), [&] { stage.press(hotkey()); },
        [&] { return comesAndGoes(stage); });

    Deviation found;
    int tries = 0;
    stage.story().step({
        .done =
            QStringLiteral("pressed %1, toast “%2”").arg(hotkey().text, QLatin1String(wanted.name)),
        .expected = QStringLiteral("opaque after %1, fading after %2, gone after %3 ms")
                        .arg(wanted.opaque.count())
                        .arg(wanted.fading.count())
                        .arg(wanted.gone.count()),
        .act =
            [&] {
                do {
                    ++tries;
                    stage.toasts().forget();
                    stage.press(hotkey());
                    (void)testing::waitUntil([&] { return comesAndGoes(stage); });
                    if (comesAndGoes(stage))
                        found = deviation(stage.toasts().launchToasts().front(), wanted);
                } while (found.worst() > kFrame.count() && tries < kTries);
            },
        .seen = [&] { return comesAndGoes(stage); },
        .saw =
            [&] {
                return QStringLiteral("%1, %2 and %3 ms off in %4 steps, at try %5%6; %7")
                    .arg(signedNumber(found.opaque), signedNumber(found.fading),
                         signedNumber(found.gone))
                    .arg(found.steps)
                    .arg(tries)
                    .arg(found.worst() > kFrame.count() ? QStringLiteral(" (more than a frame)")
                                                        : QString(),
                         stage.frontInWords());
            },
        .objection =
            [&] {
                if (found.worst() > (kFrame + kNoise).count())
                    return QStringLiteral("that is too far off");
                return stage.isFrontProgramInFront() ? QString()
                                                     : QStringLiteral("the focus has moved");
            },
    });
}

/// Presses the hotkey and waits until its toast is fully there; throws NotPrepared.
Toast opaqueToast(ShellStage &stage) {
    stage.toasts().forget();
    stage.prepare(
        QStringLiteral("a toast"), [&] { stage.press(hotkey()); },
        [&] {
            const auto &toasts = stage.toasts().launchToasts();
            return toasts.size() == 1 && toasts.front().opaque;
        });
    return stage.toasts().launchToasts().front();
}

QColor toastColor(ShellStage &stage, const Toast &toast) {
    return colorAt(stage.view().client(), toast.area.topLeft() + kBesideIcon);
}

void waitUntilGone(ShellStage &stage) {
    stage.prepare(
        QStringLiteral("the toast gone"), [] {}, [&] { return comesAndGoes(stage); });
}

}  // namespace

void sceneToastTimes(ShellStage &stage) {
    for (const Times &times : kDurations)
        measure(stage, times);
    stage.restartProgram({{duration(), QStringLiteral("none")}});
    stage.bringFrontProgram();
    stage.toasts().forget();
    const int markers = stage.markers();
    stage.press(
        hotkey(),
        {.expected = QStringLiteral("toast “none”: the program starts without one"),
         .seen = [&] { return stage.markers() == markers + 1; },
         .saw =
             [&] { return QStringLiteral("%1 toasts").arg(stage.toasts().launchToasts().size()); },
         .objection =
             [&] {
                 return stage.toasts().launchToasts().empty() ? QString()
                                                              : QStringLiteral("a toast");
             }});
}

void sceneToastInTheWay(ShellStage &stage) {
    stage.restartProgram({{duration(), QStringLiteral("long")}});
    stage.bringFrontProgram();
    stage.prepare(
        QStringLiteral("a full-screen window"), [&] { stage.front().setFullScreen(true); },
        [&] { return stage.view().client().area(stage.front().id()).size() == QSize(1280, 800); });
    const auto front = [&] { return stage.frontInWords(); };
    Toast toast = opaqueToast(stage);
    stage.screenshot(QStringLiteral("launch-toast"));
    const QColor color = toastColor(stage, toast);
    const auto clicks = [&] { return stage.front().clicks(); };
    stage.prepare(
        QStringLiteral("a click beside the toast"),
        [&] { stage.pointer().click(toast.area.center() - QPoint(0, 140)); },
        [&] { return clicks() == 1; });
    stage.front().forget();
    stage.story().step({
        .done = QStringLiteral("clicked on the toast"),
        .expected = QStringLiteral("the window behind it gets the click"),
        .act = [&] { stage.pointer().click(toast.area.center() - QPoint(0, 40)); },
        .seen = [&] { return clicks() == 1; },
        .saw = [&] { return QStringLiteral("%1 click").arg(clicks()); },
    });
    waitUntilGone(stage);

    toast = opaqueToast(stage);
    const std::uint32_t workspace = stage.view().currentDesktop();
    const auto colorInWords = [&] { return toastColor(stage, toast).name(); };
    stage.story().step({
        .done = QStringLiteral("went to another workspace"),
        .expected = QStringLiteral("the toast is there, too"),
        .act = [&] { stage.view().showDesktop(workspace + 1); },
        .seen =
            [&] {
                return stage.view().currentDesktop() == workspace + 1 &&
                       !stage.toasts().launchToasts().front().unmapped &&
                       // A compositor shows a little of what is behind it.
                       !differ(toastColor(stage, toast), color);
            },
        .saw = colorInWords,
    });
    waitUntilGone(stage);
    stage.view().showDesktop(workspace);
    stage.bringFrontProgram();

    toast = opaqueToast(stage);
    stage.story().step({
        .done = QStringLiteral("pressed the hotkey before a full-screen window"),
        .expected = QStringLiteral("the toast is above it, the focus where it was"),
        .act = [] {},
        .seen =
            [&] {
                return !differ(toastColor(stage, toast), color) && stage.isFrontProgramInFront();
            },
        .saw = [&] { return QStringLiteral("%1; %2").arg(colorInWords(), front()); },
    });
    waitUntilGone(stage);
    stage.prepare(
        QStringLiteral("an ordinary window again"), [&] { stage.front().setFullScreen(false); },
        [&] { return stage.view().client().area(stage.front().id()).size() == QSize(600, 400); });

    stage.desktop().startCompositor();
    stage.restartProgram({{duration(), QStringLiteral("long")}});
    toast = opaqueToast(stage);
    stage.story().step({
        .done = QStringLiteral("pressed the hotkey with a compositor"),
        .expected = QStringLiteral("what is behind the toast shows through, a little"),
        .act = [] {},
        .seen =
            [&] {
                const QColor mixed = toastColor(stage, toast);
                return mixed != color && mixed.lightness() > 180;
            },
        .saw = [&] { return QStringLiteral("%1 instead of %2").arg(colorInWords(), color.name()); },
    });
    stage.screenshot(QStringLiteral("launch-toast-composited"));
    stage.desktop().stopCompositor();
}

void sceneToastCorners(ShellStage &stage) {
    constexpr int kScale = 2;
    stage.setProgramVariable(QStringLiteral("QT_SCALE_FACTOR"), QString::number(kScale));
    stage.toasts().setScale(kScale);
    stage.restartProgram({{duration(), QStringLiteral("long")}});
    stage.toasts().forget();
    XClient &client = stage.view().client();
    int uneven = 0;
    stage.story().step({
        .done = QStringLiteral("pressed a hotkey at twice the size, without a compositor"),
        .expected = QStringLiteral("the toast's corners are as smooth as single pixels are"),
        .act = [&] { stage.press(hotkey()); },
        .seen =
            [&] {
                if (stage.toasts().launchToasts().empty())
                    return false;
                const QRect area = stage.toasts().launchToasts().back().area;
                const std::vector<int> insets =
                    insetsOf(pictureOf(client, QRect(area.topLeft(), area.size() / 4)));
                uneven = 0;
                for (std::size_t row = 0; row + 1 < insets.size(); row += kScale)
                    uneven += insets[row] != insets[row + 1] ? 1 : 0;
                return uneven > kScale;
            },
        .saw = [&] { return QStringLiteral("%1 pairs of lines of two lengths").arg(uneven); },
    });
    stage.screenshot(QStringLiteral("toast-corners"));
    stage.setProgramVariable(QStringLiteral("QT_SCALE_FACTOR"), QString());
    stage.toasts().setScale(1);
}

void sceneToastsInARow(ShellStage &stage) {
    stage.restartProgram({{duration(), QStringLiteral("long")}});
    stage.bringFrontProgram();
    stage.toasts().forget();
    const auto &toasts = [&]() -> const std::vector<Toast> & {
        return stage.toasts().launchToasts();
    };
    stage.story().step({
        .done = QStringLiteral("pressed two hotkeys 0.1 s apart"),
        .expected =
            QStringLiteral("the second's toast takes the first one's place and stays 1.5 s"),
        .act =
            [&] {
                stage.press(hotkey());
                const auto next = std::chrono::steady_clock::now() + 100ms;
                (void)testing::waitUntil([&] {
                    (void)toasts();
                    return std::chrono::steady_clock::now() > next;
                });
                stage.press(leftCommand(scenario::kArguments));
            },
        .seen = [&] { return toasts().size() == 2 && toasts()[1].unmapped; },
        .saw =
            [&] {
                QStringList all;
                for (const Toast &toast : toasts()) {
                    all +=
                        toast.unmapped
                            ? QStringLiteral("%1 ms").arg(
                                  Milliseconds(*toast.unmapped - toast.mapped).count(), 0, 'f', 1)
                            : QStringLiteral("still there");
                }
                return QStringLiteral("toasts for ") + all.join(QStringLiteral(", "));
            },
        .objection =
            [&] {
                const Toast &first = toasts()[0];
                const Toast &second = toasts()[1];
                if (!first.unmapped || *first.unmapped > second.mapped + kFrame)
                    return QStringLiteral("the first was there beside the second");
                return std::abs(deviation(second, kDurations[2]).gone) <= (kFrame + kNoise).count()
                           ? QString()
                           : QStringLiteral("the second did not stay its time");
            },
    });
}

}  // namespace kestrelbay::desktop
