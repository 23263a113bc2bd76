"""A T-SQL grammar that is not ours reads the script for SQL Server and every statement of the cases.

    test_tsql_parser.py

Ends with 77, which skips the test, where the package sqlfluff is missing.
"""
import multiprocessing
import pathlib
import re
import sys

try:
    from sqlfluff.core import FluffConfig, Linter
except ImportError:
    print("skipped: no T-SQL parser is installed (package sqlfluff)")
    sys.exit(77)

LINTER = Linter(config=FluffConfig(overrides={"dialect": "tsql"}))
TESTS = pathlib.Path(__file__).parents[1]
KEYS = ("sqlite:", "postgres:", "params:", "columns:", "rows:", "then:", "fails:")

# What SQL Server takes and this grammar does not: names in other letters than ASCII, the name Global, a doubled
# bracket or quote in a name, and the old way to name the table of an index.
UNKNOWN = [
    (re.compile(r"(--[^\n]*|'(?:[^']|'')*'|\"[^\"]*\"|\[[^\]]*\])|(\w*[^\x00-\x7f]\w*)"),
     lambda m: m[1] or "c" + m[2].encode().hex()),
    (re.compile(r"\bglobal\b", re.I), lambda m: "[Global]"),
    (re.compile(r"\[a]]b]|\"\[x\"\"y]\""), lambda m: "[ab]"),
    (re.compile(r"\bdrop index (\w+)\.(\w+)", re.I), lambda m: f"drop index {m[2]} on {m[1]}"),
]

# None of these may pass, or else the grammar reads nothing.
WRONG = ["select a from", "create table t (order int)", "select limit 3 from t limit 3", "insert into t(a values(1)"]


def script():
    text = (TESTS / "database/sqlserver_script.golden").read_text()
    return [(f"script, batch {i}", batch) for i, batch in enumerate(re.split(r"(?m)^go\n", text), 1)]


def cases(file):
    """The statements that the dialect takes; those that it refuses are never sent."""
    lines = [line for line in file.read_text().split("\n") if not line.startswith("#")]
    for block in "\n".join(lines).split("\n\n"):
        if "\nrefused:" not in block:
            statement = [line for line in block.strip("\n").split("\n") if not line.startswith(KEYS)]
            yield f"{file.name}: {statement[0]}", "\n".join(statement)


def faults(statement):
    for pattern, known in UNKNOWN:
        statement = pattern.sub(known, statement)
    return [fault.desc() for fault in LINTER.parse_string(statement).violations]


def told(statement):
    return statement[0], faults(statement[1])


def main():
    statements = script() + [case for file in sorted((TESTS / "sql/cases").glob("*.txt")) for case in cases(file)]
    with multiprocessing.Pool(2) as pool:
        found = [(place, wrong) for place, wrong in pool.imap(told, statements, 8) if wrong]
    found += [(text, ["the parser took it"]) for text in WRONG if not faults(text)]
    for place, wrong in found:
        print(place, *wrong, sep="\n    ")
    print(f"{len(statements)} statements read, {len(found)} not understood")
    return 1 if found or len(statements) < 300 else 0


if __name__ == "__main__":
    sys.exit(main())
