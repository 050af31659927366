#!/usr/bin/env python3
"""Uses the installed program on one desktop as a person would, and says of each step whether it was seen.
driver.py DESKTOP, as an ordinary person, on a session bus of its own. Leaves pictures and table.txt in ~/pictures."""

import importlib
import json
import re
import subprocess
import sys
import traceback
import urllib.request
from pathlib import Path

import accessible
from accessible import FOCUSED, SCREEN, SHOWING, GLib, Missing, comes, wait_for
from desktop import PICTURES, active_window, processes, program, windows

KEY = "harbor-demo-key"
WORKSPACE = "Harbor Films"
VIDEO = "Harbor at dawn"
API = "https://tessary.example/api"
ENTRY = "/usr/share/applications/tessary_macos_uploader.desktop"
SAMPLE = Path.home() / "sample.mp4"
LARGE = Path.home() / "Videos" / "large.mp4"
REFUSAL = "The service does not know a workspace for this key."
QUESTION = "Quit while an upload is under way?"
DIALOGS = "file chooser", "dialog"
STEPS = []
NAMELESS = set()


def step(title):
    """A line of the table, in the order of the functions. What the function returns is said beside "seen"."""
    return lambda function: STEPS.append((title, function)) or function


def showing(name, role=None, seconds=60):
    return wait_for(f"\"{name}\"", lambda: program().find(name, role), seconds)


def gone(name):
    return wait_for(f"end of \"{name}\"", lambda: not program().find(name))


def log():
    """That of the window in front."""
    return wait_for("log", lambda: active_window() and active_window().find("Upload log"))


def click_into_log(desktop):
    desktop.click(log())
    wait_for("focus in the log", lambda: log().has(FOCUSED))


def library():
    request = urllib.request.Request(API + "/library", headers={"X-TESSARY-APPKEY": KEY})
    return json.load(urllib.request.urlopen(request, timeout=30))


def file_dialog():
    """The name of the program that shows a file dialog; "Qt" for the toolkit's own, which lies in the window."""
    for each in accessible.programs():
        if any(window.role() in DIALOGS and window.has(SHOWING) for window in each.children()):
            return each.name()
    own = program().find(role="dialog")
    return "Qt" if own and own.find("Open", "button") else None


def choose(desktop, file):
    """Through the file dialog. Returns whose dialog it was."""
    desktop.click(showing("Choose a file"))
    owner = wait_for("file dialog", file_dialog)
    desktop.picture("dialog")
    if owner != desktop.dialog_owner:
        desktop.keys("Escape")
        raise Missing(f"{desktop.dialog_owner}: the dialog is of {owner}")
    desktop.enter_path(file)
    desktop.keys("Return")
    # The first one may have been taken for the choice of a completion.
    wait_for("end of the file dialog", lambda: comes(lambda: not file_dialog()) or desktop.keys("Return"))
    showing(file.name)
    return owner


@step("starts from its menu entry")
def starts(desktop):
    subprocess.Popen(["gio", "launch", ENTRY], stdin=subprocess.DEVNULL)
    wait_for("program", program)
    wait_for("window in front", lambda: active_window() and showing("API Key", "text").has(FOCUSED))


@step("is wholly on the screen")
def is_whole(desktop):
    left, top = desktop.origin()
    _, _, width, height = active_window().extents(SCREEN)
    place = f"{width:g}x{height:g} at {left:g}, {top:g} of {desktop.size[0]}x{desktop.size[1]}"
    if left < 0 or top < 0 or left + width > desktop.size[0] or top + height > desktop.size[1]:
        raise Missing(f"no room for it: {place}")
    return place


@step("says why a key is refused")
def refuses_key(desktop):
    desktop.type("no-such-key")
    wait_for("key as it was typed", lambda: showing("API Key", "text").text() == "no-such-key")
    desktop.keys("Return")
    showing(REFUSAL, "label")
    wait_for("empty field with the focus", lambda: showing("API Key", "text").has(FOCUSED)
             and not showing("API Key", "text").text())
    if "is_told" not in desktop.not_done:
        return wait_for("word of it by Orca", lambda: next((each for each in desktop.speech() if REFUSAL in each), None))
    return None


@step("signs in")
def signs_in(desktop):
    desktop.type(KEY)
    wait_for("key as it was typed", lambda: showing("API Key", "text").text() == KEY)
    desktop.keys("Return")
    showing(WORKSPACE)


@step("chooses by the dialog")
def chooses(desktop):
    owner = choose(desktop, SAMPLE)
    return f"of {owner}"


@step("names it")
def names(desktop):
    desktop.click(showing("Video Name", "text"))
    desktop.type(VIDEO)
    # Before anything else has the focus: a screen reader holds every key for a while before the program gets it.
    wait_for("the name", lambda: showing("Video Name", "text").text() == VIDEO)
    desktop.click(showing("180"))


@step("uploads it")
def uploads(desktop):
    desktop.click(showing("Upload", "button"))
    showing("Upload completed successfully!", seconds=120)
    desktop.picture("success")
    wait_for("library entry in the log", lambda: "Video uploaded. Library ID: " in log().text())


