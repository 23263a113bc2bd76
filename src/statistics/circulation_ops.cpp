#include "statistics/circulation_ops.h"

#include "frame/sublib.h"
#include "frame/work.h"
#include "platform/db/decimal.h"
#include "platform/grid/grid_model.h"

namespace quilla {

namespace {

constexpr int BlankRows = 12;
const QStringList MoneyFields {u"price"_s, u"sfmoney"_s};

const QueryTriple FineTriple {
    u"bookname,author,barcode,readercode,name,readerclass,readunit,cause,sfmoney,opratedate"_s,
    u"书名,作者,条形码,读者号,读者姓名,读者类型,读者单位,罚款原因,实罚金额,罚款日期"_s,
    u"字符,字符,字符,字符,字符,字符,字符,字符,数字,日期"_s};

QString daysText(Session& session, const Value& due)
{
    const std::optional<Moment> moment = due.moment();
    return moment ? daysOverdue(GetServerDate(session), *moment) : QString();
}

QString text(Session& session, const QString& field, const Recordset& row)
{
    if (field == OverdueDays) return daysText(session, row.field(u"yhdate"));
    const Value& value = row.field(field);
    if (value.kind() == sql::Kind::Date) return isoDate(value.moment());
    const auto amount = MoneyFields.contains(field) ? Decimal::read(value.text()) : std::nullopt;
    return amount ? amount->fixed(2) : value.text();
}

/// Line by line, the server's date asked anew for each one with overdue days. How many there were.
qsizetype fill(Session& session, const CirculationMode& mode, Recordset& rows, GridModel& cells)
{
    const GridModel::Filling filling(cells);
    cells.Clear();
    cells.setFormatString(mode.format);
    cells.setRows(BlankRows);
    int line = 0;
    for (; !rows.eof(); rows.next()) {
        if (++line == cells.Rows()) cells.setRows(line + 1);
        for (int col = 0; col < mode.cells.size(); ++col)
            cells.setTextMatrix(line, col, text(session, mode.cells[col], rows));
    }
    return line;
}

CirculationMode loanHistoryMode()
{
    return {
        .name = u"JHSLSK"_s,
        .caption = u"借还历史统计"_s,
        .format
        = u"<书名                  |<著 者   |^条形码    |^借书日期   |^应还日期   |^还书日期   |操作员"_s,
        .select
        = u"select bookname,author,barcode,orderdate,yhdate,backdate,operater,name,readunit from JhslskV"_s,
        .dateField = u"backdate"_s,
        .triple
        = {u"bookname,author,barcode,readercode,name,readerclass,readunit,orderdate,yhdate,backdate"_s,
            u"书名,作者,条形码,读者号,读者姓名,读者类型,读者单位,借书日期,应还日期,还书日期"_s,
            u"字符,字符,字符,字符,字符,字符,字符,日期,日期,日期"_s},
        .cells = {u"bookname"_s, u"author"_s, u"barcode"_s, u"orderdate"_s, u"yhdate"_s, u"backdate"_s,
            u"operater"_s},
        .report = u"JHLSDataReport"_s,
        .paperHint = u"报表格式为【A4,宽行】,请确认打印机设置正确后再打印!"_s,
        .sheet = ListExport::LoanHistory,
    };
}

CirculationMode openLoansMode()
{
    return {
        .name = u"JHSK"_s,
        .caption = u"借书情况统计"_s,
        .format = u"<书名                  |<著 者   |^条形码    |^借书日期   |^应还日期   |^超期天数   "_s,
        .select = u"select bookname,author,barcode,orderdate,yhdate,name,readunit from JhskV"_s,
        .dateField = u"orderdate"_s,
        .triple = {u"bookname,author,barcode,readercode,name,readerclass,readunit,orderdate,yhdate"_s,
            u"书名,作者,条形码,读者号,读者姓名,读者类型,读者单位,借书日期,应还日期"_s,
            u"字符,字符,字符,字符,字符,字符,字符,日期,日期"_s},
        .cells = {u"bookname"_s, u"author"_s, u"barcode"_s, u"orderdate"_s, u"yhdate"_s, OverdueDays},
        .report = u"ZqDataReport"_s,
        .sheet = ListExport::OpenLoans,
    };
}

CirculationMode finesMode()
{
    return {
        .name = u"FKK"_s,
        .caption = u"罚款统计报表"_s,
        .format = u"<书名              |^条形码    |^读者号   |^读者单位  |^罚款原因|^实罚金额|^罚款日期  "_s,
        .select
        = u"select bookname,barcode,readercode,name,readunit,cause,sfmoney,opratedate,oprater from FkkV"_s,
        .dateField = u"opratedate"_s,
        .triple = FineTriple,
        .cells = {u"bookname"_s, u"barcode"_s, u"readercode"_s, u"readunit"_s, u"cause"_s, u"sfmoney"_s,
            u"opratedate"_s},
        .report = u"FkDataReport"_s,
        .sheet = ListExport::Fines,
    };
}

/// The lost books are searched by the fields of the fines, which their table lacks: with a date or with one
/// of those fields the select fails, and the list stays as it was. Their third caption is the one that
/// libraries know.
CirculationMode lostBooksMode()
{
    return {
        .name = u"Lost"_s,
        .caption = u"丢失统计报表"_s,
        .format = u"<书名              |^责任者    |^条形玛   |^单价  |^注销原因|^注销日期|^操作者  "_s,
        .select
        = u"select BookOutID,outdate,bookname,author,barcode,price,cause,operater from BookOut where cause='丢失'"_s,
        .joint = u" And "_s,
        .dateField = u"opratedate"_s,
        .triple = FineTriple,
        .cells
        = {u"bookname"_s, u"author"_s, u"barcode"_s, u"price"_s, u"cause"_s, u"outdate"_s, u"operater"_s},
        .report = u"DsDataReport"_s,
        .sheet = ListExport::LostBooks,
    };
}

} // namespace

const std::vector<CirculationMode>& circulationModes()
{
    static const std::vector<CirculationMode> modes {
        loanHistoryMode(), openLoansMode(), finesMode(), lostBooksMode()};
    return modes;
}

ListSearch circulationSearch(const CirculationMode& mode, const std::optional<DateLimits>& dates,
    const QString& condition, const QString& order)
{
    QStringList parts;
    if (dates) parts.append(u"%1 between '%2' And '%3'"_s.arg(mode.dateField, dates->from, dates->to));
    if (!condition.isEmpty()) parts.append(condition);
    return {mode.select, parts.join(u" And "_s), order, mode.joint};
}

std::optional<qsizetype> listCirculation(
    Session& session, const CirculationMode& mode, const QString& statement, GridModel& cells)
{
    ResumingWork work(session);
    if (!work) return {};
    Recordset rows = work.select(statement, CursorType::Forward);
    if (work.failed()) return {};
    if (rows.eof()) return 0;
    return session.error.attempt([&] { return fill(session, mode, rows, cells); });
}

QString daysOverdue(const Moment& now, const Moment& due)
{
    constexpr double dayLength = 24.0 * 60 * 60 * 1000;
    const qint64 days = due.date.daysTo(now.date);
    const int part = due.time.msecsTo(now.time);
    const DecimalDigits digits(double(days) + part / dayLength);
    return QString::fromLatin1(digits.view().data(), qsizetype(digits.view().size()));
}

} // namespace quilla
