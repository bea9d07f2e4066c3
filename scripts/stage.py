"""What is put on a virtual desktop to be watched there: velmora-server, the application signed in to it, and the hands
and eyes of whoever directs it.
"""

import contextlib
import json
import os
import re
import signal
import socket
import subprocess
import sys
import time
import urllib.error
import urllib.request
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
BUILD = ROOT / "build"
POLL = 0.01


class StageError(Exception):
    """Something on the stage did not come about."""


class Stage:
    """The programs on the desktop. Each writes a log into the desktop's folder."""

    def __init__(self):
        self.processes = {}
        self.folder = Path(os.environ["VIRTUAL_DESKTOP"])
        self.support = Path(os.environ["XDG_DATA_HOME"]) / "Velmora"

    def start_backend(self, *options):
        with socket.socket() as probe:
            probe.bind(("127.0.0.1", 0))
            address = f"127.0.0.1:{probe.getsockname()[1]}"
        url = f"http://{address}"
        os.environ["VelmorBackendURL"] = os.environ["VelmorLandingURL"] = url
        self.launch("velmora-server", BUILD / "velmora-server", "--listen", address,
                    "--data", self.folder / "server", "--local-user", *options)
        self.wait("the backend answers", lambda: answers(f"{url}/auth?source=app&state=probe"), "velmora-server")

    def start_application(self):
        # The guided tour of a first start is not what is shown here, so what it leads to is brought about before.
        settings = Path(os.environ["XDG_CONFIG_HOME"]) / "Velmora" / "defaults.json"
        settings.parent.mkdir(parents=True)
        settings.write_text(json.dumps({"hasOnboarded": True, "velmora.migratedToSaaS": True}), encoding="utf-8")
        browser = Path(os.environ["XDG_DATA_HOME"]) / "applications" / "demo-browser.desktop"
        browser.parent.mkdir(parents=True)
        browser.write_text(f'[Desktop Entry]\nType=Application\nName=Browser\nExec={ROOT}/scripts/demo-browser %u\n',
                           encoding="utf-8")
        checked("xdg-mime", "default", browser.name, "x-scheme-handler/http")
        checked("scripts/register-links", BUILD / "velmora")
        self.launch("velmora", BUILD / "velmora")
        self.wait("the application runs", application_listens, "velmora")

    def sign_in(self):
        checked(BUILD / "velmora", "--sign-in")
        self.wait("signed in through the browser", (self.support / "auth-tokens.json").exists, "velmora")
        # A start without an account has opened the tour; the next one doesn't.
        self.processes["velmora"].terminate()
        self.processes["velmora"].wait(timeout=5)
        self.launch("velmora", BUILD / "velmora")
        self.wait("the application runs for its user", application_listens, "velmora")

    def launch(self, name, *command):
        with open(self.log(name), "wb") as log:
            self.processes[name] = subprocess.Popen(list(map(str, command)), stdout=log, stderr=log)

    def wait(self, stage, condition, process, seconds=20):
        """Waits for the condition as long as the process lives; tells of the stage when it holds."""
        deadline = time.monotonic() + seconds
        while not condition():
            if self.processes[process].poll() is not None:
                raise StageError(f"{process} ended before this: {stage}")
            if time.monotonic() > deadline:
                raise StageError(f"not within {seconds} s: {stage}")
            time.sleep(POLL)
        self.tell(stage)

    def tell(self, stage):
        print(stage, flush=True)

    def log(self, name):
        return self.folder / "logs" / f"{name}.log"

    def show_logs(self):
        for name in self.processes:
            lines = self.log(name).read_text(encoding="utf-8", errors="replace").splitlines()
            print(f"--- the last lines of {name}", *lines[-15:], sep="\n", file=sys.stderr)

    def end(self):
        for process in self.processes.values():
            process.send_signal(signal.SIGTERM)
        for process in self.processes.values():
            with contextlib.suppress(subprocess.TimeoutExpired):
                process.wait(timeout=5)


def go_to_desktop(script, arguments):
    """Starts the script again on a virtual desktop, unless it is on one."""
    if "VIRTUAL_DESKTOP" not in os.environ:
        desktop = str(ROOT / "scripts/virtual-desktop")
        os.execv(desktop, [desktop, "--", script, *arguments])


def checked(*command):
    result = subprocess.run(list(map(str, command)), cwd=ROOT, capture_output=True, text=True, check=False)
    if result.returncode != 0:
        raise StageError(f"{command[0]} failed with {result.returncode}: {result.stderr.strip()}")
    return result.stdout


def output_of(*command):
    return subprocess.run(command, capture_output=True, text=True, check=False).stdout


def press_key(action, keys):
    checked(BUILD / "tests/support/press_key/press_key", action, keys)


def answers(url):
    try:
        with urllib.request.urlopen(url, timeout=2):
            return True
    except (urllib.error.URLError, OSError):
        return False


def application_listens():
    return "boolean true" in output_of(
        "dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
        "org.freedesktop.DBus.NameHasOwner", "string:app.velmora.Velmora")


def focused(name):
    """A text property of the window with the focus."""
    window = output_of("xprop", "-root", "_NET_ACTIVE_WINDOW").rpartition(" ")[2].strip()
    match = re.search(r'= "(.*)"', output_of("xprop", "-id", window, name)) if window else None
    return match.group(1) if match else ""
