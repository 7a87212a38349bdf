// The part of KestrelBay that runs within GNOME Shell, which lets no program from outside bind
// keys or see windows.
//
// Whoever calls first is the client, as long as they stay on the bus; all others are turned away,
// and nobody but the client is told of a press. That keeps two instances apart. It is no wall
// against a program of the same user outside a sandbox, which can add extensions of its own to the
// Shell; one inside does not get to this name, unless its sandbox lets it talk to the whole bus.
// What such a program would gain is bounded all the same: it could read the titles of windows,
// bring them forward and minimise them, and bind keys, but none that type text.

const NAME = 'org.kestrelbay.Shell';
const PATH = '/org/kestrelbay/Shell';
const INTERFACE = 'org.kestrelbay.Shell1';

// Windows: id, process, class and instance (of a Wayland window its application id), role, GTK's
// application id, title, Meta.WindowType, the window it belongs to or 0, is it minimised, has it the
// focus, does it demand attention. The last used one comes first.
const DESCRIPTION = `
<node>
  <interface name="${INTERFACE}">
    <method name="SetHotkeys">
      <arg name="accelerators" type="as" direction="in"/>
      <arg name="refused" type="as" direction="out"/>
    </method>
    <method name="Windows">
      <arg name="windows" type="a(tisssssutbbb)" direction="out"/>
    </method>
    <method name="BringForward">
      <arg name="minimised" type="at" direction="in"/>
      <arg name="focused" type="t" direction="in"/>
    </method>
    <method name="Minimise">
      <arg name="windows" type="at" direction="in"/>
    </method>
    <signal name="Pressed">
      <arg name="accelerator" type="s"/>
    </signal>
    <signal name="BindingsChanged"/>
    <signal name="WindowShown"/>
  </interface>
</node>`;

// Modifiers, and a key by its position: X's key code, which mutter takes in the place of a name.
const ACCELERATOR = /^((?:<(?:Super|Control|Alt|Shift)>)*)0x([0-9a-f]{2})$/;
// F1 to F10, F11 and F12, F13 to F24.
const FUNCTION_KEYS = [[67, 76], [95, 96], [191, 202]];

// Where users bind keys of the desktop's.
const SETTINGS_OF_KEYS = [
    'org.gnome.desktop.wm.keybindings',
    'org.gnome.mutter.keybindings',
    'org.gnome.mutter.wayland.keybindings',
    'org.gnome.shell.keybindings',
    'org.gnome.settings-daemon.plugins.media-keys',
];

function typesNoText(accelerator) {
    const [, modifiers, code] = ACCELERATOR.exec(accelerator) ?? [];
    if (code === undefined)
        return false;
    const key = parseInt(code, 16);
    return /Super|Control|Alt/.test(modifiers) ||
        FUNCTION_KEYS.some(([first, last]) => first <= key && key <= last);
}

class Hotkeys {
    constructor(pressed) {
        this._actions = new Map();
        this._activated = global.display.connect('accelerator-activated', (_display, action) => {
            for (const [accelerator, own] of this._actions) {
                if (own === action)
                    pressed(accelerator);
            }
        });
    }

    destroy() {
        global.display.disconnect(this._activated);
        this.set([]);
    }

    // Those that are refused.
    set(accelerators) {
        const wanted = new Set(accelerators);
        for (const accelerator of this._actions.keys()) {
            if (!wanted.has(accelerator))
                this._ungrab(accelerator);
        }
        return [...wanted].filter(accelerator => !this._grab(accelerator));
    }

    _grab(accelerator) {
        if (this._actions.has(accelerator))
            return true;
        if (!typesNoText(accelerator))
            return false;
        const action =
            global.display.grab_accelerator(accelerator, Meta.KeyBindingFlags.IGNORE_AUTOREPEAT);
        if (action === Meta.KeyBindingAction.NONE)
            return false;
        Main.wm.allowKeybinding(Meta.external_binding_name_for_action(action),
            Shell.ActionMode.NORMAL | Shell.ActionMode.OVERVIEW);
        this._actions.set(accelerator, action);
        return true;
    }

    _ungrab(accelerator) {
        const action = this._actions.get(accelerator);
        this._actions.delete(accelerator);
        global.display.ungrab_accelerator(action);
        Main.wm.allowKeybinding(Meta.external_binding_name_for_action(action),
            Shell.ActionMode.NONE);
    }
}

class Windows {
    constructor(shown) {
        this._used = this._all().sort((one, other) => other.get_user_time() - one.get_user_time());
        this._focused = global.display.connect('notify::focus-window', () => this._noteUse());
        this._shown = global.window_manager.connect('map', () => shown());
    }

