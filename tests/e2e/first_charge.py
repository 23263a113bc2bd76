#!/usr/bin/env python3
"""The first charge on a fresh machine, as a person does it: ./run on an X screen, the demo operator's
login, a reader's card and a barcode typed into the desk; then the rows are looked up in the database.

    first_charge.py COMMAND QUILLA_DB [PICTURE_FOLDER]

COMMAND starts the desk (./run, or the built program after `quilla-db first-start`). Needs xvfb, xdotool.
"""
import os
import pathlib
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time

import x_screen

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
import library_order

LOGIN = "Quilla 登录流通子系统"
MAIN = "青简台"
QUESTION = "操作提示"


def base(home):
    """The database, opened as any program would that knows its collation."""
    con = sqlite3.connect(home / "data" / "青简文库" / "quilla.db", timeout=10)
    library_order.know(con)
    return con


def free_pair(home):
    """A reader who may borrow and a copy that nobody holds."""
    con = base(home)
    reader = con.execute(
        "select readercode from dzk where readstatus='有效' and orderbook=0 and bookcount>0 "
        "and term>date('now','+30 days') order by readercode").fetchone()[0]
    copy = con.execute(
        "select barcode from sck where borrowstatus=1 and bookstatus='库本' "
        "and barcode not in (select barcode from yyk where barcode is not null) order by barcode").fetchone()[0]
    return reader, copy


class Screen:
    def __init__(self, home, pictures):
        self.pictures = pictures
        self.server, display = x_screen.start()
        self.env = dict(os.environ, DISPLAY=display, QT_QPA_PLATFORM="xcb", XDG_DATA_HOME=str(home / "data"),
                        XDG_CONFIG_HOME=str(home / "config"), XDG_RUNTIME_DIR=str(home), TZ="Asia/Shanghai")

    def do(self, *words):
        return subprocess.run(["xdotool", *words], env=self.env, capture_output=True, text=True)

    def wait_for(self, title, seconds):
        """The number of a visible window whose title contains `title`."""
        end = time.time() + seconds
        while time.time() < end:
            found = self.do("search", "--onlyvisible", "--name", title).stdout.split()
            if found:
                return found[0]
            time.sleep(0.1)
        self.picture("missing")
        raise SystemExit(f"window {title} did not appear")

    def gone(self, title, seconds=10):
        end = time.time() + seconds
        while time.time() < end and self.do("search", "--onlyvisible", "--name", title).stdout.split():
            time.sleep(0.1)

    def focus(self, window):
        self.do("windowfocus", "--sync", window)

    def type(self, text):
        self.do("type", "--delay", "8", text)
        self.do("key", "Return")

    def key(self, name):
        self.do("key", name)

    def picture(self, name):
        if self.pictures and shutil.which("import"):
            subprocess.run(["import", "-window", "root", str(self.pictures / f"{name}.png")], env=self.env)

    def close(self):
        self.server.terminate()
        self.server.wait()


def charge(screen, home):
    screen.focus(screen.wait_for(LOGIN, 900))
    reader, copy = free_pair(home)
    screen.picture("login")
    screen.type("demo")
    screen.type("demo")
    # The demo library has overdue loans, so the main window asks about them.
    screen.focus(screen.wait_for(QUESTION, 20))
    screen.key("alt+n")
    screen.gone(QUESTION)
    main = screen.wait_for(MAIN, 20)
    screen.focus(main)
    # The desk is the first button of the toolbar.
    screen.do("mousemove", "--window", main, "38", "60")
    screen.do("click", "1")
    time.sleep(1)
    screen.type(reader)
    time.sleep(0.5)
    screen.type(copy)
    time.sleep(1)
    screen.picture("charged")
    return reader, copy


def verify(home, reader, copy):
    con = base(home)
    loan = con.execute("select readercode,operater from jhsk where barcode=?", (copy,)).fetchall()
    state = con.execute("select borrowstatus,bookstatus from sck where barcode=?", (copy,)).fetchall()
    count = con.execute("select orderbook from dzk where readercode=?", (reader,)).fetchone()[0]
    assert loan == [(reader, "demo")], loan
    assert state == [(0, "借出")], state
    assert count == 1, count
    print(f"charged {copy} to {reader}: loan, copy and reader agree")


def main():
    command, tool = sys.argv[1], sys.argv[2]
    pictures = pathlib.Path(sys.argv[3]) if len(sys.argv) > 3 else None
    home = pathlib.Path(tempfile.mkdtemp(prefix="desk-home-"))
    screen = Screen(home, pictures)
    if os.path.basename(command) != "run":
        subprocess.run([tool, "first-start"], env=screen.env, check=True)
    desk = subprocess.Popen([command], env=screen.env, start_new_session=True)
    try:
        reader, copy = charge(screen, home)
        verify(home, reader, copy)
        subprocess.run([tool, "check"], env=screen.env, check=True)
    finally:
        os.killpg(desk.pid, signal.SIGKILL)
        desk.wait()
        screen.close()
        shutil.rmtree(home, ignore_errors=True)
    print("1 passed, 0 failed")


if __name__ == "__main__":
    main()
