#include "platform/report/sheet_output.h"

#include "platform/core/dates.h"
#include "platform/report/report_data.h"
#include "platform/sheet/sheet_writer.h"

namespace quilla {

namespace {

constexpr int CaptionRow = 2; // under the title

/// In characters; a text shares what is left on paper, and has room here.
double widthOf(const ReportColumn& column)
{
    return column.content == Content::Text ? 40 * column.share : 14;
}

/// Codes stay texts, with the zeros in front of them.
void writeCell(SheetWriter& sheet, int row, int col, const QString& text, Content content)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    const auto day = content == Content::Date ? readDay(text) : std::nullopt;
    if (day && isoDate(*day) == text) // years and months alone stay as they are
        sheet.date(row, col, *day);
    else if (isNumber && content == Content::Money)
        sheet.money(row, col, number);
    else if (isNumber && content == Content::Count)
        sheet.number(row, col, number);
    else
        sheet.text(row, col, text);
}

} // namespace

void saveSheet(const ReportTable& table, const QString& file)
{
    const std::vector<ReportColumn>& columns = table.design.Section1;
    std::vector<double> widths;
    for (const ReportColumn& column : columns)
        widths.push_back(widthOf(column));
    SheetWriter sheet(file);
    sheet.addSheet(u"Sheet1"_s, widths);
    sheet.title(table.title, int(columns.size()));
    sheet.captions(CaptionRow, table.captions);
    for (qsizetype row = 0; row < table.data.rows(); ++row)
        for (std::size_t col = 0; col < columns.size(); ++col)
            writeCell(sheet, CaptionRow + 1 + int(row), int(col), table.data.cell(row, int(col)),
                columns[col].content);
    sheet.save();
}

} // namespace quilla
