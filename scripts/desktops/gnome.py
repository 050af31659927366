"""GNOME Shell without a screen. In its unsafe mode it runs what it is told to: so it is asked where windows lie, and
given a keyboard and a pointer that exist only there."""

import html
import json
import os
import time

from gi.repository import Gio, GLib

from accessible import SCREEN, WINDOW, wait_for
from desktop import Desktop, active_window

SOCKET = "wayland-check"
KEYS = {"Return": 0xFF0D, "Escape": 0xFF1B, "ctrl": 0xFFE3, "shift": 0xFFE1, "alt": 0xFFE9}
DEVICES = """
const {Clutter} = imports.gi;
const seat = Clutter.get_default_backend().get_default_seat();
global.checkKeyboard = seat.create_virtual_device(Clutter.InputDeviceType.KEYBOARD_DEVICE);
global.checkPointer = seat.create_virtual_device(Clutter.InputDeviceType.POINTER_DEVICE);
true
"""
OVERVIEW = """
const started = !Main.layoutManager._startingUp;
if (started) Main.overview.hide();
started && !Main.overview.visible
"""
KEY = "global.checkKeyboard.notify_keyval(imports.gi.GLib.get_monotonic_time(), {}, {});"
MOVE = "global.checkPointer.notify_absolute_motion(imports.gi.GLib.get_monotonic_time(), {}, {}); true"
BUTTON = "global.checkPointer.notify_button(imports.gi.GLib.get_monotonic_time(), 1, {}); true"
FRAME = "let frame = global.display.focus_window.get_frame_rect(); [frame.x, frame.y, frame.width, frame.height]"


BANNER = """
const {{_notification: shown, _banner: banner}} = Main.messageTray;
shown && banner ? {} : null
"""
WORDS = BANNER.format("[shown.title, shown.bannerBodyText]")
PLACE = BANNER.format("[...banner.get_transformed_position(), ...banner.get_transformed_size()]")


class Session(Desktop):
    current = "GNOME"
    size = 1400, 1000
    dialog_owner = "tessary_macos_uploader"
    not_done = {"takes_drop": "nothing is dragged here, only on X11", "is_told": "Orca runs on X11 only",
                "hears_progress": "Orca runs on X11 only"}

    def start(self):
        # The shell asks the system's session manager about its own session. Here there is none but this.
        bus = "unix:path=" + os.path.join(os.environ["XDG_RUNTIME_DIR"], "system-bus")
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = bus
        self.spawn("dbus-daemon", "--session", "--nofork", "--address=" + bus)
        wait_for("system bus", lambda: os.path.exists(bus.partition("=")[2]))
        self.spawn("python3", "-m", "dbusmock", "--system", "--template", "logind")
        wait_for("session manager", lambda: "login1" in self.run(
            "gdbus", "call", "--system", "--dest", "org.freedesktop.DBus", "--object-path", "/org/freedesktop/DBus",
            "--method", "org.freedesktop.DBus.ListNames"))
        self.spawn("gnome-shell", "--headless", "--wayland", "--no-x11", "--wayland-display", SOCKET,
                   "--virtual-monitor", "{}x{}".format(*self.size), "--unsafe-mode", XDG_CURRENT_DESKTOP=self.current)
        wait_for("compositor", lambda: os.path.exists(os.path.join(os.environ["XDG_RUNTIME_DIR"], SOCKET)), 60)
        self.announce(WAYLAND_DISPLAY=SOCKET, XDG_SESSION_TYPE="wayland")
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        wait_for("shell", lambda: self.evaluate(DEVICES), 60)
        wait_for("free desktop", lambda: self.evaluate(OVERVIEW))

    def evaluate(self, code):
        done, answer = self.shell("org.gnome.Shell", "/org/gnome/Shell", "Eval", "(s)", code)
        if not done:
            raise RuntimeError(f"the shell says {answer}")
        return json.loads(answer)

    def shell(self, interface, path, method, signature, *arguments):
        return self.bus.call_sync("org.gnome.Shell", path, interface, method, GLib.Variant(signature, arguments),
                                  None, Gio.DBusCallFlags.NONE, 20000, None).unpack()

    def keys(self, *combinations):
        for combination in combinations:
            values = [KEYS.get(part) or ord(part) for part in combination.split("+")]
            strokes = [(value, 1) for value in values] + [(value, 0) for value in reversed(values)]
            # All at once: on a busy machine a key would else be held long enough to repeat.
            self.evaluate("".join(KEY.format(*stroke) for stroke in strokes) + "true")

    def type(self, text):
        self.keys(*text)

    def click(self, node):
        x, y = node.centre(WINDOW)
        left, top = self.origin()
        self.click_at(left + x, top + y)

    def click_at(self, x, y):
        self.evaluate(MOVE.format(x, y))
        self.evaluate(BUTTON.format(1))
        self.evaluate(BUTTON.format(0))

    def leave(self):
        time.sleep(1)  # at each change of the focus the toolkit asks for its window, and would have it brought back
        self.evaluate("global.display.focus_window.minimize(); true")

    def notification(self):
        words = self.evaluate(WORDS)
        return words and (words[0], html.unescape(words[1]))  # the text is markup

    def press_notification(self):
        x, y, width, height = self.evaluate(PLACE)
        self.click_at(x + width / 2, y + height / 2)

    def origin(self):
        # Inside the frame that the toolkit draws.
        x, y, width, height = self.evaluate(FRAME)
        window = wait_for("active window", active_window)
        _, _, inner_width, inner_height = window.extents(SCREEN)
        side = (width - inner_width) / 2
        return x + side, y + height - inner_height - side

    def take_picture(self, path):
        self.shell("org.gnome.Shell.Screenshot", "/org/gnome/Shell/Screenshot", "Screenshot", "(bbs)", False, False,
                   str(path))
