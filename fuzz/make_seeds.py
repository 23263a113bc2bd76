#!/usr/bin/env python3
"""Writes each statement of the translator's case files into a file of its own: make_seeds.py CASES FOLDER."""
import hashlib
import pathlib
import re
import sys

KEYS = re.compile(r"(sqlite|postgres|params|columns|rows|refused|fails):")


def statements(path):
    text = path.read_text(encoding="utf-8")
    if path.suffix == ".sql":
        yield from re.split(r"^go\s*$", text, flags=re.MULTILINE | re.IGNORECASE)
        return
    for case in re.split(r"\n\s*\n", text):
        lines = [line for line in case.split("\n") if not line.startswith("#") and not KEYS.match(line)]
        yield "\n".join(lines)


def main(cases, folder):
    folder.mkdir(parents=True, exist_ok=True)
    for path in sorted(cases.iterdir()):
        for statement in filter(str.strip, statements(path)):
            data = statement.encode("utf-8")
            (folder / hashlib.sha1(data).hexdigest()).write_bytes(data)
    (folder / "done").write_bytes(b"")


main(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]))