@step("is in the library")
def in_library(desktop):
    [video] = library()
    got = video["video_name"], video["perspective"], video["file_format_3d"]
    if got != (VIDEO, 180, "SBS"):
        raise Missing(f"another video: {got}")


@step("has the file's bytes")
def same_bytes(desktop):
    blob = urllib.request.urlopen(library()[0]["signed_url_left"], timeout=30).read()
    if blob != SAMPLE.read_bytes():
        raise Missing(f"another content of {len(blob)} bytes")
    return f"{len(blob)} bytes"


@step("is told by Orca")
def is_told(desktop):
    return wait_for("word of the success", lambda: next(
        (each for each in desktop.speech() if "Upload completed successfully!" in each), None))


@step("takes a dragged file")
def takes_drop(desktop):
    desktop.click(showing("Remove"))
    desktop.drag(LARGE, showing("Choose a file"))
    showing(LARGE.name)


@step("asks before it quits")
def asks(desktop):
    if not program().find(LARGE.name):
        desktop.click(showing("Remove"))
        choose(desktop, LARGE)
    desktop.click(showing("Upload", "button"))
    wait_for("transfer tool", lambda: processes("azcopy"))
    desktop.keys("ctrl+q")
    showing(QUESTION)
    desktop.picture("question")
    desktop.keys("Escape")
    gone(QUESTION)


@step("hears how far it is")
def hears_progress(desktop):
    # Of the upload under way; the one before has come to the whole.
    return wait_for("percentage", lambda: next(
        (each for each in desktop.speech() if each.endswith("percent.") and not each.startswith("100 ")), None))


@step("says in its title how long")
def says_how_long(desktop):
    return wait_for("time left in the title",
                    lambda: re.search(r"\d+ % · .+ left(?= - )", active_window().name()))[0]


@step("cancels an upload")
def cancels(desktop):
    desktop.click(showing("Cancel upload"))
    showing("Upload canceled")
    wait_for("end of the transfer tool", lambda: not processes("azcopy"))
    if len(library()) != 1:
        raise Missing("the library has gained an entry")


@step("leaves the focus at Upload")
def leaves_focus(_):
    wait_for("focus", lambda: showing("Upload", "button").has(FOCUSED))


@step("is told of the end elsewhere")
def is_notified(desktop):
    desktop.click(showing("Remove"))
    choose(desktop, SAMPLE)
    desktop.click(showing("Upload", "button"))
    wait_for("transfer tool", lambda: processes("azcopy"))
    desktop.leave()
    wait_for("another window in front", lambda: not active_window())
    words = wait_for("notification", desktop.notification, 120)
    if words != ("Upload complete", f"\"{VIDEO}\" is in the library of {WORKSPACE}."):
        raise Missing(f"other words: {words}")
    desktop.picture("notification")
    desktop.press_notification()
    wait_for("the program's window in front", active_window)
    return ": ".join(words)


@step("has a name for everything")
def has_names(desktop):
    if NAMELESS:
        raise Missing(f"without a name: {', '.join(sorted(NAMELESS))}")


@step("opens a second window")
def second_window(desktop):
    desktop.keys("ctrl+n")
    wait_for("second window", lambda: len(windows()) == 2)


@step("closes it, focus in the log")
def closes_window(desktop):
    click_into_log(desktop)
    desktop.keys("ctrl+w")
    wait_for("one window", lambda: len(windows()) == 1, 20)


@step("quits, focus in the log")
def quits(desktop):
    click_into_log(desktop)
    desktop.keys("ctrl+q")
    wait_for("end of the program", lambda: not processes("tessary_macos_uploader"), 20)


def take(function, desktop):
    """What the table says about a step, and whether that is a failure."""
    reason = desktop.not_done.get(function.__name__)
    if reason:
        return f"not: {reason}", False
    try:
        return " ".join(["seen", function(desktop) or ""]), False
    except (Missing, GLib.Error) as problem:
        return f"FAILED: {problem}", True
    except Exception as problem:
        traceback.print_exc()
        return f"FAILED: {problem!r}", True


def note_nameless():
    """What assistive technology is told of after this step and has no name."""
    if not processes("tessary_macos_uploader"):
        return
    for each in program().below():
        try:
            if not each.name():
                NAMELESS.add(each.role())
        except GLib.Error:
            pass  # gone meanwhile


def main(name):
    PICTURES.mkdir(exist_ok=True)
    desktop = importlib.import_module(name).Session()
    desktop.start()
    accessible.listen()
    desktop.start_reader()
    failures = 0
    with open(PICTURES / "table.txt", "w", encoding="utf-8") as table:
        for number, (title, function) in enumerate(STEPS, 1):
            desktop.prefix = f"{number:02}-{function.__name__.replace('_', '-')}"
            verdict, failed = take(function, desktop)
            failures += failed
            desktop.picture()
            note_nameless()
            print(f"{name:6} {title:28} {verdict}", file=table, flush=True)
            if failed and processes("tessary_macos_uploader"):
                (PICTURES / f"{desktop.prefix}.txt").write_text("\n".join(program().outline()))
    if "is_told" not in desktop.not_done:
        (PICTURES / "speech.txt").write_text("\n".join(desktop.speech()))
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
