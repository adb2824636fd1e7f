"""A separate desktop session: screen, window manager, buses, home folder. Uses nothing of the surrounding session."""

import os
import pathlib
import tempfile
from urllib.parse import quote

import buses
import processes
from display import Display
from folders import remove_tree
from program import Program

BUS_CONFIGURATION = pathlib.Path(__file__).resolve().parents[1] / "Support" / "bus.conf"

WINDOW_MANAGER_CONFIGURATION = """<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <keyboard>
    <keybind key="A-F4"><action name="Close"/></keybind>
  </keyboard>
</openbox_config>
"""

ACCESSIBILITY_LAUNCHER = "/usr/libexec/at-spi-bus-launcher"


class Desktop:
    """A context manager; ends its processes and removes its folder."""

    def __init__(
        self, has_window_manager=True, has_session_bus=True, has_accessibility=True, width=1400, height=920
    ):
        # With a space in its name, intentionally.
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="morlaine test "))
        # Qt splits a command at spaces.
        self.commands = pathlib.Path(tempfile.mkdtemp(prefix="morlaine-commands-"))
        self._processes = []
        self._programs = []
        self._log = open(self.folder / "services.log", "wb")
        try:
            self._make_folders()
            self.display = Display(self._log, width, height)
            self.environment = self._make_environment()
            if has_session_bus:
                self._start_session_bus("unix:tmpdir=" + quote(str(self.folder)))
            if has_session_bus and has_accessibility:
                self._start_accessibility()
            if has_window_manager:
                self.start_window_manager()
                self.display.wait_for_window_manager()
        except BaseException:
            self.stop()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.stop()

    def stop(self):
        for process in [*(program.process for program in self._programs), *reversed(self._processes)]:
            processes.stop(process)
        if hasattr(self, "display"):
            self.display.stop()
        self._log.close()
        remove_tree(self.folder)
        remove_tree(self.commands)

    def start_program(self, path, environment=None):
        """Starts the program under test, with its output in a separate file."""
        number = len(self._programs)
        program = Program(self, path, {**self.environment, **(environment or {})}, self.folder / f"output {number}")
        self._programs.append(program)
        return program

    def install_command(self, name, script):
        """Installs a command that takes precedence over the system's."""
        command = self.commands / name
        command.write_text("#!/bin/sh\n" + script)
        command.chmod(0o755)

    def services_log(self):
        return (self.folder / "services.log").read_text(errors="replace")

    def _make_folders(self):
        self.home = self.folder / "home of a user"
        self.data_home = self.home / "data"
        for folder in [self.home, self.folder / "configuration" / "openbox"]:
            folder.mkdir(parents=True)
        (self.folder / "runtime").mkdir(mode=0o700)
        (self.folder / "configuration" / "openbox" / "rc.xml").write_text(WINDOW_MANAGER_CONFIGURATION)

    def _make_environment(self):
        runtime = self.folder / "runtime"
        return {
            "PATH": f"{self.commands}:/usr/local/bin:/usr/bin:/bin",
            "LANG": "C.UTF-8",
            "HOME": str(self.home),
            "DISPLAY": self.display.name,
            "XDG_RUNTIME_DIR": str(runtime),
            "XDG_CACHE_HOME": str(self.home / "cache"),
            "XDG_CONFIG_HOME": str(self.folder / "configuration"),
            "XDG_DATA_HOME": str(self.data_home),
            # No bus until one is started; without an address, programs would look for one.
            "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent/bus",
            **{name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")},
        }

    def start_service(self, command):
        """Starts something that the session offers; it ends with the desktop."""
        return self._start(command)

    def _start(self, command, **options):
        process = processes.start(
            command, env=self.environment, cwd=self.home, stderr=self._log, **{"stdout": self._log, **options}
        )
        self._processes.append(process)
        return process

    def restart_session_bus(self, meanwhile):
        """Kills it, and starts another at the same address."""
        self._bus.kill()
        self._bus.wait()
        meanwhile()
        self._start_session_bus(self.environment["DBUS_SESSION_BUS_ADDRESS"].partition(",")[0])

    def _start_session_bus(self, address):
        reader, writer = os.pipe()
        self._bus = self._start(
            ["dbus-daemon", f"--config-file={BUS_CONFIGURATION}", f"--address={address}", "--nofork",
             f"--print-address={writer}"],
            pass_fds=[writer],
        )
        os.close(writer)
        with os.fdopen(reader) as pipe:
            address = pipe.readline().strip()
        if not address:
            raise RuntimeError(f"the session bus did not start:\n{self.services_log()}")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        self.session_bus = buses.connect(address)

    def _start_accessibility(self):
        # As with a running screen reader.
        self.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        self._start([ACCESSIBILITY_LAUNCHER, "--launch-immediately"])
        buses.wait_for_name(self.session_bus, "org.a11y.Bus")
        (address,) = buses.call(self.session_bus, "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress")
        self.accessibility_bus = buses.connect(address)

    def start_window_manager(self):
        self._start(["openbox", "--sm-disable"])
