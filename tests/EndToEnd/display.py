"""A virtual screen with keyboard and mouse."""

import os

import processes
import png
from Xlib import X, XK, display as xdisplay
from Xlib.error import XError
from Xlib.ext import xtest
from Xlib.protocol.event import ClientMessage
from waiting import PATIENCE, wait_for

STRIP = 32  # rows of a picture that are fetched at once

MODIFIERS = {"Ctrl": "Control_L", "Alt": "Alt_L", "Shift": "Shift_L", "Super": "Super_L"}


class Display:
    """An X server without hardware, on a free display number."""

    def __init__(self, log, width=1400, height=920):
        reader, writer = os.pipe()
        self.server = processes.start(
            ["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{width}x{height}x24", "-nolisten", "tcp", "-noreset",
             "-r"],  # a busy server would repeat a key that is pressed and released at once
            pass_fds=[writer],
            stdout=log,
            stderr=log,
        )
        os.close(writer)
        with os.fdopen(reader) as number:
            self.name = ":" + number.readline().strip()
        if self.name == ":":
            raise RuntimeError("Xvfb did not start")
        self.connection = xdisplay.Display(self.name)
        self.root = self.connection.screen().root

    def stop(self):
        if self.server.poll() is None:
            self.connection.close()
        processes.stop(self.server)

    def wait_for_window_manager(self):
        """Waits until it gives a new window the focus: while it takes over the screen it loses windows that appear."""
        atom = self.connection.intern_atom("_NET_SUPPORTING_WM_CHECK")
        wait_for(lambda: self.root.get_full_property(atom, X.AnyPropertyType), "the window manager")
        patience = 0.2
        while not self._focuses_a_new_window(patience):
            if patience > PATIENCE:
                raise AssertionError("the window manager gives no focus")
            patience *= 2

    def _focuses_a_new_window(self, patience):
        window = self.root.create_window(0, 0, 32, 32, 0, X.CopyFromParent)
        try:
            window.map()
            wait_for(lambda: self.connection.get_input_focus().focus == window, "the focus", patience)
            return True
        except AssertionError:
            return False
        finally:
            window.destroy()
            self.connection.sync()

    def windows(self):
        """The windows of programs, without frames of the window manager."""
        return [window for window in self._viewable(self.root) if self.title(window)]

    def window(self, title):
        return wait_for(
            lambda: next((window for window in self.windows() if self.title(window) == title), None),
            f'a window titled "{title}"',
        )

    def is_painted(self, title):
        """Whether the window exists and has been painted."""
        window = next((window for window in self.windows() if self.title(window) == title), None)
        if window is None:
            return False
        try:
            size = window.get_geometry()
            # A strip across the toolbar.
            data = window.get_image(0, 0, size.width, STRIP, X.ZPixmap, 0xFFFFFFFF).data
        except XError:
            return False
        return data != data[:4] * (len(data) // 4)

    def _viewable(self, parent):
        try:
            children = parent.query_tree().children
            for child in children:
                if child.get_attributes().map_state == X.IsViewable:
                    yield child
                    yield from self._viewable(child)
        except XError:
            return  # gone meanwhile

    def title(self, window):
        """None for a window that belongs to no program, such as a window manager's frame."""
        try:
            title = window.get_full_property(self.connection.intern_atom("_NET_WM_NAME"), X.AnyPropertyType)
            return title.value.decode() if title and window.get_wm_class() else None
        except XError:
            return None

    def press(self, keys):
        """Presses and releases keys as in "Ctrl+Alt+S" or "Escape"."""
        *modifiers, key = keys.split("+")
        symbol = XK.string_to_keysym(key.lower() if len(key) == 1 else key)
        codes = [self._code(XK.string_to_keysym(MODIFIERS[modifier])) for modifier in modifiers]
        self._strike(codes, self._code(symbol))

    def move_pointer(self, x, y):
        xtest.fake_input(self.connection, X.MotionNotify, x=x, y=y)
        self.connection.sync()

    def click(self, extents, count=1, button=X.Button1):
        """Clicks into the middle of a place on the screen, given as x, y, width and height."""
        x, y, width, height = extents
        self.move_pointer(x + width // 2, y + height // 2)
        for _ in range(count):
            xtest.fake_input(self.connection, X.ButtonPress, button)
            xtest.fake_input(self.connection, X.ButtonRelease, button)
        self.connection.sync()

    def type(self, text):
        """Types what a keyboard of the plain English layout can."""
        for character in text:
            if character == "\n":
                self.press("Return")
                continue
            # A key has a column of symbols for each combination of modifiers: plain, then with Shift.
            column, code = min((column, code) for code, column in self.connection.keysym_to_keycodes(ord(character)))
            shift = [self._code(XK.XK_Shift_L)] if column == 1 else []
            self._strike(shift, code)

    def wait_for_focus(self, title):
        """Waits until the window has the keyboard focus."""

        def has_focus():
            focus = self.connection.get_input_focus().focus
            return not isinstance(focus, int) and self.title(focus) == title

        wait_for(has_focus, f'window "{title}" to have the keyboard')

    def focus(self, title):
        """Gives a window the focus, for screens without a window manager."""
        self.window(title).set_input_focus(X.RevertToParent, X.CurrentTime)
        self.wait_for_focus(title)

    def close_window(self, title):
        """Asks the window's program to close it, as a window manager does."""
        window = self.window(title)
        message = ClientMessage(
            window=window,
            client_type=self.connection.intern_atom("WM_PROTOCOLS"),
            data=(32, [self.connection.intern_atom("WM_DELETE_WINDOW"), X.CurrentTime, 0, 0, 0]),
        )
        window.send_event(message)
        self.connection.sync()

    def _code(self, symbol):
        code = self.connection.keysym_to_keycode(symbol)
        if code == 0:
            raise ValueError("no such key")
        return code

    def _strike(self, held, code):
        for key in [*held, code]:
            xtest.fake_input(self.connection, X.KeyPress, key)
        for key in [code, *reversed(held)]:
            xtest.fake_input(self.connection, X.KeyRelease, key)
        self.connection.sync()

    def pixels(self, window=None):
        """Width, height, and the RGB bytes of the visible part of the window, or of the screen."""
        drawable = window or self.root
        size = drawable.get_geometry()
        # The library takes quadratic time for long replies.
        data = b"".join(
            drawable.get_image(0, top, size.width, min(STRIP, size.height - top), X.ZPixmap, 0xFFFFFFFF).data
            for top in range(0, size.height, STRIP)
        )
        rgb = bytearray(size.width * size.height * 3)
        rgb[0::3], rgb[1::3], rgb[2::3] = data[2::4], data[1::4], data[0::4]
        return size.width, size.height, bytes(rgb)

    def save(self, path, window=None):
        path.write_bytes(png.encode(*self.pixels(window)))
