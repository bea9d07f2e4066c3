"""What the endurance run does at the X server, and asks of it: keyboards that come and go, a locked screen, and the
resources that a process holds there. Speaks the protocol itself, for the tools that could are in no package list.
"""

import contextlib
import os
import socket
import struct
import time

CREATE_WINDOW, DESTROY_WINDOW, MAP_WINDOW, INTERN_ATOM = 1, 4, 8, 16
GRAB_POINTER, UNGRAB_POINTER, GRAB_KEYBOARD, UNGRAB_KEYBOARD = 26, 27, 31, 32
QUERY_EXTENSION = 98
XI_CHANGE_HIERARCHY, XI_QUERY_VERSION, XI_QUERY_DEVICE, XI_CHANGE_PROPERTY = 43, 47, 48, 57
RES_QUERY_VERSION, RES_CLIENT_RESOURCES, RES_PIXMAP_BYTES, RES_CLIENT_IDS = 0, 2, 3, 4
ATOM_INTEGER = 19


class XError(Exception):
    """The X server refused something or hung up."""


class XDisplay:
    """A connection to $DISPLAY."""

    def __init__(self):
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.connect("/tmp/.X11-unix/X" + os.environ["DISPLAY"].lstrip(":").partition(".")[0])
        self._socket.settimeout(20)
        self._socket.sendall(struct.pack("<BxHHHHxx", ord("l"), 11, 0, 0, 0))
        accepted, length = struct.unpack("<BxxxxxH", self._read(8))
        setup = self._read(length * 4)
        if accepted != 1:
            raise XError("no connection to the display")
        self._ids, vendor_length, formats = struct.unpack("<4xI8xH3xB", setup[:22])
        screen = 32 + (vendor_length + 3) // 4 * 4 + formats * 8
        self._root, self._width, self._height = struct.unpack("<I16xHH", setup[screen:screen + 24])
        self._sequence = 0
        self._xinput = self._extension("XInputExtension")
        self._resources = self._extension("X-Resource")
        self._ask(struct.pack("<BBHHH", self._xinput, XI_QUERY_VERSION, 2, 2, 2))
        self._ask(struct.pack("<BBHBBxx", self._resources, RES_QUERY_VERSION, 2, 1, 2))

    # ------------------------------------------------------------------------------------------ keyboards

    def set_keyboard_enabled(self, enabled):
        """Unplugs the keyboard as far as programs can tell, or plugs it in again."""
        device = self._device("keyboard", ("slave keyboard", "floating"), but_not="XTEST")
        enabled_property = self._atom("Device Enabled")
        self._do(struct.pack("<BBHHBBIIIBxxx", self._xinput, XI_CHANGE_PROPERTY, 6, device, 0, 8, enabled_property,
                             ATOM_INTEGER, 1, enabled))

    def add_second_keyboard(self):
        name = b"second seat "
        change = struct.pack("<HHHBB", 1, 2 + len(name) // 4, len(name) - 1, 1, 1) + name
        self._change_hierarchy(change)

    def remove_second_keyboard(self):
        device = self._device("second seat keyboard", ("master keyboard",))
        pointer, keyboard = 2, 3  # the first ones, which take over its devices
        self._change_hierarchy(struct.pack("<HHHBxHH", 2, 3, device, 1, pointer, keyboard))

    def _change_hierarchy(self, change):
        self._do(struct.pack("<BBHBxxx", self._xinput, XI_CHANGE_HIERARCHY, 2 + len(change) // 4, 1) + change)

    def _device(self, name_part, uses, but_not="\0"):
        use_names = {1: "master pointer", 2: "master keyboard", 3: "slave pointer", 4: "slave keyboard", 5: "floating"}
        reply = self._ask(struct.pack("<BBHHxx", self._xinput, XI_QUERY_DEVICE, 2, 0))
        at = 32
        for _ in range(struct.unpack("<8xH22x", reply[:32])[0]):
            device, use, _, classes, name_length = struct.unpack("<HHHHH2x", reply[at:at + 12])
            name = reply[at + 12:at + 12 + name_length].decode()
            at += 12 + (name_length + 3) // 4 * 4
            for _ in range(classes):
                at += struct.unpack("<2xH", reply[at:at + 4])[0] * 4
            if name_part in name and but_not not in name and use_names[use] in uses:
                return device
        raise XError(f"no device {name_part}")

    # ------------------------------------------------------------------------------------------ the locked screen

    @contextlib.contextmanager
    def locked_screen(self):
        """As lockers do: a window over everything, and keyboard and pointer for nobody else."""
        window = self._ids
        override_redirect = 1 << 9
        self._do(struct.pack("<BBHIIhhHHHHIII", CREATE_WINDOW, 0, 9, window, self._root, 0, 0, self._width,
                             self._height, 0, 1, 0, override_redirect, 1))
        self._do(struct.pack("<BxHI", MAP_WINDOW, 2, window))
        self._grab(struct.pack("<BBHIHBBIII", GRAB_POINTER, 0, 6, window, 0, 1, 1, 0, 0, 0))
        self._grab(struct.pack("<BBHIIBBxx", GRAB_KEYBOARD, 0, 4, window, 0, 1, 1))
        try:
            yield
        finally:
            self._do(struct.pack("<BxHI", UNGRAB_KEYBOARD, 2, 0))
            self._do(struct.pack("<BxHI", UNGRAB_POINTER, 2, 0))
            self._do(struct.pack("<BxHI", DESTROY_WINDOW, 2, window))

    def _grab(self, request):
        deadline = time.monotonic() + 20
        while self._ask(request)[1] != 0:  # while somebody else has it
            if time.monotonic() > deadline:
                raise XError("the screen can't be locked: somebody keeps keyboard or pointer")
            time.sleep(0.05)

    # ------------------------------------------------------------------------------------------ resources

    def resources_of(self, pid):
        """How many resources the process holds, and how many bytes of pixmaps."""
        count = pixmap_bytes = 0
        for client in self._clients_of(pid):
            reply = self._ask(struct.pack("<BBHI", self._resources, RES_CLIENT_RESOURCES, 2, client))
            for index in range(struct.unpack("<8xI", reply[:12])[0]):
                count += struct.unpack_from("<4xI", reply, 32 + 8 * index)[0]
            reply = self._ask(struct.pack("<BBHI", self._resources, RES_PIXMAP_BYTES, 2, client))
            pixmap_bytes += struct.unpack("<8xI", reply[:12])[0]
        return count, pixmap_bytes

    def _clients_of(self, pid):
        by_process = 2
        reply = self._ask(struct.pack("<BBHIII", self._resources, RES_CLIENT_IDS, 4, 1, 0, by_process))
        clients, at = [], 32
        for _ in range(struct.unpack("<8xI", reply[:12])[0]):
            client, _, length = struct.unpack_from("<III", reply, at)
            if length >= 4 and struct.unpack_from("<I", reply, at + 12)[0] == pid:
                clients.append(client)
            at += 12 + length
        return clients

    # ------------------------------------------------------------------------------------------ the protocol

    def _extension(self, name):
        text = name.encode() + bytes(-len(name) % 4)
        reply = self._ask(struct.pack("<BxHHxx", QUERY_EXTENSION, 2 + len(text) // 4, len(name)) + text)
        present, opcode = struct.unpack("<8xBB", reply[:10])
        if not present:
            raise XError(f"the display has no {name}")
        return opcode

    def _atom(self, name):
        text = name.encode() + bytes(-len(name) % 4)
        return struct.unpack("<8xI", self._ask(struct.pack("<BxHHxx", INTERN_ATOM, 2 + len(text) // 4, len(name))
                                               + text)[:12])[0]

    def _do(self, request):
        """For a request without a reply; the one that follows brings what it ran into."""
        self._send(request)
        self._atom("INTEGER")

    def _ask(self, request):
        self._send(request)
        while True:
            packet = self._read(32)
            kind, sequence, length = struct.unpack("<BxHI", packet[:8])
            if kind == 0:
                raise XError(f"error {packet[1]} of request {sequence}")
            if kind == 1:
                packet += self._read(length * 4)
                if sequence == self._sequence & 0xffff:
                    return packet
            elif kind & 0x7f == 35:  # an event of an extension may be longer
                self._read(length * 4)

    def _send(self, request):
        self._sequence += 1
        self._socket.sendall(request)

    def _read(self, size):
        data = b""
        while len(data) < size:
            piece = self._socket.recv(size - len(data))
            if not piece:
                raise XError("the X server hung up")
            data += piece
        return data
