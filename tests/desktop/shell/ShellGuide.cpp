#include "desktop/shell/ShellScenes.h"

#include <cstdlib>

#include <QFile>

#include "desktop/display/Picture.h"
#include "desktop/display/TapHolder.h"

namespace kestrelbay::desktop {

namespace {

using namespace std::chrono_literals;
using shellkeys::kReturn;

constexpr QSize kGuide = ShellStage::kGuideSize;
/// The link at the guide's bottom is centred, a little above its edge.
constexpr QPoint kLink{234, 468 - 12 - 10};
/// Room for the status line, above the button and the link.
constexpr QRect kStatusLine{100, 350, 268, 60};
const QString kCompleted = QStringLiteral("onboardingCompleted");

bool holds(const QImage &picture, const std::function<bool(const QColor &)> &isWanted) {
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (isWanted(picture.pixelColor(x, y)))
                return true;
        }
    }
    return false;
}

bool holdsGreen(const QImage &picture) {
    return holds(picture, [](const QColor &color) {
        return color.green() > color.red() + 60 && color.green() > color.blue() + 40;
    });
}

bool holdsOrange(const QImage &picture) {
    return holds(picture, [](const QColor &color) {
        return color.red() > color.green() + 40 && color.green() > color.blue() + 60;
    });
}

/// To the pixel that an odd size leaves over.
QString unlessCentred(ShellStage &stage, const QSize &size) {
    const QPoint off = stage.offMiddle(size);
    return std::abs(off.x()) <= 1 && std::abs(off.y()) <= 1
               ? QString()
               : QStringLiteral("it is %1 right of and %2 below the middle of the screen")
                     .arg(off.x())
                     .arg(off.y());
}

QRect guideArea(ShellStage &stage) {
    const auto window = stage.programWindow(kGuide);
    if (!window)
        throw NotPrepared(QStringLiteral("the guide is not there"));
    return stage.view().client().area(*window);
}

QImage guidePicture(ShellStage &stage) {
    const auto picture = settledPictureOf(stage.view().client(), guideArea(stage));
    if (!picture)
        throw NotPrepared(QStringLiteral("the guide does not come to rest"));
    return *picture;
}

void seesGuide(ShellStage &stage, const QString &done, const std::function<void()> &act) {
    stage.story().step({
        .done = done,
        .expected = QStringLiteral("the guide, 468×468, comes forward and has the keyboard"),
        .act = act,
        .seen = [&] { return stage.isInFront(kGuide); },
        .saw =
            [&] {
                return QStringLiteral("%1; %2").arg(stage.windowsInWords(), stage.frontInWords());
            },
        .objection = [&] { return unlessCentred(stage, kGuide); },
    });
}

/// Waits for another step of the guide; throws NotPrepared when there is none.
QImage nextStep(ShellStage &stage, const QImage &before, const std::function<void()> &act) {
    stage.prepare(QStringLiteral("another step of the guide"), act,
                  [&] { return pictureOf(stage.view().client(), guideArea(stage)) != before; });
    return guidePicture(stage);
}

void seesGuideEnd(ShellStage &stage, const QString &done, const std::function<void()> &act,
                  bool withToast) {
    stage.toasts().forget();
    stage.story().step({
        .done = done,
        .expected =
            withToast ? QStringLiteral("the guide goes, is not shown again, and a toast says where "
                                       "to find it")
                      : QStringLiteral("the guide goes and is not shown again"),
        .act = act,
        .seen =
            [&] {
                return !stage.programWindow(kGuide) && stage.setting(kCompleted) == true &&
                       (!withToast || !stage.toasts().messageToasts().empty());
            },
        .saw =
            [&] {
                return QStringLiteral("%1, %2 toast, %3")
                    .arg(stage.windowsInWords())
                    .arg(stage.toasts().messageToasts().size())
                    .arg(stage.setting(kCompleted) == true ? QStringLiteral("completed")
                                                           : QStringLiteral("not completed"));
            },
        .objection =
            [&] {
                if (!withToast)
                    return stage.toasts().messageToasts().empty()
                               ? QString()
                               : QStringLiteral("there is a toast");
                // Its lower edge three quarters up the screen of 800 points.
                return stage.toasts().messageToasts().front().area.bottom() + 1 == 200
                           ? QString()
                           : QStringLiteral("the toast is not where it belongs");
            },
    });
}

}  // namespace

