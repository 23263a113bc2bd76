"""The figures of the statistics, worked out row by row from the tables of a library's file.

    figures.py FILE FIRST_YEAR LAST_YEAR

Prints a JSON list of [call, isOrdered, rows]; fields are joined by "|", null is "null".
"""
import calendar
import collections
import decimal
import json
import pathlib
import sqlite3
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
import library_order

LETTERS = "ABCDEFGHIJKNOPQRSTUVXZ"
SUM = "合计"


def fold(text):
    return None if text is None else text.rstrip(" ").casefold()


class Library:
    def __init__(self, file):
        self.base = sqlite3.connect(file)
        library_order.know(self.base)
        self.readers = {fold(r[0]): r for r in self.rows("readercode,name,readerclass,readunit", "dzk")}
        self.titles = {r[0]: r for r in self.rows("zskid,bookname,author,classcode,zch,fzqfh", "zsk")}
        self.copies = {fold(code): title for code, title in self.rows("barcode,zskid", "sck")}
        self.open = self.rows("jhskid,readercode,barcode,orderdate,yhdate,null,operater", "jhsk")
        self.done = self.rows("jhslsk,readercode,barcode,orderdate,yhdate,backdate,operater", "jhslsk")
        self.fines = self.rows("opratedate,sfmoney", "fkk")
        self.withdrawn = [day for day, in self.rows("outdate", "BookOut")]
        self.types = [t for t, in self.rows("readerclass", "dzlx", "dzlxid")]

    def rows(self, columns, table, order="1"):
        return self.base.execute(f"select {columns} from {table} order by {order}").fetchall()

    def lent(self):
        """Reader, copy and day of everything that was ever lent."""
        return [(fold(r[1]), fold(r[2]), r[3], r[1]) for r in self.open + self.done if r[3]]


def day_of(moment, unit):
    """The number of the day or month within its period; unit is the length of the period's text."""
    return int(moment[8:10]) if unit == 7 else int(moment[5:7])


def lines(period):
    """The days of a month or the months of a year."""
    if len(period) == 4:
        return range(1, 13)
    return range(1, calendar.monthrange(int(period[:4]), int(period[5:]))[1] + 1)


def table(period, cells, columns):
    """Cells by line and column, with the sums below; nothing where no figure is above 0."""
    if not any(value > 0 for value in cells.values()):
        return []
    out = []
    for line in [*lines(period), SUM]:
        row = [sum((v for (at, c), v in cells.items() if c == col and (line == SUM or at == line)),
                   decimal.Decimal(0)) for col in columns]
        out.append((line, row))
    return out


def number(value):
    text = format(decimal.Decimal(value), "f")
    return text.rstrip("0").rstrip(".") if "." in text else text


def quoted(text):
    return text.replace("'", "''")


def workload(lib, period):
    unit = len(period)
    cells = collections.Counter()
    visits = set()
    for reader, _, day, _ in lib.lent():
        if day.startswith(period):
            cells[day_of(day, unit), "lent"] += 1
            visits.add((day[:10], reader))
    for _, reader, _, _, due, back, _ in lib.done:
        if back and back.startswith(period):
            at = day_of(back, unit)
            cells[at, "back"] += 1
            cells[at, "late"] += bool(due) and back[:10] > due[:10]
            visits.add((back[:10], fold(reader)))
    for day, money in lib.fines:
        if day and day.startswith(period):
            cells[day_of(day, unit), "fine"] += decimal.Decimal(str(money or 0))
    for day, _ in visits:
        cells[day_of(day, unit), "visits"] += 1
    for day in lib.withdrawn:
        if day and day.startswith(period):
            cells[day_of(day, unit), "out"] += 1
    columns = ["lent", "back", "late", "fine", "visits", "out"]
    return ["|".join([str(line), *map(number, row)]) for line, row in table(period, cells, columns)]


def classes(lib, period):
    cells = collections.Counter()
    for _, copy, day, _ in lib.lent():
        title = lib.titles.get(lib.copies.get(copy))
        letter = (title[3] or "")[:1].upper() if title else ""
        if day.startswith(period) and letter and letter in LETTERS:
            cells[day_of(day, len(period)), letter] += 1
    return ["|".join([str(line), *map(number, row), number(sum(row))])
            for line, row in table(period, cells, LETTERS)]


def reader_types(lib, period):
    days = {}
    for reader, _, day, _ in lib.lent():
        if day.startswith(period):
            kind = lib.readers[reader][2] if reader in lib.readers else ""
            days.setdefault(fold(kind or ""), [kind or "", [0] * 31])[1][int(day[8:10]) - 1] += 1
    if not days:
        return []
    out = {}
    for kind in lib.types:
        if kind and fold(kind):
            out.setdefault(fold(kind), [kind, days.pop(fold(kind), [0, [0] * 31])[1]])
    out.update(sorted(days.items()))
    return ["|".join([kind, str(sum(row)), *map(str, row)]) for kind, row in out.values()]


def readers(lib, year, unit, kind):
    months = {}
    for reader, _, day, code in lib.lent():
        if day.startswith(year):
            months.setdefault(reader, [code, [0] * 12])[1][int(day[5:7]) - 1] += 1
    out = []
    for reader, (code, row) in months.items():
        card = lib.readers.get(reader, (code, None, None, None))
        if all(wanted in ("全部", "") or fold(has) == fold(wanted)
               for has, wanted in ((card[3], unit), (card[2], kind))):
            head = ["null" if part is None else part for part in (card[3], card[1], card[2], card[0])]
            out.append("|".join([*head, str(sum(row)), *map(str, row)]))
    return out


