"""Speaks just enough of the Wayland protocol to move a pointer and to type, by whichever interface a compositor has."""

import os
import socket
import struct
import time

DISPLAY, REGISTRY = 1, 2
LEFT_BUTTON = 0x110
#: where the letters of a US keyboard are
ROWS = {2: "1234567890-=", 16: "qwertyuiop[]", 30: "asdfghjkl;'`", 43: "\\zxcvbnm,./", 57: " "}
SHIFTED = dict(zip("!@#$%^&*()_+{}:\"~|<>?", "1234567890-=[];'`\\,./"))
NAMED = {"Return": 28, "Escape": 1, "ctrl": 29, "shift": 42, "alt": 56, "Tab": 15}
#: what a keyboard says is held while these keys are down
MASKS = {NAMED["shift"]: 1, NAMED["ctrl"]: 4, NAMED["alt"]: 8}
KEYS = {letter: first + index for first, row in ROWS.items() for index, letter in enumerate(row)}


def packed(argument):
    if isinstance(argument, str):
        text = argument.encode() + b"\0"
        return struct.pack("=I", len(text)) + text + b"\0" * (-len(text) % 4)
    return struct.pack("=I", argument & 0xFFFFFFFF)


class Connection:
    def __init__(self):
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.connect(os.path.join(os.environ["XDG_RUNTIME_DIR"], os.environ["WAYLAND_DISPLAY"]))
        self.last, self.globals = REGISTRY, {}
        self.send(DISPLAY, 1, REGISTRY)
        self.wait()

    def send(self, target, operation, *arguments):
        body = b"".join(map(packed, arguments))
        self.socket.sendall(struct.pack("=II", target, (8 + len(body)) << 16 | operation) + body)

    def new(self):
        self.last += 1
        return self.last

    def bind(self, interface, version):
        target = self.new()
        self.send(REGISTRY, 0, self.globals[interface], interface, version, target)
        return target

    def wait(self):
        """Until the compositor has done all it was sent."""
        callback = self.new()
        self.send(DISPLAY, 0, callback)
        while True:
            target, operation, body = self.receive()
            if target == callback:
                return
            if target == DISPLAY and operation == 0:
                raise RuntimeError(f"the compositor refuses: {body!r}")
            if target == REGISTRY and operation == 0:
                name, length = struct.unpack_from("=II", body)
                self.globals[body[8:8 + length - 1].decode()] = name

    def receive(self):
        target, head = struct.unpack("=II", self.read(8))
        return target, head & 0xFFFF, self.read((head >> 16) - 8)

    def read(self, count):
        data = b""
        while len(data) < count:
            received = self.socket.recv(count - len(data))
            if not received:
                raise RuntimeError("the compositor has gone")
            data += received
        return data


class Input(Connection):
    """Types and points, with what a kind of it can do."""

    def chord(self, codes):
        for code in codes:
            self.key(code, True)
        for code in reversed(codes):
            self.key(code, False)
        self.wait()

    def type(self, text):
        for letter in text:
            plain = SHIFTED.get(letter, letter.lower())
            self.chord([NAMED["shift"], KEYS[plain]] if plain != letter else [KEYS[plain]])

    def keys(self, *combinations):
        for combination in combinations:
            self.chord([NAMED.get(part) or KEYS[part] for part in combination.split("+")])

    def click(self, x, y):
        self.move(x, y)
        self.button(True)
        self.button(False)
        self.wait()


class FakeInput(Input):
    """KWin's own."""

    def __init__(self):
        super().__init__()
        self.device = self.bind("org_kde_kwin_fake_input", 4)
        self.send(self.device, 0, "check", "check")
        self.wait()

    def move(self, x, y):
        self.send(self.device, 9, int(x * 256), int(y * 256))

    def button(self, pressed):
        self.send(self.device, 2, LEFT_BUTTON, int(pressed))

    def key(self, code, pressed):
        self.send(self.device, 10, code, int(pressed))


class VirtualInput(Input):
    """That of sway and its kin, on an output of a known size."""

    def __init__(self, keymap, width, height):
        super().__init__()
        self.size, self.held = (width, height), 0
        seat = self.bind("wl_seat", 1)
        pointers = self.bind("zwlr_virtual_pointer_manager_v1", 1)
        keyboards = self.bind("zwp_virtual_keyboard_manager_v1", 1)
        self.pointer = self.new()
        self.send(pointers, 0, seat, self.pointer)
        self.keyboard = self.new()
        self.send(keyboards, 0, seat, self.keyboard)
        content = os.memfd_create("keymap")
        os.write(content, keymap + b"\0")
        self.wait()
        head = struct.pack("=IIII", self.keyboard, 16 << 16, 1, len(keymap) + 1)
        socket.send_fds(self.socket, [head], [content])
        self.wait()

    def now(self):
        return int(time.monotonic() * 1000)

    def move(self, x, y):
        self.send(self.pointer, 1, self.now(), int(x), int(y), *self.size)
        self.send(self.pointer, 4)

    def button(self, pressed):
        self.send(self.pointer, 2, self.now(), LEFT_BUTTON, int(pressed))
        self.send(self.pointer, 4)

    def key(self, code, pressed):
        self.send(self.keyboard, 1, self.now(), code, int(pressed))
        if code in MASKS:
            self.held ^= MASKS[code]
            self.send(self.keyboard, 2, self.held, 0, 0, 0)
