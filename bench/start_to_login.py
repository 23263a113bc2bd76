#!/usr/bin/env python3
"""From the start of the process to the login on the screen, in milliseconds: the median of several starts.

    bench/start_to_login.py QUILLA QUILLA_DB [STARTS]

Needs xvfb and xdotool. What it measures holds a look at the screen every few milliseconds.
"""
import os
import pathlib
import signal
import statistics
import subprocess
import sys
import tempfile
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent / "tests" / "e2e"))
import x_screen

LOGIN = "Quilla 登录流通子系统"


def main():
    program, tool = sys.argv[1], sys.argv[2]
    starts = int(sys.argv[3]) if len(sys.argv) > 3 else 7
    screen, display = x_screen.start()
    try:
        times = measure(program, tool, starts, display)
    finally:
        screen.terminate()
    print(f"start to login, {starts} starts: median {statistics.median(times):.0f} ms, worst {max(times):.0f} ms")


def measure(program, tool, starts, display):
    """The milliseconds of each start, against a library of its own."""
    times = []
    with tempfile.TemporaryDirectory() as home:
        env = dict(os.environ, DISPLAY=display, QT_QPA_PLATFORM="xcb", XDG_DATA_HOME=home + "/data",
                   XDG_CONFIG_HOME=home + "/config", XDG_RUNTIME_DIR=home)
        look = lambda: subprocess.run(["xdotool", "search", "--onlyvisible", "--name", LOGIN], env=env,
                                      capture_output=True).stdout
        subprocess.run([tool, "first-start"], env=env, check=True, stdout=subprocess.DEVNULL)
        for _ in range(starts):
            begin = time.monotonic()
            desk = subprocess.Popen([program], env=env)
            while not look():
                if desk.poll() is not None:
                    raise SystemExit(f"the desk ended before its login, code {desk.returncode}")
                if time.monotonic() - begin > 20:
                    raise SystemExit("no login within 20 seconds")
            times.append((time.monotonic() - begin) * 1000)
            desk.send_signal(signal.SIGKILL)
            desk.wait()
            while look():
                pass
    return times


if __name__ == "__main__":
    main()
