#pragma once

#include "frame/session.h"
#include "output/export_layouts.h"
#include "platform/core/progress.h"
#include "platform/sheet/spreadsheet_program.h"

namespace quilla {

class GridModel;

/// What an export needs beside its data.
struct Exporter {
    Session& session;
    Progress& progress;
    SpreadsheetProgram& program;
};

/// What stands when a screen has nothing to put on a spreadsheet.
inline constexpr QStringView NothingToPrint = u"没有可以打印的信息！";
inline constexpr QStringView NothingToOutput = u"没有需要输出的信息！";
/// What the lists of overdue loans and of withdrawals say when they have nothing to print.
inline constexpr QStringView NothingForPaper = u"没有需要打印的信息！";

constexpr qsizetype RowsPerSheet = 50000;

/// How `total` rows are spread over the three sheets: full ones first, the third takes all that is left.
std::vector<qsizetype> rowsOfSheets(qsizetype total);

/// Runs a screen's last select again and puts its rows on a spreadsheet, which is shown at the end. `nothing`
/// is the message when the select is empty. Every failure is reported, and none leaves a file behind.
void exportList(
    const Exporter& exporter, const ExportLayout& layout, const QString& select, QStringView nothing);

/// The same with the lines of a statistic's grid; `count` is how many the last run brought.
void exportGrid(const Exporter& exporter, const ExportLayout& layout, const GridModel& grid, qsizetype count);

} // namespace quilla
