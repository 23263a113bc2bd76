#!/usr/bin/env python3
"""A day at the desk by keyboard alone, under a window manager, with real message boxes: charges, returns,
renewals, fines, refusals and held copies. At the end the session list is copied and compared, line by line, with
what was scanned and with the database.

    test_desk_day.py QUILLA QUILLA_DB [--scans N] [--postgres SOCKET_FOLDER] [--pictures FOLDER]

Needs xvfb, openbox, xdotool, xclip; with --postgres a server as tests/postgres/start.sh starts it. Exits with
77 when a program is missing. 600 scans take some minutes.
"""
import argparse
import os
import pathlib
import random
import re
import shutil
import signal
import subprocess
import tempfile
import time

import first_charge

BOXES = "^(操作提示|提示|青简台|罚款管理)$"
FINES = "罚款管理"
HELD_READER = "H0001"


class ManagedScreen(first_charge.Screen):
    """A screen with a window manager, which decides who gets the keys."""

    def __init__(self, home, pictures):
        super().__init__(home, pictures)
        self.manager = subprocess.Popen(["openbox"], env=self.env, stderr=subprocess.DEVNULL)

    def focus(self, window):
        end = time.time() + 10
        while time.time() < end and self.do("getactivewindow").stdout.strip() != window:
            self.do("windowactivate", window)
            time.sleep(0.03)
        time.sleep(0.1)

    def close(self):
        self.manager.kill()
        self.manager.wait()
        super().close()


class Embedded:
    def __init__(self, home):
        self.con = first_charge.base(home)
        self.con.isolation_level = None

    def rows(self, select):
        return [tuple("" if cell is None else str(cell) for cell in row) for row in self.con.execute(select)]

    run = rows


class Postgres:
    def __init__(self, folder, name):
        self.command = ["psql", "-h", folder, "-U", "quilla", "-d", name, "-qAt", "-F", "\t", "-c"]

    def rows(self, select):
        out = subprocess.run(self.command + [select], check=True, capture_output=True, text=True).stdout
        return [tuple(line.split("\t")) for line in out.splitlines()]

    run = rows


def move_to_postgres(home, env, tool, folder):
    """The demo library on the server, and the stored connection text that leads there."""
    name = f"desk_day_{os.getpid()}"
    subprocess.run(["psql", "-h", folder, "-U", "quilla", "-d", "postgres", "-qc", f"create database {name}"], check=True)
    text = f"PROVIDER=MSDASQL;Driver={{PostgreSQL Unicode}};Servername={folder};Port=5432;Database={name};Uid=quilla;Pwd="
    subprocess.run([tool, "copy", "--connection", text], env=env, check=True, stdout=subprocess.DEVNULL)
    settings = home / "config" / "青简文库" / "settings.ini"
    settings.parent.mkdir(parents=True, exist_ok=True)
    settings.write_text(f'[Setting]\nQuillaPass="{text}"\n', encoding="utf-8")
    settings.chmod(0o600)
    return Postgres(folder, name)


