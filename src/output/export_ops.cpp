#include "output/export_ops.h"

#include "frame/work.h"
#include "platform/grid/grid_model.h"
#include "platform/sheet/sheet_writer.h"

#include <QDir>
#include <QFileInfo>

namespace quilla {

namespace {

constexpr int Sheets = 3;
constexpr qsizetype LongestExactNumber = 15; ///< digits that a spreadsheet keeps

using RowWriter = std::function<void(SheetWriter& sheet, int row)>;

/// A free name in the folder, after the title; also one that no other export is writing.
QString freeFile(const QString& folder, QString title)
{
    const QString base = QDir(folder).filePath(title.replace(u'/', u'-'));
    QString file = base + u".xlsx"_s;
    for (int number = 2; QFileInfo::exists(file) || QFileInfo::exists(partialFile(file)); ++number)
        file = u"%1 (%2).xlsx"_s.arg(base, QString::number(number));
    return file;
}

/// A whole or decimal number as the database writes it; no code with a zero in front.
bool readsAsNumber(const QString& text)
{
    bool number = false;
    text.toDouble(&number);
    const QStringView digits = QStringView(text).mid(text.startsWith(u'-') ? 1 : 0);
    const bool plain = std::all_of(
        digits.begin(), digits.end(), [](QChar c) { return (c >= u'0' && c <= u'9') || c == u'.'; });
    const bool code = digits.size() > 1 && digits[0] == u'0' && digits[1] != u'.';
    return number && plain && !code && digits.size() <= LongestExactNumber;
}

void writeField(SheetWriter& sheet, int row, int col, const Value& value, CellFormat format)
{
    if (value.isNull()) return;
    const sql::Kind kind = value.kind();
    if (kind == sql::Kind::Date) {
        if (const auto moment = value.moment()) return sheet.date(row, col, moment->date);
    }
    const bool numeric = kind == sql::Kind::Integer || kind == sql::Kind::Decimal;
    const std::optional<double> number
        = numeric || format == CellFormat::Money ? value.number() : std::optional<double>();
    if (number && format == CellFormat::Money) return sheet.money(row, col, *number);
    if (number && format == CellFormat::General) return sheet.number(row, col, *number);
    sheet.text(row, col, trimBlanks(value.text()));
}

/// Money stands in a grid with a comma after each thousand.
void writeCell(SheetWriter& sheet, int row, int col, const QString& text, CellFormat format)
{
    const QString amount = QString(text).remove(u',');
    if (format == CellFormat::Money && readsAsNumber(amount)) return sheet.money(row, col, amount.toDouble());
    if (format == CellFormat::General && readsAsNumber(text)) return sheet.number(row, col, text.toDouble());
    sheet.text(row, col, text);
}

/// Where the columns' fields stand in the result.
std::vector<int> fieldPlaces(const Recordset& rows, const ExportLayout& layout)
{
    std::vector<int> places;
    for (const ExportColumn& column : layout.columns)
        places.push_back(rows.needField(column.field));
    return places;
}

/// Writes the rows of one sheet. False when the operator ended the run.
bool writeRows(const Exporter& exporter, SheetWriter& sheet, int firstRow, qsizetype count,
    qsizetype doneBefore, const RowWriter& write)
{
    for (qsizetype row = 0; row < count; ++row) {
        if (!exporter.progress.goOn()) return false;
        write(sheet, firstRow + int(row));
        exporter.progress.setDone(doneBefore + row + 1);
    }
    return true;
}

/// All sheets of the file. The first has the title; on the others the captions come first.
bool writeSheets(const Exporter& exporter, SheetWriter& sheet, const ExportLayout& layout,
    const std::vector<qsizetype>& counts, const RowWriter& write)
{
    for (int number = 1; number <= Sheets; ++number)
        sheet.addSheet(u"Sheet"_s + QString::number(number), layout.widths());
    qsizetype done = 0;
    for (int index = 0; index < Sheets && counts[std::size_t(index)] > 0; ++index) {
        sheet.selectSheet(index);
        const int captionRow = index == 0 ? 2 : 0;
        if (index == 0) sheet.title(layout.title, int(layout.columns.size()));
        sheet.captions(captionRow, layout.captions());
        if (!writeRows(exporter, sheet, captionRow + 1, counts[std::size_t(index)], done, write))
            return false;
        done += counts[std::size_t(index)];
    }
    return true;
}

/// What is reported after an export; nothing when both texts are empty.
struct Outcome {
    QString message {};
    QString unshownFile {}; ///< it was written, and no program is there to show it
};

/// Writes the file and shows it. An export that was ended leaves nothing behind.
Outcome writeFile(const Exporter& exporter, const ExportLayout& layout, const std::vector<qsizetype>& counts,
    const RowWriter& write)
{
    const QString file = freeFile(exporter.program.folder(), layout.title);
    {
        SheetWriter sheet(file);
        if (!writeSheets(exporter, sheet, layout, counts, write)) return {};
        sheet.save();
    }
    if (exporter.program.show(file)) return {};
    return {.unshownFile = file};
}

/// The export worked, so its file is named and its folder offered.
void offerFolder(const Exporter& exporter, const QString& file)
{
    const QString question
        = u"数据已导出到文件：\n%1\n本机没有可以打开电子表格的程序。要打开文件所在的文件夹吗？"_s.arg(
            QDir::toNativeSeparators(file));
    if (exporter.session.prompt.ask(question, OperationTitle, Icon::Information))
        exporter.program.showFolder(file);
}

/// Runs the steps under the progress window, and reports their outcome after it has closed.
void runExport(const Exporter& exporter, const std::function<Outcome()>& steps)
{
    exporter.progress.begin();
    Outcome outcome;
    try {
        outcome = steps();
    } catch (const Error& error) {
        outcome.message = u"出现意外错误！详细信息如下：\n"_s + error.text;
    }
    exporter.progress.end();
    if (!outcome.message.isEmpty()) exporter.session.prompt.inform(outcome.message, OperationTitle);
    if (!outcome.unshownFile.isEmpty()) offerFolder(exporter, outcome.unshownFile);
}

Outcome exportSelect(const Exporter& exporter, const ExportLayout& layout, const QString& select)
{
    StrictWork work(exporter.session);
    if (!work) return {};
    Recordset rows = work.open(select);
    if (rows.recordCount() < 1) return {.message = u"没有符合条件的记录！"_s};
    exporter.progress.setTotal(rows.recordCount());
    const std::vector<int> places = fieldPlaces(rows, layout);
    return writeFile(exporter, layout, rowsOfSheets(rows.recordCount()), [&](SheetWriter& sheet, int row) {
        for (std::size_t col = 0; col < places.size(); ++col)
            writeField(sheet, row, int(col), rows.field(places[col]), layout.columns[col].format);
        rows.next();
    });
}

} // namespace

std::vector<qsizetype> rowsOfSheets(qsizetype total)
{
    std::vector<qsizetype> counts;
    for (int index = 0; index < Sheets; ++index) {
        const bool last = index == Sheets - 1;
        counts.push_back(last ? total : std::min(total, RowsPerSheet));
        total -= counts.back();
    }
    return counts;
}

void exportList(
    const Exporter& exporter, const ExportLayout& layout, const QString& select, QStringView nothing)
{
    if (select.isEmpty()) return exporter.session.prompt.inform(nothing.toString(), OperationTitle);
    runExport(exporter, [&] { return exportSelect(exporter, layout, select); });
}

void exportGrid(const Exporter& exporter, const ExportLayout& layout, const GridModel& grid, qsizetype count)
{
    if (count < 1) return exporter.session.prompt.inform(u"没有需要导出的数据！"_s, OperationTitle);
    runExport(exporter, [&] {
        int line = 0;
        exporter.progress.setTotal(count);
        return writeFile(exporter, layout, {grid.Rows() - 1, 0, 0}, [&](SheetWriter& sheet, int row) {
            ++line;
            for (std::size_t col = 0; col < layout.columns.size(); ++col)
                writeCell(sheet, row, int(col), trimBlanks(grid.TextMatrix(line, int(col))),
                    layout.columns[col].format);
        });
    });
}

} // namespace quilla
