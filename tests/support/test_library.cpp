#include "support/test_library.h"

#include "database/check.h"
#include "database/library_schema.h"
#include "database/procedures.h"
#include "frame/sublib.h"

namespace quilla {

namespace {

/// Puts `changes` over `row`, by column name.
Row changed(Row row, const Row& changes)
{
    for (const auto& change : changes) {
        const auto same = std::find_if(row.begin(), row.end(),
            [&](const auto& field) { return field.first.compare(change.first, Qt::CaseInsensitive) == 0; });
        if (same == row.end())
            row.push_back(change);
        else
            same->second = change.second;
    }
    return row;
}

QString shown(const Value& value)
{
    if (value.isNull()) return u"null"_s;
    if (value.kind() == sql::Kind::Date) return localeDateText(*value.moment());
    return value.text();
}

} // namespace

TestLibrary::TestLibrary()
    : schema(librarySchema())
    , database(TestDatabase::make(folder.path(), schema, clock))
    , factory(schema, clock)
    , session {settings, prompt, clock, factory, editor}
    , connectionText(database->connectionText())
{
    installProcedures(factory);
    storeConnectionText(session, connectionText);
    session.OperatorName = u"王馆员"_s;
}

TestLibrary::~TestLibrary() = default;

void TestLibrary::setNow(const Moment& moment)
{
    clock.moment = moment;
    database->clockMoved();
}

void TestLibrary::insert(const QString& table, const Row& row)
{
    QStringList names;
    QStringList values;
    for (const auto& [name, value] : row) {
        names.append(name);
        values.append(value == u"null" ? value : u'\'' + doubled(value) + u'\'');
    }
    send(u"insert into "_s + table + u'(' + names.join(u',') + u") values("_s + values.join(u',') + u')');
}

void TestLibrary::reader(const QString& code, const Row& changes)
{
    const Row row {{u"readercode"_s, code}, {u"name"_s, u"读者"_s + code}, {u"readerclass"_s, u"学生"_s},
        {u"bookcount"_s, u"5"_s}, {u"orderbook"_s, u"0"_s}, {u"daycount"_s, u"20"_s}, {u"ifcanre"_s, u"0"_s},
        {u"readstatus"_s, u"有效"_s}, {u"term"_s, u"2027-12-31"_s}};
    insert(u"dzk"_s, changed(row, changes));
}

void TestLibrary::copy(const QString& barcode, const Row& changes)
{
    const QString title = QString::number(m_nextTitle++);
    insert(u"zsk"_s,
        {{u"bookname"_s, u"书名"_s + title}, {u"author"_s, u"著者"_s + title}, {u"classcode"_s, u"I247"_s}});
    const Row row {{u"zskid"_s, title}, {u"barcode"_s, barcode}, {u"price"_s, u"20"_s},
        {u"borrowstatus"_s, u"1"_s}, {u"bookstatus"_s, u"库本"_s}};
    insert(u"sck"_s, changed(row, changes));
}

void TestLibrary::loan(const QString& barcode, const QString& reader, const QString& due, const Row& changes)
{
    if (rows(u"select barcode from sck where barcode='%1'"_s.arg(doubled(barcode))).isEmpty()) copy(barcode);
    const Row row {{u"readercode"_s, reader}, {u"barcode"_s, barcode}, {u"orderdate"_s, u"2026-02-20"_s},
        {u"yhdate"_s, due}, {u"operater"_s, u"李馆员"_s}};
    insert(u"jhsk"_s, changed(row, changes));
    send(u"update sck set borrowstatus=0,bookstatus='借出' where barcode='%1'"_s.arg(doubled(barcode)));
    send(u"update dzk set orderbook=orderbook+1 where readercode='%1'"_s.arg(doubled(reader)));
}

void TestLibrary::reservation(const QString& reader, const Row& changes)
{
    const Row row {{u"readercode"_s, reader}, {u"zskid"_s, u"1"_s}, {u"barcode"_s, u""_s},
        {u"ordertime"_s, u"2026-03-01"_s}, {u"orderstatus"_s, u"0"_s}};
    insert(u"yyk"_s, changed(row, changes));
    send(u"update dzk set yordercshu=yordercshu+1 where readercode='%1'"_s.arg(doubled(reader)));
}

void TestLibrary::holiday(const QString& name, const QString& period)
{
    insert(u"Global"_s, {{u"type"_s, u"holiday"_s}, {u"code"_s, period}, {u"memo"_s, name}});
}

void TestLibrary::operatorUser(const QString& name, const QString& password, bool mayBorrow)
{
    insert(u"LibUse"_s,
        {{u"username"_s, name}, {u"password"_s, password}, {u"borrow"_s, mayBorrow ? u"1"_s : u"0"_s}});
}

int TestLibrary::send(const QString& tsql)
{
    Connection conn = factory.open(connectionText);
    return conn.execute(tsql);
}

QStringList TestLibrary::rows(const QString& tsql)
{
    Connection conn = factory.open(connectionText);
    QStringList lines;
    for (Recordset row = conn.open(tsql); !row.eof(); row.next()) {
        QStringList fields;
        for (int index = 0; index < row.fieldCount(); ++index)
            fields.append(shown(row.field(index)));
        lines.append(fields.join(u'|'));
    }
    return lines;
}

QString TestLibrary::everything()
{
    QStringList all;
    for (const sql::Table& table : schema.tables()) {
        if (table.view) continue;
        // A server brings the rows that were changed after the others.
        QStringList lines = rows(u"select * from "_s + table.name);
        lines.sort();
        all += table.name;
        all += lines;
    }
    return all.join(u'\n');
}

void TestLibrary::failAt(const QString& part)
{
    factory.setHook([this, part](QStringView statement) {
        sent.append(statement.toString());
        if (!part.isEmpty() && statement.contains(part)) throw Error(-77, u"test"_s, u"语句失败："_s + part);
    });
}

QString TestLibrary::broken()
{
    Connection conn = factory.open(connectionText);
    QStringList lines;
    for (const Finding& finding : checkLibrary(conn))
        lines.append(finding.rule + u": "_s + finding.texts().join(u"; "_s));
    return lines.join(u'\n');
}

} // namespace quilla
