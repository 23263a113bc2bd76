"""Prints what a spreadsheet file holds, one thing a line, as an independent reader sees it."""
import datetime
import json
import sys

import openpyxl

book = openpyxl.load_workbook(sys.argv[1])
for sheet in book.worksheets:
    print("sheet", sheet.title, sheet.max_row, " ".join(str(r) for r in sheet.merged_cells.ranges))
    print("widths", " ".join(f"{k}={round(v.width)}" for k, v in sorted(sheet.column_dimensions.items())))
    for row in sheet.iter_rows():
        for cell in row:
            if cell.value is None:
                continue
            value = cell.value.strftime("%Y-%m-%d") if isinstance(cell.value, datetime.datetime) else cell.value
            look = cell.number_format
            if cell.row <= 3 and cell.font.b:
                look = f"{cell.font.name} {cell.font.sz:g} {cell.alignment.horizontal} {cell.alignment.vertical}"
            elif cell.fill.patternType:
                look = f"{cell.fill.patternType} {cell.fill.fgColor.rgb} {cell.alignment.horizontal}"
            print(cell.coordinate, cell.data_type, json.dumps(value, ensure_ascii=False), look)
