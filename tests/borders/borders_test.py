#!/usr/bin/env python3
"""A border counts only once its check has been seen to fail."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
CHECK = ROOT / "script" / "check-borders"

# A small tree in which every border is used and none is crossed.
CLEAN_TREE = {
    "keys/KeyCode.h": "#include <cstdint>\n",
    "keys/Hotkey.h": '#include "keys/KeyCode.h"\n',
    "tasks/Timers.h": "#include <QObject>\n",
    "hotkeys/HotkeyMatcher.h": '#include "model/Rule.h"\n#include "platform/EventTap.h"\n',
    "hotkeys/HotkeyRecorder.cpp": '#include <QString>\n#include "tasks/Timers.h"\n',
    "model/Rule.h": '#include <QString>\n#include "keys/Hotkey.h"\n',
    "model/RuleJson.cpp": "#include <nlohmann/json.hpp>\n#include <QtCore/QFile>\n",
    "launcher/Launcher.cpp": '#include "model/Rule.h"\n#include "platform/EventTap.h"\n',
    "settings/L.h": '#ifdef __APPLE__\n#endif\n#include "platform/EventTap.h"\n',
    "settings/Language.cpp": "#include <QLocale>\n#ifdef QT_DEBUG\n#endif\n",
    "platform/EventTap.h": '#include <QIcon>\n#include "keys/Hotkey.h"\n',
    "platform/linux/Platform.h": '#include "platform/linux/x11/keyboard/XTap.h"\n',
    "platform/linux/glib/Ptr.h": "#include <gio/gio.h>\n",
    "platform/linux/x11/connection/X.h": "#include <xcb/xcb.h>\n",
    "platform/linux/x11/keyboard/XTap.h":
        '#include "platform/EventTap.h"\n#include "platform/linux/x11/connection/X.h"\n',
    "platform/linux/bus/Bus.h": "#include <QDBusConnection>\n",
    "platform/linux/desktop/Tray.cpp":
        '#include <QDBusMessage>\n#include "platform/linux/bus/Bus.h"\n'
        '#include "platform/linux/glib/Ptr.h"\n',
    "platform/linux/applications/launching/Launch.h": '#include "platform/linux/bus/Bus.h"\n',
    "platform/macos/Tap.mm":
        "#import <Cocoa/Cocoa.h>\n#include <TargetConditionals.h>\n#if TARGET_OS_OSX\n#endif\n",
    "ui/look/Colors.h": '#include <QColor>\n#include "settings/L.h"\n',
    "ui/widgets/Switch.h": '#include <QAbstractButton>\n#include "ui/look/Colors.h"\n',
    "app/instance/Service.cpp": "#include <QDBusConnection>\n",
    "app/toasts/Toast.h": '#include <QLabel>\n#include "ui/widgets/Switch.h"\n',
    "app/AppDelegate.cpp": '#include "app/toasts/Toast.h"\n#include "preferences/window/Window.h"\n',
    "app/main.cpp": '#include <QApplication>\n#include "platform/EventTap.h"\n',
    "preferences/Services.h": '#include "settings/L.h"\n',
    "preferences/rules/Row.h": '#include <QTableView>\n#include "preferences/Services.h"\n',
    "preferences/window/Window.h": '#include "preferences/rules/Row.h"\n',
    "preferences/window/Window.cpp":
        '// #include <X11/Xlib.h>\n/* #include <gio/gio.h>\n#include <xcb/xcb.h> */\n'
        '#include "Window.h"\n#include "Window.moc"\n#include "hotkeys/HotkeyMatcher.h"\n',
}

# file, its whole text, what the check has to say of it
PLANTED = {
    "model includes an upper folder":
        ("model/Rule.cpp", '#include "hotkeys/HotkeyMatcher.h"', "hotkeys/HotkeyMatcher.h"),
    "model includes an interface":
        ("model/Rule.cpp", '#include "platform/EventTap.h"', "platform/EventTap.h"),
    "model includes QtGui": ("model/Rule.cpp", "#include <QIcon>", "QtGui"),
    "model includes Widgets": ("model/Rule.cpp", "#include <QWidget>", "QtWidgets"),
    "hotkeys include Widgets": ("hotkeys/Matcher.cpp", "#include <QtWidgets/QLabel>", "QtWidgets"),
    "hotkeys include Widgets by file name":
        ("hotkeys/Matcher.cpp", "#include <qlabel.h>", "QtWidgets"),
    "hotkeys include the launcher":
        ("hotkeys/Matcher.cpp", '#include "launcher/Launcher.cpp"', "launcher/Launcher.cpp"),
    "hotkeys include a back end":
        ("hotkeys/Matcher.cpp", '#include "platform/linux/Platform.h"', "platform/linux/Platform.h"),
    "hotkeys include the JSON library":
        ("hotkeys/Matcher.cpp", "#include <nlohmann/json.hpp>", "nlohmann/json.hpp"),
    "launcher includes matching":
        ("launcher/A.cpp", '#include "hotkeys/HotkeyMatcher.h"', "hotkeys/HotkeyMatcher.h"),
    "launcher includes Widgets": ("launcher/A.cpp", "#include <QMenu>", "QtWidgets"),
    "launcher includes X11": ("launcher/A.cpp", "#include <X11/Xlib.h>", "X11/Xlib.h"),
    "launcher includes a Linux header":
        ("launcher/A.cpp", "#include <sys/inotify.h>", "sys/inotify.h"),
    "settings include the model":
        ("settings/A.cpp", '#include "model/Rule.h"', "model/Rule.h"),
    "settings include Widgets": ("settings/A.cpp", "#include <QWidget>", "QtWidgets"),
    "settings include D-Bus": ("settings/A.cpp", "#include <dbus/dbus.h>", "dbus/dbus.h"),
    "settings ask for the system": ("settings/A.cpp", "#if defined(Q_OS_LINUX)", "Q_OS_LINUX"),
    "an interface includes Widgets": ("platform/A.h", "#include <QWidget>", "QtWidgets"),
    "an interface includes more of QtGui": ("platform/A.h", "#include <QWindow>", "QtGui"),
    "an interface includes a back end":
        ("platform/A.h", '#include "platform/linux/Platform.h"', "platform/linux/Platform.h"),
    "an interface includes X11": ("platform/A.h", "#include <xcb/xcb.h>", "xcb/xcb.h"),
    "an interface includes the model": ("platform/A.h", '#include "model/Rule.h"', "model/Rule.h"),
    "a source file among the interfaces":
        ("platform/A.cpp", "#include <QString>", "no border is drawn"),
    "the Linux back end includes the model":
        ("platform/linux/A.cpp", '#include "model/Rule.h"', "model/Rule.h"),
    "the Linux back end includes settings":
        ("platform/linux/A.cpp", '#include "settings/L.h"', "settings/L.h"),
    "the Linux back end includes the application":
        ("platform/linux/A.cpp", '#include "app/toasts/Toast.h"', "app/toasts/Toast.h"),
    "a part of the Linux back end includes what brings the parts together":
        ("platform/linux/glib/A.cpp", '#include "platform/linux/Platform.h"', "Platform.h"),
    "a part of the Linux back end includes one beside it":
        ("platform/linux/glib/A.cpp", '#include "platform/linux/x11/connection/X.h"', "X.h"),
    "GLib includes X11": ("platform/linux/glib/A.cpp", "#include <xcb/xcb.h>", "xcb/xcb.h"),
    "X11 includes GLib": ("platform/linux/x11/connection/A.h", "#include <glib.h>", "glib.h"),
    "the look includes the model": ("ui/look/A.cpp", '#include "model/Rule.h"', "model/Rule.h"),
    "the look includes a widget":
        ("ui/look/A.cpp", '#include "ui/widgets/Switch.h"', "ui/widgets/Switch.h"),
    "a widget includes what it is used in":
        ("ui/widgets/A.cpp", '#include "preferences/rules/Row.h"', "preferences/rules/Row.h"),
    "a widget includes a rule": ("ui/widgets/A.cpp", '#include "model/Rule.h"', "model/Rule.h"),
    "keys include a time": ("keys/A.h", '#include "tasks/Timers.h"', "tasks/Timers.h"),
    "the Linux back end includes Widgets":
        ("platform/linux/A.cpp", "#include <QWidget>", "QtWidgets"),
    "the Linux back end includes Cocoa":
        ("platform/linux/A.cpp", "#include <Cocoa/Cocoa.h>", "Cocoa/Cocoa.h"),
    "the macOS back end includes GIO":
        ("platform/macos/A.mm", "#import <gio/gio.h>", "gio/gio.h"),
    "the macOS back end includes the launcher":
        ("platform/macos/A.mm", '#import "launcher/Launcher.cpp"', "launcher/Launcher.cpp"),
    "the macOS back end includes the Linux one":
        ("platform/macos/A.mm", '#import "platform/linux/Platform.h"', "platform/linux/Platform.h"),
    "the application includes a back end":
        ("app/A.cpp", '#include "platform/linux/Platform.h"', "platform/linux/Platform.h"),
    "the application includes X11": ("app/A.cpp", "#include <xcb/xcb.h>", "xcb/xcb.h"),
    "the application includes GIO": ("app/A.cpp", "#include <gio/gio.h>", "gio/gio.h"),
    "the application includes Cocoa":
        ("app/A.cpp", "#include <AppKit/AppKit.h>", "AppKit/AppKit.h"),
    "the application asks for the system": ("app/A.cpp", "#ifdef __linux__", "__linux__"),
    "a part of the application includes the preferences":
        ("app/toasts/A.cpp", '#include "preferences/window/Window.h"', "window/Window.h"),
    "a part of the application includes another":
        ("app/toasts/A.cpp", '#include "app/instance/Service.cpp"', "app/instance/Service.cpp"),
    "a back end's root talks D-Bus":
        ("platform/linux/A.cpp", "#include <QDBusMessage>", "QtDBus"),
    "the tap talks D-Bus":
        ("platform/linux/x11/keyboard/A.cpp", '#include "platform/linux/bus/Bus.h"',
         "platform/linux/bus/Bus.h"),
    "a toast talks D-Bus": ("app/toasts/A.cpp", "#include <QDBusMessage>", "QtDBus"),
    "the preferences include the application":
        ("preferences/rules/A.cpp", '#include "app/toasts/Toast.h"', "app/toasts/Toast.h"),
    "a part of the preferences includes the window":
        ("preferences/rules/A.cpp", '#include "preferences/window/Window.h"', "window/Window.h"),
    "the windows ask for the system":
        ("preferences/A.cpp", "#if 0\n#elif TARGET_OS_MAC", "TARGET_OS_MAC"),
    "the windows include a back end":
        ("preferences/A.cpp", '#include "../platform/linux/Platform.h"', "platform/linux/Platform.h"),
    "an unknown folder": ("misc/A.cpp", "", "no border is drawn"),
    "a header nobody knows": ("app/A.cpp", "#include <boost/any.hpp>", "boost/any.hpp"),
    "spaces and comments do not hide":
        ("model/A.cpp", "/* a */ # /* b */ include <QWidget> // c", "QtWidgets"),
    "a joined line does not hide": ("model/A.cpp", "#include \\\n <QWidget>", "QtWidgets"),
    "a macro hides what is included": ("model/A.cpp", "#include HEADER", "HEADER"),
    "a module import": ("app/A.mm", "@import AppKit;", "@import"),
    "quotes around a system header": ("model/A.cpp", '#include "QWidget"', "QtWidgets"),
    "angles around a header of ours":
        ("settings/A.cpp", "#include <model/Rule.h>", "model/Rule.h"),
}


def check(root):
    return subprocess.run([sys.executable, CHECK, root], text=True, capture_output=True)


class BordersTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        for name, text in CLEAN_TREE.items():
            self.add(name, text)

    def add(self, name, text):
        path = self.root / "src" / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    def test_a_clean_tree_passes(self):
        run = check(self.root)
        self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "", ""))

    def test_a_tree_without_sources_fails(self):
        with tempfile.TemporaryDirectory() as empty:
            self.assertNotEqual(check(empty).returncode, 0)

    def test_each_planted_violation_is_found(self):
        for rule, (name, text, expected) in PLANTED.items():
            with self.subTest(rule):
                path = self.root / "src" / name
                before = path.read_text() if path.exists() else None
                self.add(name, text + "\n")
                run = check(self.root)
                if before is None:
                    path.unlink()
                else:
                    path.write_text(before)
                self.assertEqual(run.returncode, 1, run.stdout)
                lines = [each for each in run.stdout.splitlines() if "circle" not in each]
                self.assertEqual(len(lines), 1, run.stdout)
                self.assertTrue(lines[0].startswith(f"src/{name}:"), run.stdout)
                self.assertIn(expected, lines[0])

    def test_each_arrow_of_a_circle_is_told(self):
        self.add("keys/Names.cpp", '#include "settings/L.h"\n')
        lines = check(self.root).stdout.splitlines()
        self.assertEqual([each for each in lines if "circle" in each], [
            "src/keys/Names.cpp: closes a circle of folders by including settings/L.h",
            "src/platform/EventTap.h: closes a circle of folders by including keys/Hotkey.h",
            "src/settings/L.h: closes a circle of folders by including platform/EventTap.h",
        ])

    def test_violations_are_told_with_their_lines(self):
        self.add("model/A.cpp", "#include <QString>\n\n#include <QWidget>\n#include <QMenu>\n")
        self.assertEqual(check(self.root).stdout.splitlines(), [
            "src/model/A.cpp:3: may not include <QWidget> of QtWidgets",
            "src/model/A.cpp:4: may not include <QMenu> of QtWidgets",
        ])

    def test_our_own_tree_passes(self):
        run = check(ROOT)
        self.assertEqual(run.returncode, 0, run.stdout)


if __name__ == "__main__":
    unittest.main()