class Day:
    """What is scanned, and what has to stand in the list."""

    def __init__(self, screen, base):
        self.screen, self.base, self.expected = screen, base, []
        self.free = [row[0] for row in base.rows(
            "select barcode from sck where borrowstatus=1 and bookstatus='库本' and barcode not in "
            "(select barcode from yyk where barcode is not null) and barcode not in (select barcode from jhsk) "
            "and zskid not in (select zskid from yyk) order by barcode")]
        self.readers = [row[0] for row in base.rows(
            "select readercode from dzk where readstatus='有效' and bookcount-orderbook>1 and term>'2100-01-01' "
            "order by readercode")]
        self.late = [row[0] for row in base.rows(
            f"select a.barcode from jhsk a join sck b on a.barcode=b.barcode where a.yhdate<'{time.strftime('%Y-%m-%d')}' "
            "and b.bookstatus='借出' order by a.barcode")]
        self.lent = []

    def box(self, seconds):
        """The title of a box that is up; empty when none comes in time."""
        end = time.time() + seconds
        while time.time() < end:
            found = self.screen.do("search", "--onlyvisible", "--name", BOXES).stdout.split()
            if found:
                return found[-1], self.screen.do("getwindowname", found[-1]).stdout.strip()
            time.sleep(0.02)
        return None, ""

    def answer(self, key, title=None):
        window, shown = self.box(8)
        assert window and (title is None or shown == title), (shown, self.expected[-1])
        self.screen.focus(window)
        self.screen.key(key)
        end = time.time() + 8
        while time.time() < end and window in self.screen.do("search", "--onlyvisible", "--name", BOXES).stdout.split():
            time.sleep(0.02)

    def until(self, select, wanted):
        end = time.time() + 10
        while time.time() < end:
            if self.base.rows(select) == [(wanted,)]:
                return
            time.sleep(0.02)
        self.screen.picture("stuck")
        raise SystemExit(f"{select} is {self.base.rows(select)}, not {wanted}, after {self.expected[-1]}")

    def expect(self, kind, barcode, outcome):
        self.expected.append((kind, barcode, outcome))
        print(len(self.expected), kind, barcode, outcome, flush=True)

    def card(self, reader):
        self.screen.key("F2")
        self.screen.type(reader)

    def charge(self):
        reader, barcode = random.choice(self.readers), self.free.pop()
        self.expect("借", barcode, "成功")
        self.card(reader)
        self.screen.type(barcode)
        self.until(f"select count(*) from jhsk where barcode='{barcode}' and readercode='{reader}'", "1")
        self.lent.append(barcode)

    def refused_charge(self):
        barcode = random.choice(self.lent + ["X-999"])
        self.expect("借", barcode, "拒绝")
        self.card(random.choice(self.readers))
        self.screen.type(barcode)
        self.answer("Return")

    def held_charge(self):
        """For another reader: declined, or lent in spite of it."""
        barcode, lend = self.free.pop(), random.random() < 0.5
        self.base.run(f"insert into yyk(readercode,zskid,barcode,ordertime,oldtime,orderstatus) select '{HELD_READER}',"
                      f"zskid,'{barcode}','2026-01-01','2199-01-01',1 from sck where barcode='{barcode}'")
        self.expect("借", barcode, "成功" if lend else "拒绝")
        self.card(random.choice(self.readers))
        self.screen.type(barcode)
        self.answer("alt+y" if lend else "alt+n", "青简台")
        self.until(f"select count(*) from jhsk where barcode='{barcode}'", "1" if lend else "0")
        self.base.run(f"delete from yyk where readercode='{HELD_READER}'")
        if lend:
            self.lent.append(barcode)

    def give_back(self):
        barcode = self.lent.pop(random.randrange(len(self.lent)))
        self.expect("还", barcode, "成功")
        self.screen.key("F3")
        self.screen.type(barcode)
        self.until(f"select count(*) from jhsk where barcode='{barcode}'", "0")

    def refused_return(self):
        self.expect("还", "X-404", "拒绝")
        self.screen.key("F3")
        self.screen.type("X-404")
        self.answer("Return", "青简台")

    def renew(self):
        barcode = random.choice(self.lent)
        allowed = self.base.rows("select count(*) from jhsk a join dzk b on a.readercode=b.readercode "
                                 f"where a.barcode='{barcode}' and b.recount>a.res and b.reday<>0") == [("1",)]
        number = self.base.rows(f"select jhskid from jhsk where barcode='{barcode}'")[0][0]
        self.expect("续", barcode, "成功" if allowed else "拒绝")
        self.screen.key("F3")
        self.screen.key("alt+a")
        time.sleep(0.3)  # the box shows as pressed for a tenth of a second before it is ticked
        self.screen.type(barcode)
        if not allowed:
            return self.answer("Return")
        self.until(f"select count(*) from jhsk where barcode='{barcode}' and jhskid<>{number}", "1")

    def fine(self):
        """The next book of the pile is scanned before the operator has looked at the fine; it waits for him."""
        barcode, following, pay = self.late.pop(), self.lent.pop(), random.random() < 0.7
        self.expect("罚", barcode, "成功" if pay else "拒绝")
        self.expect("还", following, "成功")
        self.screen.key("F3")
        self.screen.type(barcode)
        self.screen.focus(self.box(8)[0])
        self.screen.type(following)
        time.sleep(0.3)
        self.until(f"select count(*) from jhsk where barcode in ('{barcode}','{following}')", "2")
        self.answer("alt+s" if pay else "alt+x", FINES)
        while self.box(0.4)[0]:
            self.answer("Return")
        self.until(f"select count(*) from jhsk where barcode='{barcode}'", "0" if pay else "1")
        self.until(f"select count(*) from jhsk where barcode='{following}'", "0")

    def scan(self):
        steps = [(self.charge, 40), (self.refused_charge, 8), (self.held_charge, 4), (self.refused_return, 6)]
        steps += [(self.give_back, 25), (self.renew, 12)] if len(self.lent) > 3 else []
        steps += [(self.fine, 5)] if self.late and len(self.lent) > 3 else []
        random.choices([step for step, _ in steps], [weight for _, weight in steps])[0]()
        time.sleep(0.15)

    def copied(self):
        for key in ("F6", "ctrl+a", "ctrl+c"):
            self.screen.key(key)
            time.sleep(0.3)
        out = subprocess.run(["xclip", "-o", "-selection", "clipboard"], env=self.screen.env, capture_output=True, text=True)
        return [line.split("\t") for line in reversed(out.stdout.splitlines())]

    def compare(self):
        lines = self.copied()
        seen = [(line[1], line[2], line[5].split(" ")[0]) for line in lines]
        assert len(seen) == len(self.expected), f"{len(seen)} lines for {len(self.expected)} scans"
        for number, (line, wanted) in enumerate(zip(seen, self.expected)):
            assert line == wanted, f"line {number}: {line}, not {wanted}"
        for line in lines:
            self.agree(line)

    def agree(self, line):
        """What the list says was lent is lent or was given back since, to that reader and with that date."""
        kind, barcode, reader, result = line[1], line[2], line[4].split(" ")[0], line[5]
        if kind in "借续" and result.startswith("成功"):
            due = re.search(r"\d{4}-\d\d-\d\d", result).group()
            where = f"where barcode='{barcode}' and readercode='{reader}' and cast(yhdate as varchar(10))='{due}'"
            found = self.base.rows(f"select count(*) from (select 1 from jhsk {where} union all select 1 from jhslsk {where}) x")
            assert found != [("0",)], line


