#pragma once

#include "platform/core/text.h"

#include <QStringList>

#include <vector>

namespace quilla {

/// How the cells of a column are written. `General`: dates as dates, numbers as numbers, texts as texts.
/// `Text`: a text also where it looks like a number.
enum class CellFormat { General, Text, Money };

struct ExportColumn {
    QString caption;
    QString field {}; ///< of the result; a grid goes by the order of its columns
    double width = 0; ///< in characters; 0 is the spreadsheet's usual width
    CellFormat format = CellFormat::General;
};

/// A spreadsheet as an operator asks for it.
struct ExportLayout {
    QString title;
    std::vector<ExportColumn> columns;

    QStringList captions() const;
    std::vector<double> widths() const;
};

/// The lists that can be put on a spreadsheet.
enum class ListExport { Readers, Withdrawals, LoanHistory, OpenLoans, Fines, LostBooks, Overdue };
ExportLayout listLayout(ListExport list);

/// The statistics, as their grids stand.
ExportLayout monthlyWorkloadLayout(int year, int month);
ExportLayout yearlyWorkloadLayout(int year);
ExportLayout monthlyClassesLayout(int year, int month);
ExportLayout yearlyClassesLayout(int year);
ExportLayout monthlyReadersLayout(int year, int month);
ExportLayout yearlyReadersLayout(int year);

} // namespace quilla
