"""X11 with the openbox window manager, the pcmanfm file manager, the dunst notification server and the Orca screen
reader: everything by xdotool."""

import os
import re
import time
from pathlib import Path

import accessible
from accessible import SCREEN, comes, wait_for
from desktop import PICTURES, Desktop, active_window, program


ORCA = PICTURES / "orca.out"
SPEECH = """AudioOutputMethod "alsa"
AddModule "silence" "sd_generic" "silence.conf"
DefaultModule silence
"""
NOTICES = """[global]
follow = none
icon_theme = hicolor
enable_recursive_icon_lookup = true
mouse_left_click = do_action, close_current
"""
VOICE = """GenericExecuteSynth "true"
AddVoice "en" "MALE1" "none"
"""

#: as dunst prints them
NOTICE = re.compile(r"summary: '(.*?)'\n\s*body: '(.*?)'\n")


class Session(Desktop):
    current = "openbox"
    dialog_owner = "xdg-desktop-portal-gtk"
    #: when Orca was last made to write
    nudged = 0

    def start(self):
        reading, writing = os.pipe()
        os.set_inheritable(writing, True)
        self.spawn("Xvfb", "-displayfd", str(writing), "-screen", "0", "{}x{}x24".format(*self.size),
                   inherited=[writing])
        os.close(writing)
        self.announce(DISPLAY=":" + os.read(reading, 16).decode().strip(), XDG_SESSION_TYPE="x11")
        self.spawn("openbox")
        wait_for("window manager", lambda: "window id" in self.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))
        settings = Path.home() / "dunstrc"
        settings.write_text(NOTICES)
        self.spawn("dunst", "-config", str(settings), "-print")

    def start_reader(self):
        # There is no sound device: the speech server is given a voice that is silent.
        settings = Path.home() / ".config" / "speech-dispatcher"
        (settings / "modules").mkdir(parents=True)
        (settings / "speechd.conf").write_text(SPEECH)
        (settings / "modules" / "silence.conf").write_text(VOICE)
        (Path.home() / ".asoundrc").write_text("pcm.!default { type null }\n")
        self.spawn("orca", "--debug-file", str(ORCA))
        wait_for("screen reader", self.speech, 60)

    def keys(self, *combinations):
        self.run("xdotool", "key", "--delay", "50", *combinations)

    def type(self, text):
        self.run("xdotool", "type", "--delay", "20", text)

    def click(self, node):
        x, y = node.centre(SCREEN)
        self.run("xdotool", "mousemove", str(x), str(y), "click", "1")

    def origin(self):
        x, y, _, _ = active_window().extents(SCREEN)
        return x, y

    def window_of(self, kind):
        return wait_for(kind, lambda: self.run("xdotool", "search", "--onlyvisible", "--class", kind,
                                               check=False)).split()[0]

    def open_file_manager(self, path, left, top):
        self.spawn("pcmanfm", str(path), GTK_MODULES="gail:atk-bridge")
        manager = self.window_of("pcmanfm")
        self.run("xdotool", "windowsize", manager, "600", "300", "windowmove", manager, str(left), str(top))
        return manager

    def leave(self):
        manager = self.open_file_manager(Path.home(), 900, 800)
        self.run("xdotool", "windowactivate", "--sync", manager)

    def notification(self):
        said = NOTICE.findall((PICTURES / "dunst.log").read_text())
        return said[-1] if said else None

    def press_notification(self):
        geometry = self.run("xdotool", "getwindowgeometry", "--shell", self.window_of("Dunst"))
        place = {name: int(value) for name, value in re.findall(r"(\w+)=(\d+)", geometry)}
        self.run("xdotool", "mousemove", str(place["X"] + place["WIDTH"] // 2), str(place["Y"] + place["HEIGHT"] // 2),
                 "click", "1")

    def drag(self, path, node):
        left, top = 900, 40  # beside what it is dropped on
        manager = self.open_file_manager(path.parent, left, top)
        try:
            icon = comes(self.icon)
            # On newer desktops the file manager tells nobody of its icons. The first one always lies there.
            from_x, from_y = icon.centre(SCREEN) if icon else (left + 204, top + 98)
            x, y = node.centre(SCREEN)
            self.run("xdotool", "mousemove", str(from_x), str(from_y), "mousedown", "1")
            for step in range(1, 21):
                self.run("xdotool", "mousemove", str(from_x + (x - from_x) * step // 20),
                         str(from_y + (y - from_y) * step // 20))
                time.sleep(0.03)  # a hand is no faster
            self.run("xdotool", "mouseup", "1")
            comes(lambda: program().find(path.name))  # the file manager is asked for its address yet
        finally:
            self.run("xdotool", "windowclose", manager)

    def icon(self):
        """That of the one file in the folder."""
        for each in accessible.programs():
            if each.name() == "pcmanfm":
                return each.find(role="icon")
        return None

    def speech(self):
        # Orca keeps back what it has written until there is more of it: a key that does nothing brings more. Many of
        # them would hold up what it says.
        if time.monotonic() > self.nudged + 3:
            self.nudged = time.monotonic()
            self.keys("shift")
        return re.findall(r"SPEECH OUTPUT: '(.*?)'", ORCA.read_text(errors="replace")) if ORCA.exists() else []

    def take_picture(self, path):
        self.run("import", "-window", "root", str(path))