def sign_in(screen):
    screen.focus(screen.wait_for(first_charge.LOGIN, 900))
    screen.type("demo")
    screen.type("demo")
    screen.focus(screen.wait_for(first_charge.QUESTION, 20))
    screen.key("alt+n")
    screen.gone(first_charge.QUESTION)
    screen.focus(screen.wait_for(first_charge.MAIN, 20))
    for key in ("alt+b", "Return"):
        screen.key(key)
        time.sleep(1.5)


def prepare(base):
    base.run("update dzk set term='2199-01-01',bookcount=500,ifcanre=1 where readstatus='有效' and orderbook<3")
    base.run("insert into dzk(readercode,name,readerclass,readstatus,bookcount,orderbook) "
             f"select '{HELD_READER}','预约读者',min(readerclass),'有效',5,0 from dzk")


def main():
    options = argparse.ArgumentParser()
    options.add_argument("quilla")
    options.add_argument("tool")
    options.add_argument("--scans", type=int, default=600)
    options.add_argument("--postgres")
    options.add_argument("--pictures", type=pathlib.Path)
    given = options.parse_args()
    missing = [name for name in ("Xvfb", "openbox", "xdotool", "xclip") if not shutil.which(name)]
    if missing:
        print("skipped, missing:", *missing)
        raise SystemExit(77)
    random.seed(1)
    home = pathlib.Path(tempfile.mkdtemp(prefix="desk-day-"))
    screen = ManagedScreen(home, given.pictures)
    subprocess.run([given.tool, "first-start"], env=screen.env, check=True, stdout=subprocess.DEVNULL)
    base = move_to_postgres(home, screen.env, given.tool, given.postgres) if given.postgres else Embedded(home)
    prepare(base)
    desk = subprocess.Popen([given.quilla], env=screen.env, start_new_session=True, stderr=subprocess.DEVNULL)
    try:
        sign_in(screen)
        day = Day(screen, base)
        for _ in range(given.scans):
            day.scan()
        day.fine()
        screen.picture("day")
        day.compare()
        if not given.postgres:
            subprocess.run([given.tool, "check"], env=screen.env, check=True)
    finally:
        os.killpg(desk.pid, signal.SIGKILL)
        desk.wait()
        screen.close()
        shutil.rmtree(home, ignore_errors=True)
    print(f"{len(day.expected)} scans stand in the list as the database has them")


if __name__ == "__main__":
    main()