void sceneFirstStart(ShellStage &stage) {
    stage.endProgram();
    QFile::remove(stage.desktop().home().settingsPath());
    QFile::remove(stage.desktop().home().rulesPath());
    stage.bringFrontProgram();
    TapHolder other(stage.desktop().displayName());

    seesGuide(stage, QStringLiteral("started KestrelBay for the first time, the keys taken"),
              [&] { stage.startProgram(); });
    stage.screenshot(QStringLiteral("guide-welcome"));
    QImage last = guidePicture(stage);
    last = nextStep(stage, last, [&] { stage.pressKey(kReturn); });
    stage.screenshot(QStringLiteral("guide-permission"));
    const QRect statusLine = kStatusLine.translated(guideArea(stage).topLeft());
    const auto status = [&] { return pictureOf(stage.view().client(), statusLine); };
    stage.story().step({
        .done = QStringLiteral("pressed Return for “Check Access”"),
        .expected = QStringLiteral("the guide goes on to say in orange what is in the way"),
        .act = [&] { stage.pressKey(kReturn); },
        .seen = [&] { return guidePicture(stage) == last && holdsOrange(status()); },
        .saw =
            [&] {
                return holdsOrange(status()) ? QStringLiteral("orange")
                                             : QStringLiteral("no orange");
            },
    });

    stage.story().step({
        .done = QStringLiteral("the keys are free"),
        .expected = QStringLiteral("the guide finds out and says so in green"),
        .act = [&] { other.letGo(); },
        .seen = [&] { return holdsGreen(status()); },
        .saw =
            [&] {
                return holdsGreen(status()) ? QStringLiteral("green") : QStringLiteral("no green");
            },
        .timeout = 3s,
    });
    const auto granted = std::chrono::steady_clock::now();
    const QImage grantedStep = pictureOf(stage.view().client(), guideArea(stage));
    stage.screenshot(QStringLiteral("guide-granted"));
    stage.story().step({
        .done = QStringLiteral("looked on"),
        .expected = QStringLiteral("0.8 s later it is all set"),
        .act = [] {},
        .seen =
            [&] {
                return pictureOf(stage.view().client(), guideArea(stage)).copy(kStatusLine) !=
                       grantedStep.copy(kStatusLine);
            },
        .saw =
            [&] {
                return QStringLiteral("the next step after %1 ms")
                    .arg(std::chrono::duration_cast<std::chrono::milliseconds>(
                             std::chrono::steady_clock::now() - granted)
                             .count());
            },
        .objection =
            [&] {
                return std::chrono::steady_clock::now() - granted > 500ms
                           ? QString()
                           : QStringLiteral("nobody can read that so fast");
            },
        .timeout = 3s,
    });
    (void)guidePicture(stage);
    stage.screenshot(QStringLiteral("guide-all-set"));
    const auto guide = stage.programWindow(kGuide);
    seesGuideEnd(
        stage, QStringLiteral("clicked “Skip for now”"), [&] { stage.clickIn(*guide, kLink); },
        true);
    stage.screenshot(QStringLiteral("guide-finished-toast"));
}

void sceneGuideAgain(ShellStage &stage) {
    stage.restartProgram({});
    stage.story().step({
        .done = QStringLiteral("started KestrelBay again, and opened About"),
        .expected = QStringLiteral("About, and no guide"),
        .act = [&] { stage.askFor(QStringLiteral("about")); },
        .seen = [&] { return stage.isInFront(ShellStage::kAboutSize); },
        .saw = [&] { return stage.windowsInWords(); },
        .objection =
            [&] {
                return stage.programWindow(kGuide) ? QStringLiteral("there is the guide")
                                                   : unlessCentred(stage, ShellStage::kAboutSize);
            },
    });
    stage.closeWindow(ShellStage::kAboutSize);
    stage.bringFrontProgram();
    seesGuide(stage, QStringLiteral("asked for the welcome guide"),
              [&] { stage.askFor(QStringLiteral("welcome-guide")); });
    stage.story().step({
        .done = QStringLiteral("looked into the settings"),
        .expected = QStringLiteral("it will be shown again until it is finished"),
        .act = [] {},
        .seen = [&] { return stage.setting(kCompleted) == false; },
        .saw =
            [&] {
                return stage.setting(kCompleted) == false ? QStringLiteral("not completed")
                                                          : QStringLiteral("completed");
            },
    });

    QImage last = guidePicture(stage);
    last = nextStep(stage, last, [&] { stage.pressKey(kReturn); });
    stage.screenshot(QStringLiteral("guide-keys-are-there"));
    last = nextStep(stage, last, [&] { stage.pressKey(kReturn); });
    stage.screenshot(QStringLiteral("guide-complete"));
    seesGuideEnd(
        stage, QStringLiteral("pressed Return for “Add First Shortcut”"),
        [&] { stage.pressKey(kReturn); }, false);
    stage.story().step({
        .done = QStringLiteral("looked on"),
        .expected = QStringLiteral("the preferences come forward"),
        .act = [] {},
        .seen = [&] { return stage.isInFront(ShellStage::kPreferencesSize); },
        .saw = [&] { return stage.windowsInWords(); },
        .objection = [&] { return unlessCentred(stage, ShellStage::kPreferencesSize); },
    });
    stage.screenshot(QStringLiteral("preferences-after-guide"));
}

void sceneGuideClosed(ShellStage &stage) {
    stage.restartProgram({{kCompleted, false}});
    seesGuide(stage, QStringLiteral("started with the guide unfinished"), [] {});
    seesGuideEnd(
        stage, QStringLiteral("closed the window"),
        [&] { stage.view().close(*stage.programWindow(kGuide)); }, false);

    stage.askFor(QStringLiteral("welcome-guide"));
    seesGuide(stage, QStringLiteral("asked for the welcome guide"), [] {});
    const QRect area = guideArea(stage);
    (void)guidePicture(stage);
    seesGuideEnd(
        stage, QStringLiteral("clicked “Dismiss”"),
        [&] { stage.pointer().click(area.topLeft() + kLink); }, true);
    stage.story().step({
        .done = QStringLiteral("waited"),
        .expected = QStringLiteral("the toast goes after 4.3 s"),
        .act = [] {},
        .seen = [&] { return stage.toasts().messageToasts().front().unmapped.has_value(); },
        .saw =
            [&] {
                const auto &toast = stage.toasts().messageToasts().front();
                return toast.unmapped
                           ? QStringLiteral("gone after %1 ms")
                                 .arg(std::chrono::duration_cast<std::chrono::milliseconds>(
                                          *toast.unmapped - toast.mapped)
                                          .count())
                           : QStringLiteral("still there");
            },
    });
}

}  // namespace kestrelbay::desktop
