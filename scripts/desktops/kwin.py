"""KWin without a screen. Keys and the pointer go through its own protocol for such; where a window lies is asked of a
script that KWin runs."""

import os
import re
from pathlib import Path

from accessible import WINDOW, wait_for
from desktop import PICTURES, Desktop
from wayland import FakeInput

SOCKET = "wayland-check"
ORIGIN = """
var window = workspace.activeClient;
print("origin:", window.bufferGeometry.x, window.bufferGeometry.y);
"""


class Session(Desktop):
    current = "KDE"
    dialog_owner = "xdg-desktop-portal-kde"
    not_done = {"takes_drop": "nothing is dragged here, only on X11", "is_told": "Orca runs on X11 only",
                "hears_progress": "Orca runs on X11 only",
                "is_notified": "nothing here shows notifications, GNOME Shell and dunst on X11 do"}

    def start(self):
        width, height = self.size
        self.spawn("kwin_wayland", "--virtual", "--width", str(width), "--height", str(height), "--socket", SOCKET,
                   XDG_CURRENT_DESKTOP=self.current, KWIN_SCREENSHOT_NO_PERMISSION_CHECKS="1",
                   KWIN_WAYLAND_NO_PERMISSION_CHECKS="1", QT_FORCE_STDERR_LOGGING="1",
                   QT_LOGGING_RULES="kwin_scripting.debug=true;js.debug=true")
        socket = Path(os.environ["XDG_RUNTIME_DIR"]) / SOCKET
        wait_for("compositor", socket.exists)
        self.announce(WAYLAND_DISPLAY=SOCKET, XDG_SESSION_TYPE="wayland", KDE_FULL_SESSION="true",
                      KDE_SESSION_VERSION="5")
        self.input = FakeInput()

    def keys(self, *combinations):
        self.input.keys(*combinations)

    def type(self, text):
        self.input.type(text)

    def click(self, node):
        x, y = node.centre(WINDOW)
        left, top = self.origin()
        self.input.click(left + x, top + y)

    def origin(self):
        script = Path.home() / "origin.js"
        script.write_text(ORIGIN)
        log = PICTURES / "kwin_wayland.log"
        before = log.stat().st_size
        number = self.dbus("/Scripting", "org.kde.kwin.Scripting.loadScript", str(script)).strip("(),")
        self.dbus(f"/{number}", "org.kde.kwin.Script.run")
        found = wait_for("answer of KWin", lambda: re.search(r"origin: ([0-9.]+) ([0-9.]+)",
                                                             log.read_text(errors="replace")[before:]))
        self.dbus("/Scripting", "org.kde.kwin.Scripting.unloadScript", str(script))
        return float(found[1]), float(found[2])

    def dbus(self, path, method, *arguments):
        return self.run("gdbus", "call", "--session", "--dest", "org.kde.KWin", "--object-path", path,
                        "--method", method, *arguments).strip()

    def take_picture(self, path):
        made = self.dbus("/Screenshot", "org.kde.kwin.Screenshot.screenshotFullscreen")
        Path(made.split("'")[1]).rename(path)

    def enter_path(self, path):
        self.type(str(path))
