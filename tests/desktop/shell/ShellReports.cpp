#include "desktop/shell/ShellScenes.h"

#include <algorithm>
#include <filesystem>

#include <QColor>
#include <QDir>
#include <QLibraryInfo>
#include <QScopeGuard>
#include <QTemporaryDir>

#include "desktop/display/Picture.h"
#include "desktop/session/TrayHost.h"
#include "support/bus/FakeSettingsPortal.h"

namespace kestrelbay::desktop {

namespace {

using testing::FakeSettingsPortal;

constexpr QPoint kCorner{4, 4};

QString reportLine(const QString &report, const QString &name) {
    for (const QString &line : report.split(u'\n')) {
        if (line.startsWith(name + QStringLiteral(": ")))
            return line;
    }
    return name + QStringLiteral(": (not said)");
}

void seesReport(ShellStage &stage, const QString &done, const QProcessEnvironment &environment,
                const QStringList &wanted, const QString &artifact) {
    ShellStage::Ending report;
    QStringList missing;
    const auto look = [&] {
        report = stage.startAgain({QStringLiteral("--diagnose")}, environment);
        missing.clear();
        for (const QString &words : wanted) {
            if (!report.output.contains(words))
                missing += words;
        }
        return report.code == 0 && missing.isEmpty();
    };
    stage.story().step({
        .done = done,
        .expected = QStringLiteral("a report with “%1”").arg(wanted.join(QStringLiteral("”, “"))),
        .act = [] {},
        .seen = look,
        .saw =
            [&] {
                return missing.isEmpty()
                           ? QStringLiteral("exit %1, %2, %3")
                                 .arg(report.code)
                                 .arg(reportLine(report.output, QStringLiteral("Sees keys")),
                                      reportLine(report.output, QStringLiteral("Rules")))
                           : QStringLiteral("exit %1, no “%2” in %3")
                                 .arg(report.code)
                                 .arg(missing.join(QStringLiteral("”, “")), report.output);
            },
        .objection =
            [&] {
                return report.output.contains(stage.desktop().home().path())
                           ? QStringLiteral("it gives the user's home folder away")
                           : QString();
            },
    });
    stage.keepText(artifact, report.output);
}

/// A copy of the program that finds none of Qt's plugins but those for a display.
QString copyWithoutPlugins(const QString &program, const QString &folder) {
    const QString plugins = folder + QStringLiteral("/plugins");
    QDir().mkpath(plugins);
    std::filesystem::create_directory_symlink(
        (QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms"))
            .toStdString(),
        (plugins + QStringLiteral("/platforms")).toStdString());
    HomeFolder::write(folder + QStringLiteral("/qt.conf"), "[Paths]\nPlugins=plugins\n");
    QString copy = folder + QStringLiteral("/kestrelbay");
    std::filesystem::copy(program.toStdString(), copy.toStdString());
    return copy;
}

void openAbout(ShellStage &stage) {
    stage.restartProgram({});
    stage.askFor(QStringLiteral("about"));
    stage.prepare(
        QStringLiteral("About"), [] {}, [&] { return stage.isInFront(ShellStage::kAboutSize); });
}

void seeAbout(ShellStage &stage, const QString &done, bool light,
              const std::function<void()> &act) {
    const auto color = [&] {
        const auto window = stage.programWindow(ShellStage::kAboutSize);
        XClient &client = stage.view().client();
        return window ? colorAt(client, client.area(*window).topLeft() + kCorner) : QColor();
    };
    stage.story().step({
        .done = done,
        .expected = light ? QStringLiteral("About is light") : QStringLiteral("About is dark"),
        .act = act,
        .seen =
            [&, light] {
                return color().isValid() &&
                       (light ? color().lightness() > 200 : color().lightness() < 80);
            },
        .saw = [&] { return color().name(); },
    });
}

}  // namespace

void sceneColorScheme(ShellStage &stage) {
    FakeSettingsPortal portal(stage.busAddress(), FakeSettingsPortal::kPreferLight);
    openAbout(stage);
    seeAbout(stage, QStringLiteral("opened About"), true, [] {});
    seeAbout(stage, QStringLiteral("turned the desktop dark"), false,
             [&] { portal.setColorScheme(FakeSettingsPortal::kPreferDark); });
    stage.screenshot(QStringLiteral("about-turned-dark"));
    seeAbout(stage, QStringLiteral("turned it light again"), true,
             [&] { portal.setColorScheme(FakeSettingsPortal::kPreferLight); });
    stage.closeWindow(ShellStage::kAboutSize);
}

void sceneNamedStyle(ShellStage &stage) {
    const QString variable = QStringLiteral("QT_STYLE_OVERRIDE");
    const FakeSettingsPortal portal(stage.busAddress(), FakeSettingsPortal::kPreferDark);
    stage.setProgramVariable(variable, QStringLiteral("Windows"));
    openAbout(stage);
    seeAbout(stage, QStringLiteral("named a light style on a dark desktop"), true, [] {});
    stage.screenshot(QStringLiteral("about-in-a-named-style"));
    stage.closeWindow(ShellStage::kAboutSize);
    stage.setProgramVariable(variable, {});
    ShellStage::Ending ending;
    stage.story().step({
        .done = QStringLiteral("named a style on the command line"),
        .expected = QStringLiteral("it is taken for an option"),
        .act =
            [&] {
                ending = stage.startAgain(
                    {QStringLiteral("-style=Windows"), QStringLiteral("--version")});
            },
        .seen = [&] { return ending.code == 0; },
        .saw = [&] { return ending.output; },
    });
}

void sceneDiagnose(ShellStage &stage) {
    const QProcessEnvironment environment = stage.desktop().environment();
    {
        const TrayHost tray(stage.desktop(), TrayHost::Kind::Notifiers);
        // Another program has one of the keys.
        XClient rival(stage.desktop().displayName());
        stage.endProgram();
        xcb_grab_key(rival.get(), 0, rival.root(), XCB_MOD_MASK_4, scenario::kUrl.xKeycode,
                     XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        rival.sync();
        stage.restartProgram({{QStringLiteral("launchToastDuration"), QStringLiteral("medium")}});
        seesReport(
            stage, QStringLiteral("--diagnose beside a running instance"), environment,
            {QStringLiteral("Running: yes"), QStringLiteral("StatusNotifier host"),
             stage.windowManagerName(),
             QStringLiteral("Hotkeys held by other programs: ") + leftCommand(scenario::kUrl).text,
             QStringLiteral("Launch toast: medium"), QStringLiteral("~/")},
            QStringLiteral("diagnose-running"));
    }
    stage.endProgram();
    seesReport(stage, QStringLiteral("--diagnose without one"), environment,
               {QStringLiteral("Running: no"), stage.windowManagerName(),
                QStringLiteral("Sees keys: yes")},
               QStringLiteral("diagnose-not-running"));
    QProcessEnvironment without = environment;
    without.remove(QStringLiteral("DISPLAY"));
    without.remove(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
    seesReport(stage, QStringLiteral("--diagnose without a display and a session bus"), without,
               {QStringLiteral("Running: no"), QStringLiteral("DISPLAY is not set")},
               QStringLiteral("diagnose-no-display"));
}

void sceneNoSvgPlugin(ShellStage &stage) {
    const QTemporaryDir folder;
    stage.endProgram();
    stage.useProgram(copyWithoutPlugins(stage.programPath(), folder.path()));
    const auto putBack = qScopeGuard([&] { stage.useProgram({}); });
    const QString packages = QStringLiteral("(Debian: qt6-svg-plugins or libqt6svg6)");
    seesReport(stage, QStringLiteral("--diagnose without Qt's plugin for SVG"),
               stage.desktop().environment(), {QStringLiteral("Draws icons: no, "), packages},
               QStringLiteral("diagnose-no-svg"));

    const TrayHost tray(stage.desktop(), TrayHost::Kind::Notifiers);
    stage.restartProgram({});
    const auto warnings = [&] { return stage.program().lines().filter(packages); };
    stage.story().step({
        .done = QStringLiteral("started KestrelBay without it, beside a panel"),
        .expected = QStringLiteral("a warning that names its packages"),
        .act = [] {},
        .seen =
            [&] {
                return std::ranges::any_of(warnings(), [](const QString &line) {
                    return line.contains(QStringLiteral("KestrelBay [WARN] "));
                });
            },
        .saw = [&] { return stage.program().lines().join(QStringLiteral(" ⏎ ")); },
    });
    stage.story().step({
        .done = QStringLiteral("opened the preferences, which have symbols, too"),
        .expected = QStringLiteral("no second warning"),
        .act = [&] { stage.askFor(QStringLiteral("preferences")); },
        .seen = [&] { return stage.isInFront(ShellStage::kPreferencesSize); },
        .saw = [&] { return warnings().join(QStringLiteral(" ⏎ ")); },
        .objection =
            [&] {
                return warnings().size() == 1
                           ? QString()
                           : QStringLiteral("warnings: %1").arg(warnings().size());
            },
    });
    stage.screenshot(QStringLiteral("preferences-no-svg"));
    stage.endProgram();
    stage.keepLog(QStringLiteral("kestrelbay-no-svg"));
}

void sceneUnknownSound(ShellStage &stage) {
    stage.restartProgram({{QStringLiteral("soundFeedbackName"), QStringLiteral("No Such Sound")}});
    stage.bringFrontProgram();
    const qsizetype said = stage.program().lines().size();
    const int markers = stage.markers();
    stage.press(leftCommand(scenario::kMarker),
                {.expected = QStringLiteral("no such sound: the hotkey works, nothing is said"),
                 .seen = [&] { return stage.markers() == markers + 1; },
                 .saw =
                     [&] {
                         return QStringLiteral("%1 new process, “%2”")
                             .arg(stage.markers() - markers)
                             .arg(stage.program().lines().mid(said).join(QStringLiteral(" ⏎ ")));
                     },
                 .objection =
                     [&] {
                         return stage.program().line({QStringLiteral("No Such Sound")}, said)
                                    ? QStringLiteral("it complains")
                                    : QString();
                     }});
    stage.endProgram();
    stage.keepLog(QStringLiteral("kestrelbay"));
}

}  // namespace kestrelbay::desktop
