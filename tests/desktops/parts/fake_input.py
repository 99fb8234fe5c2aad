"""The keyboard and the pointer of KWin, by its Wayland protocol org_kde_kwin_fake_input."""

import socket
import struct

INTERFACE = b"org_kde_kwin_fake_input"
VERSION = 4
# Object ids: the display's is given, the others are chosen here.
DISPLAY, REGISTRY, CALLBACK, FAKE_INPUT = range(1, 5)
# Requests, by their place in the interface.
SYNC, GET_REGISTRY, BIND = 0, 1, 0
AUTHENTICATE, BUTTON, POINTER_MOTION_ABSOLUTE, KEYBOARD_KEY = 0, 2, 9, 10
LEFT_BUTTON = 0x110
TIMEOUT = 20


def _string(text):
    """A string argument: its length with the final NUL, then its bytes, padded to a multiple of four."""
    data = text + b"\0"
    return struct.pack("=I", len(data)) + data + bytes(-len(data) % 4)


def _fixed(number):
    return round(number * 256)


class FakeInput:
    """A client of the compositor at the path of a socket; its input devices last until `close`."""

    def __init__(self, path):
        self._socket = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self._socket.settimeout(TIMEOUT)
        self._socket.connect(str(path))
        self._request(DISPLAY, GET_REGISTRY, struct.pack("=I", REGISTRY))
        self._request(DISPLAY, SYNC, struct.pack("=I", CALLBACK))
        name = self._name_of_global()
        self._request(REGISTRY, BIND, struct.pack("=I", name) + _string(INTERFACE)
                      + struct.pack("=II", VERSION, FAKE_INPUT))
        self._request(FAKE_INPUT, AUTHENTICATE, _string(b"scenario") + _string(b"test"))

    def key(self, code, is_down):
        """Presses or releases the key with this Linux key code."""
        self._request(FAKE_INPUT, KEYBOARD_KEY, struct.pack("=II", code, is_down))

    def move_to(self, x, y):
        """Moves the pointer to a place on the screen, in logical pixels."""
        self._request(FAKE_INPUT, POINTER_MOTION_ABSOLUTE, struct.pack("=ii", _fixed(x), _fixed(y)))

    def button(self, is_down):
        """Presses or releases the left button."""
        self._request(FAKE_INPUT, BUTTON, struct.pack("=II", LEFT_BUTTON, is_down))

    def close(self):
        self._socket.close()

    def _request(self, target, opcode, arguments):
        self._socket.sendall(struct.pack("=II", target, (8 + len(arguments)) << 16 | opcode) + arguments)

    def _receive(self, size):
        data = b""
        while len(data) < size:
            part = self._socket.recv(size - len(data))
            if not part:
                raise ConnectionError("the compositor has closed the connection")
            data += part
        return data

    def _name_of_global(self):
        """Reads the globals up to the callback's event; returns the number of the interface's."""
        found = None
        while True:
            sender, word = struct.unpack("=II", self._receive(8))
            body = self._receive((word >> 16) - 8)
            if sender == CALLBACK:
                break
            name, length = struct.unpack_from("=II", body)
            if sender == REGISTRY and body[8:8 + length - 1] == INTERFACE:
                found = name
        if found is None:
            raise ConnectionError("the compositor has no fake input")
        return found
