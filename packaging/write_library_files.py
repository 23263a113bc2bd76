#!/usr/bin/env python3
"""Writes files as another library system would hand them over: books.mrc (CNMARC, UTF-8, ISO 2709, two copies a
record) and readers.csv.

    write_library_files.py FOLDER [RECORDS] [READERS]
"""
import csv
import pathlib
import sys

END_OF_FIELD, END_OF_RECORD, DELIMITER = b"\x1e", b"\x1d", "\x1f"
SUBJECTS = [("I247.5", "长篇小说"), ("K825.6", "人物传记"), ("TP312", "程序设计"), ("O13", "高等数学"), ("H31", "英语")]
SURNAMES, GIVEN = "王李张刘陈杨赵黄周吴", "伟芳娜敏静丽强磊军洋勇艳杰娟涛明超秀霞平"


def subfields(indicators, *pairs):
    return (indicators + "".join(DELIMITER + code + text for code, text in pairs)).encode()


def isbn(number):
    digits = f"9787{number:08d}"
    check = -sum(int(digit) * (3 if at % 2 else 1) for at, digit in enumerate(digits)) % 10
    return f"{digits}{check}"


def fields(number):
    code, subject = SUBJECTS[number % len(SUBJECTS)]
    yield "001", f"{number:010d}".encode()
    yield "010", subfields("  ", ("a", isbn(number)), ("d", f"CNY{number % 90 + 10}.00"))
    yield "101", subfields("0 ", ("a", "chi"))
    yield "200", subfields("1 ", ("a", f"{subject}第{number}种"), ("f", f"{SURNAMES[number % 10]}作者著"))
    yield "210", subfields("  ", ("a", "北京"), ("c", f"第{number % 60}出版社"), ("d", str(1990 + number % 36)))
    yield "215", subfields("  ", ("a", f"{number % 400 + 100}页"), ("d", "21cm"))
    yield "606", subfields("0 ", ("a", subject))
    yield "690", subfields("  ", ("a", code), ("v", "4"))
    for copy in (1, 2):
        yield "905", subfields("  ", ("a", "总馆"), ("b", f"{number:07d}{copy}"))


def record(number):
    directory, data = b"", b""
    for tag, content in fields(number):
        content += END_OF_FIELD
        directory += f"{tag}{len(content):04d}{len(data):05d}".encode()
        data += content
    directory += END_OF_FIELD
    base = 24 + len(directory)
    leader = f"{base + len(data) + 1:05d}nam0 22{base:05d}   450 "
    return leader.encode() + directory + data + END_OF_RECORD


def reader(number):
    name = SURNAMES[number % 10] + GIVEN[number // 10 % 20] + GIVEN[number // 200 % 20]
    kind = "教师" if number % 10 == 0 else "学生"
    return [f"D{number:06d}", name, "男" if number % 2 else "女", kind, f"{number % 40 + 1}班", "2036-07-01"]


def main():
    folder = pathlib.Path(sys.argv[1])
    records, readers = (list(map(int, sys.argv[2:])) + [20000, 5000][len(sys.argv) - 2:])[:2]
    with open(folder / "books.mrc", "wb") as out:
        for number in range(1, records + 1):
            out.write(record(number))
    with open(folder / "readers.csv", "w", encoding="utf-8-sig", newline="") as out:
        rows = csv.writer(out)
        rows.writerow(["读者证号", "姓名", "性别", "读者类型", "单位名称", "有效期限"])
        rows.writerows(reader(number) for number in range(1, readers + 1))


if __name__ == "__main__":
    main()
