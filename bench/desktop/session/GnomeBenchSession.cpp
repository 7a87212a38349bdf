#include "session/GnomeBenchSession.h"

namespace kestrelbay::bench {

namespace {

/// The quickest that a program can do which is started for one press: it has something of an
/// extension's done.
constexpr const char *kShellCommand =
    R"(dbus-send --session --type=method_call --dest=org.gnome.Shell /org/gnome/Shell )"
    R"sh(org.gnome.Shell.Eval "string:kestrelBring()")sh";

constexpr const char *kShellFocusScript = R"((() => {
    const {Gio, GLib} = imports.gi;
    global.display.connect('notify::focus-window', () => {
        const window = global.display.focus_window;
        if (window) {
            Gio.DBus.session.emit_signal('%1', '/', '%2', 'Focused',
                new GLib.Variant('(s)', [String(window.get_stable_sequence())]));
        }
    });
})(), 0)";

/// What an extension would do for the others: bring one window forward, and for the limit tell of
/// a key and take a call.
constexpr const char *kShellScript = R"((() => {
    const {Gio, Meta, Shell} = imports.gi;
    const target = global.get_window_actors().map(actor => actor.meta_window)
        .find(window => String(window.get_stable_sequence()) === '%1');
    globalThis.kestrelBring = () => {
        Main.activateWindow(target, global.display.get_current_time_roundtrip());
    };

    const key = global.display.grab_accelerator('<Super>0x%2',
        Meta.KeyBindingFlags.IGNORE_AUTOREPEAT);
    Main.wm.allowKeybinding(Meta.external_binding_name_for_action(key), Shell.ActionMode.NORMAL);
    global.display.connect('accelerator-activated', (_display, action) => {
        if (action === key) {
            Gio.DBus.session.emit_signal(null, '/org/kestrelbay/Limit', 'org.kestrelbay.Limit',
                'Pressed', null);
        }
    });
    globalThis.kestrelLimit = Gio.DBusExportedObject.wrapJSObject(
        '<node><interface name="org.kestrelbay.Limit"><method name="Focus"/></interface></node>',
        {Focus: () => kestrelBring()});
    kestrelLimit.export(Gio.DBus.session, '/org/kestrelbay/Limit');
})(), 0)";

}  // namespace

GnomeBenchSession::GnomeBenchSession(const QString &program)
    : stage_({.program = program, .windowManager = QStringLiteral("gnome")},
             {{.name = QStringLiteral("bring"),
               .letter = QChar(kOwnKey.label),
               .command = kShellCommand}}),
      focus_(stage_.desktop().environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"))) {
    stage_.desktop().shell().run(
        QString::fromLatin1(kShellFocusScript)
            .arg(focus_.name(), QLatin1StringView(FocusOnBus::kInterface)));
}

void GnomeBenchSession::startOthers(Window target) {
    target_ = QString::number(target);
    constexpr int kHexadecimal = 16;
    stage_.desktop().shell().run(
        QString::fromLatin1(kShellScript)
            .arg(target_, QString::number(kLimitsKey.xKeycode, kHexadecimal)));
    stage_.desktop().start(stage_.desktop().withinReach(QStringLiteral(GNOME_LIMIT_PROGRAM)));
}

}  // namespace kestrelbay::bench
