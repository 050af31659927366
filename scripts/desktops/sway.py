"""sway without a screen: keys and the pointer by the protocols it has for such, pictures by grim."""

import json
import os
from pathlib import Path

from accessible import WINDOW, wait_for
from desktop import Desktop
from wayland import VirtualInput


class Session(Desktop):
    current = "sway"
    dialog_owner = "xdg-desktop-portal-gtk"
    not_done = {"takes_drop": "nothing is dragged here, only on X11", "is_told": "Orca runs on X11 only",
                "hears_progress": "Orca runs on X11 only",
                "is_notified": "nothing here shows notifications, GNOME Shell and dunst on X11 do"}

    def start(self):
        settings = Path.home() / "sway-config"
        settings.write_text(f"output HEADLESS-1 resolution {self.size[0]}x{self.size[1]}\n")
        self.spawn("sway", "--config", str(settings), WLR_BACKENDS="headless", WLR_RENDERER="pixman",
                   WLR_LIBINPUT_NO_DEVICES="1", XDG_CURRENT_DESKTOP=self.current)
        runtime = Path(os.environ["XDG_RUNTIME_DIR"])
        display = wait_for("compositor", lambda: [*runtime.glob("wayland-?")])[0]
        control = wait_for("sway's control", lambda: [*runtime.glob("sway-ipc.*")])[0]
        self.announce(WAYLAND_DISPLAY=display.name, SWAYSOCK=str(control), XDG_SESSION_TYPE="wayland")
        self.input = VirtualInput(self.run("xkbcli", "compile-keymap", "--layout", "us").encode(), *self.size)

    def keys(self, *combinations):
        self.input.keys(*combinations)

    def type(self, text):
        self.input.type(text)

    def click(self, node):
        x, y = node.centre(WINDOW)
        left, top = self.origin()
        self.input.click(left + x, top + y)

    def origin(self):
        def windows(node):
            yield node
            for child in node["nodes"] + node["floating_nodes"]:
                yield from windows(child)
        tree = json.loads(self.run("swaymsg", "-t", "get_tree", "-r"))
        window = next(each for each in windows(tree) if each["focused"])
        return (window["rect"]["x"] + window["window_rect"]["x"], window["rect"]["y"] + window["window_rect"]["y"])

    def take_picture(self, path):
        self.run("grim", str(path))
