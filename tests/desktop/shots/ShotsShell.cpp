#include "desktop/shots/Shots.h"

#include "desktop/display/Picture.h"
#include "desktop/display/TapHolder.h"

namespace kestrelbay::desktop {

namespace {

using shellkeys::kReturn;

constexpr QPoint kGuideLink{234, 468 - 12 - 10};

void waitForGuide(ShotStage &stage) {
    stage.prepare(
        QStringLiteral("the guide"), [] {},
        [&] { return stage.isInFront(stage.scaled(ShellStage::kGuideSize)); });
}

/// Does something that changes the window of that size, and waits for the change.
void changeWindow(ShotStage &stage, const QSize &points, const std::function<void()> &act) {
    XClient &client = stage.view().client();
    const auto window = stage.programWindow(stage.scaled(points));
    if (!window)
        throw NotPrepared(QStringLiteral("there is no such window"));
    const QRect area = client.area(*window);
    const auto before = settledPictureOf(client, area);
    stage.prepare(QStringLiteral("another view of the window"), act,
                  [&] { return pictureOf(client, area) != before; });
}

void nextGuideStep(ShotStage &stage, const std::function<void()> &act) {
    changeWindow(stage, ShellStage::kGuideSize, act);
}

void shootGuideStep(ShotStage &stage, const char *name) {
    stage.shootWindow(QLatin1String(name), ShellStage::kGuideSize);
}

void shootGuide(ShotStage &stage) {
    const TrayHost tray(stage.desktop(), TrayHost::Kind::Notifiers);
    TapHolder other(stage.desktop().displayName());
    stage.begin({{QStringLiteral("onboardingCompleted"), false}}, ShellStage::Keys::AreTaken);
    shootGuideStep(stage, "guide-1-welcome");
    nextGuideStep(stage, [&] { stage.pressKey(kReturn); });
    shootGuideStep(stage, "guide-2-obstructed");
    nextGuideStep(stage, [&] { other.letGo(); });
    shootGuideStep(stage, "guide-3-granted");
    nextGuideStep(stage, [] {});
    shootGuideStep(stage, "guide-4-all-set");
    const auto window = stage.programWindow(stage.scaled(ShellStage::kGuideSize));
    stage.toasts().forget();
    stage.clickIn(*window, stage.scaled(kGuideLink));
    stage.shootToast(QStringLiteral("toast-guide-finished"), stage.toasts().messageToasts());
}

void shootGuideWithKeys(ShotStage &stage) {
    stage.begin({{QStringLiteral("onboardingCompleted"), false}});
    waitForGuide(stage);
    nextGuideStep(stage, [&] { stage.pressKey(kReturn); });
    shootGuideStep(stage, "guide-5-keys-are-there");
}

/// Without a tray too.
void shootGuideWithoutKeys(ShotStage &stage) {
    const TapHolder other(stage.desktop().displayName());
    stage.begin({{QStringLiteral("onboardingCompleted"), false}}, ShellStage::Keys::AreTaken);
    waitForGuide(stage);
    nextGuideStep(stage, [&] { stage.pressKey(kReturn); });
    const auto window = stage.programWindow(stage.scaled(ShellStage::kGuideSize));
    // The link is underlined under the pointer, which is no other step.
    nextGuideStep(stage, [&] {
        stage.pointer().moveTo(stage.view().client().area(*window).topLeft() +
                               stage.scaled(kGuideLink));
    });
    nextGuideStep(stage, [&] { stage.clickIn(*window, stage.scaled(kGuideLink)); });
    stage.pointer().moveTo({1, 1});
    shootGuideStep(stage, "guide-6-complete-without-keys");
    stage.toasts().forget();
    stage.clickIn(*window, stage.scaled(kGuideLink));
    stage.shootToast(QStringLiteral("toast-guide-finished-without-tray"),
                     stage.toasts().messageToasts());
}

void shootAbout(ShotStage &stage) {
    stage.begin();
    stage.askFor(QStringLiteral("about"));
    stage.shootWindow(QStringLiteral("about"), ShellStage::kAboutSize);
}

void shootToasts(ShotStage &stage, const QString &kind) {
    stage.begin({{QStringLiteral("launchToastDuration"), QStringLiteral("long")},
                 {QStringLiteral("onboardingCompleted"), false}});
    waitForGuide(stage);
    stage.toasts().forget();
    const auto window = stage.programWindow(stage.scaled(ShellStage::kGuideSize));
    stage.clickIn(*window, stage.scaled(kGuideLink));
    stage.shootToast(QStringLiteral("toast-guide-dismissed") + kind,
                     stage.toasts().messageToasts());
    stage.press(leftCommand(scenario::kMarker));
    stage.shootToast(QStringLiteral("toast-launch") + kind, stage.toasts().launchToasts());
}

void shootOpaqueToasts(ShotStage &stage) {
    shootToasts(stage, {});
}

void shootCompositedToasts(ShotStage &stage) {
    stage.desktop().startCompositor();
    shootToasts(stage, QStringLiteral("-composited"));
    stage.desktop().stopCompositor();
}

void shootMenu(ShotStage &stage, TrayHost &tray, const QString &name) {
    XClient &client = stage.view().client();
    std::optional<QRect> icon;
    stage.prepare(
        QStringLiteral("an icon in the tray"), [] {},
        [&] {
            const auto last = icon;
            icon = tray.icon();
            return icon && icon == last;
        });
    stage.shoot(QStringLiteral("icon-") + name, QRect(0, 0, 200, tray.area().bottom() + 1));
    QRect menu;
    stage.prepare(
        QStringLiteral("the menu"),
        [&] { stage.pointer().click(icon->center(), Pointer::Button::Right); },
        [&] {
            const auto popups = client.popups();
            menu = popups.empty() ? QRect() : client.area(popups.back());
            return menu.height() > 100;
        });
    stage.shoot(QStringLiteral("menu-") + name,
                menu.united(tray.area().intersected(menu.adjusted(0, -60, 0, 0))));
    stage.pressKey(testing::xkey::kEscape);
    stage.prepare(
        QStringLiteral("no menu"), [] {}, [&] { return client.popups().empty(); });
    stage.askFor(QStringLiteral("toggle-all-shortcuts"));
    stage.pointer().moveTo({600, 600});
    stage.shoot(QStringLiteral("icon-off-") + name, QRect(0, 0, 200, tray.area().bottom() + 1));
}

void shootTray(ShotStage &stage) {
    const TrayHost::Shade shade =
        stage.look().isDark ? TrayHost::Shade::Dark : TrayHost::Shade::Light;
    {
        TrayHost tray(stage.desktop(), TrayHost::Kind::Notifiers, shade);
        stage.begin();
        shootMenu(stage, tray, QStringLiteral("panel"));
    }
    TrayHost tray(stage.desktop(), TrayHost::Kind::Embedding, shade);
    stage.begin();
    shootMenu(stage, tray, QStringLiteral("embedded"));
}

}  // namespace

const std::vector<Shot> &shellShots() {
    static const std::vector<Shot> kShots{
        {"guide", shootGuide},
        {"guide with keys", shootGuideWithKeys},
        {"guide without keys", shootGuideWithoutKeys},
        {"about", shootAbout},
        {"toasts", shootOpaqueToasts},
        {"toasts with a compositor", shootCompositedToasts},
        {"tray", shootTray},
    };
    return kShots;
}

}  // namespace kestrelbay::desktop