def ranked(counts, key, most):
    """Rank and item, the highest count first; equal counts share a rank."""
    order = sorted(counts, key=lambda item: (-counts[item], key(item)))
    return [(1 + sum(counts[other] > counts[item] for other in counts), item) for item in order[:most]]


def books(lib, unit, most, first, last, beginning):
    counts = collections.Counter()
    for reader, copy, day, _ in lib.lent():
        title = lib.titles.get(lib.copies.get(copy))
        if title is None or not first <= day[:10] <= last:
            continue
        if unit not in ("全部", "") and (reader not in lib.readers or fold(lib.readers[reader][3]) != fold(unit)):
            continue
        if beginning == "全部" or (title[3] or "").upper().startswith(beginning.upper()):
            counts[title] += 1
    out = []
    for rank, title in ranked(counts, lambda t: (fold(t[3]) or "", t[4], t[0]), most):
        call = "null" if title[3] is None else f"{title[3].rstrip(' ')}/{title[4]}{title[5]}"
        out.append("|".join([str(rank), unit or "全部", call, title[1], title[2], str(counts[title])]))
    return out


def active(lib, kind, most, first, last):
    counts = collections.Counter()
    for reader, _, day, _ in lib.lent():
        card = lib.readers.get(reader)
        if card and first <= day[:10] <= last and (kind in ("全部", "") or fold(card[2]) == fold(kind)):
            counts[card] += 1
    return ["|".join([str(rank), card[1], card[2], card[3], str(counts[card])])
            for rank, card in ranked(counts, lambda c: fold(c[0]), most)]


def history(lib, column, code):
    out = []
    for mark, rows in (("在借", lib.open), ("已还", lib.done)):
        found = [r for r in rows if fold(r[column]) == fold(code)]
        for r in sorted(found, key=lambda r: (r[3], r[0]), reverse=True):
            out.append("|".join([mark, r[2], r[1], r[3], r[5] or "null", r[6]]))
    return out


def main():
    file, first, last = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
    lib = Library(file)
    out = []
    for year in map(str, range(first, last + 1)):
        out.append([f"exec dbo.nianLiuTongTJ '{year}'", True, workload(lib, year)])
        out.append([f"exec dbo.NianJieChuFenLeiTJ '{year}'", True, classes(lib, year)])
        for month in range(1, 13):
            period, days = f"{year}-{month:02}", calendar.monthrange(int(year), month)[1]
            out.append([f"exec dbo.YueLiuTongTJ '{year}-{month}',{days}", True, workload(lib, period)])
            out.append([f"exec dbo.YueJieChuFenLeiTJ '{year}-{month}',{days}", True, classes(lib, period)])
            out.append([f"exec procydztj '{year}','{month}'", True, reader_types(lib, period)])
        unit = lib.rows("readunit", "dzk")[0][0]
        for some_unit, kind in (("全部", "全部"), (unit, "全部"), ("全部", "学生"), ("", "教师")):
            out.append([f"exec procndztj '{year}','{quoted(some_unit)}','{kind}'", False,
                        readers(lib, year, some_unit, kind)])
        begin, end = f"{year}-01-01", f"{year}-12-31"
        for some_unit, beginning in (("全部", "全部"), (unit, "I"), ("", "TP"), ("全部", "")):
            call = f"exec procjhphb '{quoted(some_unit)}','30','{begin}','{end}','{beginning}' "
            out.append([call, True, books(lib, some_unit, 30, begin, end, beginning)])
        for kind in ("全部", "教师", ""):
            out.append([f"exec procdzjyphb  '{kind}','25','{begin}','{end}'", True,
                        active(lib, kind, 25, begin, end)])
    for unit, kind in (("一班 ", "全部"), ("二'班", "guest"), ("没有", "全部")):
        call = f"exec procndztj '2026','{quoted(unit)}','{kind}'"
        out.append([call, False, readers(lib, "2026", unit, kind)])
    for most, begin, end, beginning in ((10, "2026-01-01", "2026-01-31", "全部"), (10, "2026-03-01", "9999-12-31", ""),
                                        (9, "2025-01-01", "2026-12-31", "tp"), (9, "2025-01-01", "2026-12-31", "%"),
                                        (9, "2026-02-01", "2026-01-31", "全部")):
        call = f"exec procjhphb '全部','{most}','{begin}','{end}','{beginning}' "
        out.append([call, True, books(lib, "全部", most, begin, end, beginning)])
    for kind, most, begin, end in (("学生 ", 1, "2026-02-28", "2026-02-28"), ("全部", 2, "2026-02-01", "9999-12-31"),
                                   ("全部", 9, "2026-02-01", "2026-01-31")):
        call = f"exec procdzjyphb '{kind}','{most}','{begin}','{end}'"
        out.append([call, True, active(lib, kind, most, begin, end)])
    out.append(["exec procjylstj 17,'B1','r1'", True, history(lib, 1, "r1")])
    out.append(["exec procjylstj 0,'b1b ','R1'", True, history(lib, 2, "b1b ")])
    for code in sorted({r[1] for r in lib.open + lib.done})[::7]:
        out.append([f"exec procjylstj 17,'','{code}'", True, history(lib, 1, code)])
    for code in sorted({r[2] for r in lib.open + lib.done})[::50]:
        out.append([f"exec procjylstj 0,'{code}',''", True, history(lib, 2, code)])
    json.dump(out, sys.stdout, ensure_ascii=False)


main()
