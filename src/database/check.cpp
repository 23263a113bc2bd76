#include "database/check.h"

#include "platform/core/text.h"

namespace quilla {

namespace {

/// A select that brings the rows that break a rule; its aliases are their captions.
struct Rule {
    QStringView name;
    QStringView what;
    QStringView select;
    std::optional<Mend> (*mend)(const Recordset& row) = nullptr; ///< null where a person has to decide
};

QString sqlText(const Recordset& row, QStringView field)
{
    return doubled(row.field(field).text());
}

std::optional<Mend> countLoans(const Recordset& row)
{
    const QString loans = row.field(u"借书记录"_s).text();
    return Mend {u"已借册数="_s + loans,
        u"update dzk set orderbook=%1 where readercode='%2'"_s.arg(loans, sqlText(row, u"读者证号"))};
}

std::optional<Mend> countReservations(const Recordset& row)
{
    const QString rows = row.field(u"预约记录"_s).text();
    return Mend {u"预借册数="_s + rows,
        u"update dzk set yordercshu=%1 where readercode='%2'"_s.arg(rows, sqlText(row, u"读者证号"))};
}

/// A copy that is missing, or that was lost or withdrawn in spite of its loan, is for a person to decide.
std::optional<Mend> lend(const Recordset& row)
{
    const QString status = row.field(u"图书状态"_s).text();
    if (status.isEmpty() || sameText(status, u"丢失") || sameText(status, u"注销")) return {};
    return Mend {u"图书状态=借出  可借=False"_s,
        u"update sck set borrowstatus=0,bookstatus='借出' where barcode='%1'"_s.arg(sqlText(row, u"条形码"))};
}

std::optional<Mend> takeBack(const Recordset& row)
{
    return Mend {u"图书状态=库本  可借=True"_s,
        u"update sck set borrowstatus=1,bookstatus='库本' where bookstatus='借出' and barcode='%1'"_s.arg(
            sqlText(row, u"条形码"))};
}

constexpr Rule Rules[] = {
    {u"reader-code-once", u"同一读者证号有多张读者证",
        u"select readercode as [读者证号],cards as [张数] from (select readercode,count(*) as cards from dzk "
        "group by readercode) c where cards>1"},
    {u"barcode-once", u"同一条形码有多册书",
        u"select barcode as [条形码],copies as [册数] from (select barcode,count(*) as copies from sck "
        "group by barcode) c where copies>1"},
    {u"orderbook", u"已借册数与借书记录不符",
        u"select d.readercode as [读者证号],d.name as [姓名],d.orderbook as [已借册数],isnull(l.loans,0) as "
        "[借书记录] from dzk d left join (select readercode,count(*) as loans from jhsk group by readercode) "
        "l "
        "on d.readercode=l.readercode where isnull(d.orderbook,0)<>isnull(l.loans,0)",
        countLoans},
    {u"loan-reader", u"借书记录的读者证不存在",
        u"select j.jhskid as [借书控制号],j.readercode as [读者证号],j.barcode as [条形码] from jhsk j "
        "left join dzk d on j.readercode=d.readercode where d.readercode is null"},
    {u"one-loan-a-copy", u"一册书有多条借书记录",
        u"select barcode as [条形码],loans as [借书记录] from (select barcode,count(*) as loans from jhsk "
        "group by barcode) l where loans>1"},
    {u"loaned-copy", u"有借书记录，书册却不是借出状态",
        u"select j.jhskid as [借书控制号],j.readercode as [读者证号],j.barcode as [条形码],s.bookstatus as "
        "[图书状态],s.borrowstatus as [可借] from jhsk j left join sck s on j.barcode=s.barcode "
        "where s.barcode is null or s.bookstatus is null or s.bookstatus<>'借出' or s.borrowstatus is null "
        "or s.borrowstatus<>0",
        lend},
    {u"copy-out", u"书册是借出状态，却没有借书记录",
        u"select s.barcode as [条形码] from sck s left join jhsk j on s.barcode=j.barcode "
        "where s.bookstatus='借出' and j.barcode is null",
        takeBack},
    {u"held-copy", u"已到书的预约没有本种书的书册",
        u"select y.readercode as [读者证号],y.zskid as [控制ID],y.barcode as [条形码] from yyk y left join "
        u"sck s "
        "on y.barcode=s.barcode and y.zskid=s.zskid where (y.barcode<>'' or y.orderstatus=1) and s.barcode "
        "is null"},
    // Clearing expired reservations leaves the counter alone, so that it may stand above the rows.
    {u"yordercshu", u"预借册数少于预约记录",
        u"select d.readercode as [读者证号],d.name as [姓名],d.yordercshu as [预借册数],y.reservations as "
        "[预约记录] from dzk d join (select readercode,count(*) as reservations from yyk group by "
        "readercode) y "
        "on d.readercode=y.readercode where isnull(d.yordercshu,0)<y.reservations",
        countReservations},
    {u"ledger", u"丢失或注销的书册不在藏书注销帐中",
        u"select s.barcode as [条形码],s.bookstatus as [图书状态] from sck s left join BookOut b "
        "on s.barcode=b.barcode where (s.bookstatus='丢失' or s.bookstatus='注销') and b.barcode is null"},
};

QString rowText(const Recordset& row)
{
    QStringList pieces;
    for (int field = 0; field < row.fieldCount(); ++field)
        pieces += row.fieldName(field) + u'=' + row.field(field).text();
    return pieces.join(u"  "_s);
}

FoundRow foundRow(const Rule& rule, const Recordset& row)
{
    return {rowText(row), rule.mend ? rule.mend(row) : std::nullopt};
}

struct Guard {
    QStringView table;
    QStringView column;
};

constexpr Guard Guards[] {{u"jhsk", u"barcode"}, {u"dzk", u"readercode"}, {u"sck", u"barcode"}};

void addIndex(Connection& connection, QStringView kind, const Guard& guard)
{
    connection.execute(u"create %1 guard_%2_%3 on %2 (%3)"_s.arg(kind, guard.table, guard.column));
}

void dropIndex(Connection& connection, const Guard& guard)
{
    connection.execute(u"drop index %1.guard_%1_%2"_s.arg(guard.table, guard.column));
}

/// A drop fails where there is no such index, and also without the right to it: then adding one fails too.
void dropIfThere(Connection& connection, const Guard& guard)
{
    if (LastError().attempt([&] { dropIndex(connection, guard); })) return;
    addIndex(connection, u"index", guard);
    dropIndex(connection, guard);
}

void dropGuards(Connection& connection)
{
    for (const Guard& guard : Guards)
        dropIfThere(connection, guard);
}

} // namespace

QStringList Finding::texts() const
{
    QStringList texts;
    for (const FoundRow& row : rows)
        texts += row.text;
    return texts;
}

std::vector<Finding> checkLibrary(Connection& connection)
{
    std::vector<Finding> findings;
    for (const Rule& rule : Rules) {
        std::vector<FoundRow> rows;
        for (Recordset row = connection.open(rule.select); !row.eof(); row.next())
            rows.push_back(foundRow(rule, row));
        if (!rows.empty()) findings.push_back({rule.name.toString(), rule.what.toString(), rows});
    }
    return findings;
}

void repairLibrary(Connection& connection, const std::vector<Finding>& findings)
{
    connection.begin(OnFailure::EndTransaction);
    for (const Finding& finding : findings)
        for (const FoundRow& row : finding.rows)
            if (row.mend) connection.execute(row.mend->statement);
    connection.commit();
}

void guardLibrary(Connection& connection)
{
    connection.begin();
    dropGuards(connection);
    guardNewLibrary(connection);
    connection.commit();
}

void guardNewLibrary(Connection& connection)
{
    for (const Guard& guard : Guards)
        addIndex(connection, u"unique index", guard);
}

void unguardLibrary(Connection& connection)
{
    connection.begin();
    dropGuards(connection);
    connection.commit();
}

} // namespace quilla
