"""What all desktops have in common: processes, pictures, and the program as it is found in them."""

import os
import subprocess
import time
from pathlib import Path

import accessible
from accessible import ACTIVE, SHOWING, comes, wait_for

PICTURES = Path.home() / "pictures"


class Desktop:
    """One desktop. Each kind says how it is started, and how it is typed into, clicked in and photographed."""

    #: how this desktop is called in XDG_CURRENT_DESKTOP
    current = ""
    #: whose file dialog is expected here
    dialog_owner = ""
    #: width and height of the screen
    size = 1600, 1200
    #: what is not done here, by the step's function, with the reason
    not_done = {}
    #: what the pictures of the present step are called
    prefix = ""

    def start(self):
        """Brings the desktop up and puts what programs need to know about it into the environment."""
        raise NotImplementedError

    def keys(self, *combinations):
        """Types key combinations such as ctrl+n, one after the other."""
        raise NotImplementedError

    def type(self, text):
        raise NotImplementedError

    def click(self, node):
        """Clicks into the middle of something in the window in front."""
        raise NotImplementedError

    def origin(self):
        """Where on the screen the content of the window in front begins."""
        raise NotImplementedError

    def take_picture(self, path):
        raise NotImplementedError

    def drag(self, path, node):
        """Drags a file out of a file manager onto something."""
        raise NotImplementedError

    def leave(self):
        """Takes the program's window out of the front."""
        raise NotImplementedError

    def notification(self):
        """Title and text of the notification that is shown."""
        raise NotImplementedError

    def press_notification(self):
        raise NotImplementedError

    def enter_path(self, path):
        """Types a path into the file dialog that has the focus."""
        # The focus may be on its way, and the keys that ask for a place to type at would also put it away.
        wait_for("place to type a path",
                 lambda: accessible.focused("text") or self.keys("ctrl+l") or comes(lambda: accessible.focused("text")))
        self.type(str(path))

    def picture(self, what=""):
        time.sleep(0.5)  # what is told is not drawn yet
        self.take_picture(PICTURES / f"{self.prefix}{'-' + what if what else ''}.png")

    def start_reader(self):
        """Starts the screen reader, where there is one."""

    def speech(self):
        """What the screen reader has said so far."""
        raise NotImplementedError

    def spawn(self, *command, inherited=(), **variables):
        """Starts a process of the desktop, which lives until the desktop ends. What it says is kept."""
        log = open(PICTURES / (Path(command[0]).name + ".log"), "ab")
        return subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=log, stderr=log, pass_fds=inherited,
                                env={**os.environ, **variables})

    def announce(self, **variables):
        """Makes variables known to the programs and to the services that the session bus starts."""
        variables["XDG_CURRENT_DESKTOP"] = self.current
        os.environ.update(variables)
        subprocess.run(["dbus-update-activation-environment", *variables], check=True)

    def run(self, *command, check=True):
        return subprocess.run(command, check=check, capture_output=True, text=True, timeout=30).stdout


def program():
    """The program as assistive technology sees it."""
    for each in accessible.programs():
        # Its file dialog may be of another toolkit, which speaks for itself.
        if each.name() == "tessary_macos_uploader" and each.value("Application", "ToolkitName") == "Qt":
            return each
    raise accessible.Missing("the program does not show itself")


def windows():
    """The program's."""
    return [window for window in program().children() if window.has(SHOWING)]


def active_window():
    """That of the program's windows which is in front."""
    return next((window for window in windows() if window.has(ACTIVE)), None)


def processes(name):
    """The running processes of this name."""
    found = []
    for folder in Path("/proc").glob("[0-9]*"):
        try:
            if os.readlink(folder / "exe").rsplit("/", 1)[-1] == name:
                found.append(int(folder.name))
        except OSError:
            pass
    return found