    destroy() {
        global.display.disconnect(this._focused);
        global.window_manager.disconnect(this._shown);
        this._used = [];
    }

    list() {
        const all = this._all();
        this._used = this._used.filter(window => all.includes(window));
        this._used.push(...all.filter(window => !this._used.includes(window)));
        return this._used.map(window => [
            window.get_id(),
            window.get_pid(),
            window.get_wm_class() ?? '',
            window.get_wm_class_instance() ?? '',
            window.get_role() ?? '',
            window.get_gtk_application_id() ?? '',
            window.get_title() ?? '',
            window.get_window_type(),
            window.get_transient_for()?.get_id() ?? 0,
            window.minimized,
            window.has_focus(),
            window.demands_attention || window.urgent,
        ]);
    }

    bringForward(minimised, focused) {
        for (const window of this._those(minimised))
            window.unminimize();
        // The user's own press asks for it, so it is never too old to be heard.
        for (const window of this._those([focused]))
            Main.activateWindow(window, global.display.get_current_time_roundtrip());
    }

    minimise(windows) {
        for (const window of this._those(windows))
            window.minimize();
    }

    _noteUse() {
        const window = global.display.focus_window;
        if (window)
            this._used = [window, ...this._used.filter(other => other !== window)];
    }

    _all() {
        return global.get_window_actors()
            .map(actor => actor.meta_window)
            .filter(window => window && !window.is_override_redirect());
    }

    _those(ids) {
        const all = this._all();
        return ids.map(id => all.find(window => window.get_id() === id)).filter(window => window);
    }
}

class Service {
    constructor() {
        this._windows = new Windows(() => this._tell('WindowShown', null));
        this._hotkeys = new Hotkeys(accelerator =>
            this._tell('Pressed', new GLib.Variant('(s)', [accelerator])));
        this._settings = SETTINGS_OF_KEYS
            .filter(id => Gio.SettingsSchemaSource.get_default().lookup(id, true))
            .map(id => new Gio.Settings({schema_id: id}));
        this._changes = this._settings.map(settings =>
            settings.connect('changed', () => this._tell('BindingsChanged', null)));
        this._object = Gio.DBusExportedObject.wrapJSObject(DESCRIPTION, this);
        this._object.export(Gio.DBus.session, PATH);
        this._name = Gio.bus_own_name_on_connection(
            Gio.DBus.session, NAME, Gio.BusNameOwnerFlags.NONE, null, null);
    }

    destroy() {
        Gio.bus_unown_name(this._name);
        this._object.unexport();
        this._settings.forEach((settings, i) => settings.disconnect(this._changes[i]));
        this._forgetClient();
        this._hotkeys.destroy();
        this._windows.destroy();
    }

    // What D-Bus calls.

    SetHotkeysAsync([accelerators], invocation) {
        this._answer(invocation, '(as)', () => [this._hotkeys.set(accelerators)]);
    }

    WindowsAsync(_nothing, invocation) {
        this._answer(invocation, '(a(tisssssutbbb))', () => [this._windows.list()]);
    }

    BringForwardAsync([minimised, focused], invocation) {
        this._answer(invocation, '()', () => {
            this._windows.bringForward(minimised, focused);
            return [];
        });
    }

    MinimiseAsync([windows], invocation) {
        this._answer(invocation, '()', () => {
            this._windows.minimise(windows);
            return [];
        });
    }

    _answer(invocation, signature, act) {
        if (!this._admits(invocation.get_sender())) {
            invocation.return_error_literal(Gio.DBusError, Gio.DBusError.ACCESS_DENIED,
                'another program has the hotkeys');
            return;
        }
        try {
            invocation.return_value(new GLib.Variant(signature, act()));
        } catch (error) {
            logError(error, NAME);
            invocation.return_error_literal(Gio.DBusError, Gio.DBusError.FAILED, `${error}`);
        }
    }

    _admits(sender) {
        if (!this._client) {
            this._client = sender;
            // It gives everything back however the program ends.
            this._watch = Gio.bus_watch_name_on_connection(Gio.DBus.session, sender,
                Gio.BusNameWatcherFlags.NONE, null, () => this._dropClient());
        }
        return this._client === sender;
    }

    _dropClient() {
        this._forgetClient();
        this._hotkeys.set([]);
    }

    _forgetClient() {
        if (this._client)
            Gio.bus_unwatch_name(this._watch);
        this._client = null;
    }

    _tell(signal, parameters) {
        if (this._client)
            Gio.DBus.session.emit_signal(this._client, PATH, INTERFACE, signal, parameters);
    }
}
