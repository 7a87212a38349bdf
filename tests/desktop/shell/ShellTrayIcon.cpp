#include <optional>

#include "desktop/display/Picture.h"
#include "desktop/session/TrayHost.h"
#include "desktop/shell/ShellScenes.h"

namespace kestrelbay::desktop {

namespace {

constexpr const char *kIcons =
    ".local/share/icons/hicolor/symbolic/apps/org.kestrelbay.KestrelBay.%1-symbolic.svg";

/// Puts the icons where a package puts them, but for this user.
void installIcons(ShellStage &stage) {
    for (const char *drawing : {"bolt", "bolt.slash"}) {
        const QString place = QString::fromLatin1(kIcons).arg(QLatin1String(drawing));
        const QByteArray contents = HomeFolder::read(QStringLiteral(KESTRELBAY_THEME_ICONS) +
                                                     place.mid(place.lastIndexOf(u'/')));
        HomeFolder::write(stage.desktop().home().path(place), contents);
    }
}

/// The colour in the middle of the icon, where both the bolt and the line through it are.
std::optional<QColor> ink(ShellStage &stage, TrayHost &tray) {
    const auto icon = tray.icon();
    return icon ? std::optional(colorAt(stage.view().client(), icon->center())) : std::nullopt;
}

void seeInk(ShellStage &stage, TrayHost &tray, TrayHost::Shade panel, const QString &done,
            const std::function<void()> &act) {
    const bool onDark = panel == TrayHost::Shade::Dark;
    stage.story().step({
        .done = done,
        .expected = onDark ? QStringLiteral("a light icon") : QStringLiteral("a dark icon"),
        .act = act,
        .seen =
            [&] {
                const auto color = ink(stage, tray);
                return color && (onDark ? color->lightnessF() > 0.75 : color->lightnessF() < 0.25);
            },
        .saw =
            [&] {
                const auto color = ink(stage, tray);
                return color ? color->name() : QStringLiteral("no icon");
            },
    });
}

void seeName(ShellStage &stage, const QString &expected) {
    const auto name = [&] {
        return stage.notifiers().property(QStringLiteral("IconName")).toString();
    };
    stage.story().step({
        .done = QStringLiteral("asked for the icon's name"),
        .expected = expected.isEmpty() ? QStringLiteral("none") : expected,
        .act = [] {},
        .seen = [&] { return name() == expected; },
        .saw = name,
    });
}

/// On a light panel and on a dark one, switched on and off.
void seeOnPanels(ShellStage &stage, const QString &enabledName, const QString &disabledName,
                 const QString &pictures) {
    using Shade = TrayHost::Shade;
    for (const Shade shade : {Shade::Light, Shade::Dark}) {
        const QString picture = pictures + (shade == Shade::Dark ? QStringLiteral("-on-dark")
                                                                 : QStringLiteral("-on-light"));
        TrayHost tray(stage.desktop(), TrayHost::Kind::Notifiers, shade);
        // Its tray that embeds is there before.
        stage.prepare(
            QStringLiteral("a panel for notifiers"), [] {},
            [&] { return stage.notifiers().hasHost(); });
        stage.restartProgram({});
        seeInk(stage, tray, shade, QStringLiteral("started beside a panel"), [] {});
        seeName(stage, enabledName);
        stage.screenshot(picture);
        seeInk(stage, tray, shade, QStringLiteral("turned all shortcuts off"),
               [&] { stage.askFor(QStringLiteral("toggle-all-shortcuts")); });
        seeName(stage, disabledName);
        stage.screenshot(picture + QStringLiteral("-disabled"));
    }
}

}  // namespace

void sceneIconOnPanels(ShellStage &stage) {
    seeOnPanels(stage, {}, {}, QStringLiteral("drawn-icon"));
}

void sceneEmbeddedIconOnPanels(ShellStage &stage) {
    using Shade = TrayHost::Shade;
    for (const Shade shade : {Shade::Light, Shade::Dark}) {
        std::optional<TrayHost> tray(std::in_place, stage.desktop(), TrayHost::Kind::Embedding,
                                     shade);
        stage.restartProgram({});
        seeInk(stage, *tray, shade, QStringLiteral("started beside a tray that embeds"), [] {});
        stage.screenshot(shade == Shade::Dark ? QStringLiteral("embedded-icon-on-dark")
                                              : QStringLiteral("embedded-icon-on-light"));
        tray.reset();
        const Shade other = shade == Shade::Light ? Shade::Dark : Shade::Light;
        tray.emplace(stage.desktop(), TrayHost::Kind::Embedding, other);
        seeInk(stage, *tray, other, QStringLiteral("had the tray come back otherwise"), [] {});
    }
}

void sceneInstalledIconOnPanels(ShellStage &stage) {
    installIcons(stage);
    const QString variable = QStringLiteral("XDG_CURRENT_DESKTOP");
    stage.setProgramVariable(variable, QStringLiteral("XFCE"));
    seeOnPanels(stage, QStringLiteral("org.kestrelbay.KestrelBay.bolt-symbolic"),
                QStringLiteral("org.kestrelbay.KestrelBay.bolt.slash-symbolic"),
                QStringLiteral("installed-icon"));
    stage.setProgramVariable(variable, {});
}

}  // namespace kestrelbay::desktop
