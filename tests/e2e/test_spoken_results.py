#!/usr/bin/env python3
"""What a screen reader hears of a scan: a charge and a refusal at the desk, listened to on the accessibility bus.

    test_spoken_results.py QUILLA QUILLA_DB

Needs xvfb, openbox, xdotool, dbus-run-session, at-spi2-core and pyatspi of the system's Python; exits with 77 when one is
missing.
"""
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

INSIDE = "QUILLA_SPOKEN_BUS"


def skip(why):
    print("skipped:", why)
    raise SystemExit(77)


try:
    import pyatspi
except ImportError:
    skip("python3-pyatspi is not installed")

import test_desk_day as desk_day
import first_charge


def listen():
    """Prints what is announced, until it is killed."""
    def heard(event):
        if event.source.getRole() == pyatspi.ROLE_NOTIFICATION:
            print(event.source.name, flush=True)
    # without the second one the bus answers with the name that it remembers
    pyatspi.Registry.registerEventListener(
        heard, "object:state-changed:showing", "object:property-change:accessible-name")
    pyatspi.Registry.start()


def wait_for(file, words):
    end = time.time() + 20
    while time.time() < end:
        for line in file.read_text(encoding="utf-8").splitlines():
            if all(word in line for word in words):
                return print("heard:", line)
        time.sleep(0.1)
    raise SystemExit(f"nothing was announced with {words}; heard: {file.read_text(encoding='utf-8')}")


def main():
    if not os.path.exists("/usr/libexec/at-spi-bus-launcher"):
        skip("at-spi2-core is not installed")
    home = pathlib.Path(tempfile.mkdtemp(prefix="desk-spoken-"))
    screen = desk_day.ManagedScreen(home, None)
    screen.env.update(QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", GSETTINGS_BACKEND="memory")
    subprocess.run([sys.argv[2], "first-start"], env=screen.env, check=True, stdout=subprocess.DEVNULL)
    heard = home / "heard"
    started = [subprocess.Popen([sys.executable, __file__, "--listen"], env=screen.env, stdout=heard.open("w"), start_new_session=True)]
    try:
        time.sleep(2)
        started.append(subprocess.Popen([sys.argv[1]], env=screen.env, start_new_session=True))
        desk_day.sign_in(screen)
        reader, copy = first_charge.free_pair(home)
        screen.type(reader)
        time.sleep(0.5)
        screen.type(copy)
        wait_for(heard, ["借", copy, "成功", "应还"])
        screen.type("X-999")
        box = screen.wait_for("^提示$", 10)
        screen.focus(box)
        screen.key("Return")
        wait_for(heard, ["借", "X-999", "拒绝", "书库没有此书的记录"])
    finally:
        for program in started:
            os.killpg(program.pid, signal.SIGKILL)
            program.wait()
        screen.close()
        shutil.rmtree(home, ignore_errors=True)
    print("1 passed, 0 failed")


if __name__ == "__main__":
    if "--listen" in sys.argv:
        listen()
    elif INSIDE in os.environ:
        main()
    elif not shutil.which("dbus-run-session"):
        skip("dbus-run-session is not installed")
    else:
        command = ["dbus-run-session", "--", sys.executable, *sys.argv]
        raise SystemExit(subprocess.run(command, env=dict(os.environ, **{INSIDE: "1"})).returncode)
