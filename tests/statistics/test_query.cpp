#include "statistics/query_ops.h"
#include "support/library_test.h"

using namespace quilla;

namespace {

const QueryField Name {u"name"_s, u"姓名"_s, FieldType::Text};
const QueryField Quota {u"bookcount"_s, u"可借册数"_s, FieldType::Number};
const QueryField Fine {u"fine"_s, u"罚款"_s, FieldType::Number};
const QueryField Issued {u"dzk.paperdate"_s, u"办证日期"_s, FieldType::Date};

} // namespace

/// The texts that the query dialog builds, and what they find.
class TestQuery : public LibraryTest {
    Q_OBJECT

    void fill() override
    {
        const auto reader = [this](const QString& code, const QString& name, const QString& quota,
                                const QString& fine, const QString& issued) {
            m->reader(code,
                {{u"name"_s, name}, {u"bookcount"_s, quota}, {u"fine"_s, fine}, {u"paperdate"_s, issued}});
        };
        reader(u"1"_s, u"王一"_s, u"5"_s, u"0.5"_s, u"2003-05-31"_s);
        reader(u"2"_s, u"O'Neil"_s, u"-5"_s, u"0.25"_s, u"2003-12-01"_s);
        reader(u"3"_s, u"王 50%"_s, u"10"_s, u"2"_s, u"2002-12-31 23:59:59"_s);
        reader(u"4"_s, u"a[b]"_s, u"null"_s, u"null"_s, u"null"_s);
        reader(u"5"_s, u"--'"_s, u"0"_s, u"0"_s, u"2004-01-01"_s);
    }

private Q_SLOTS:
    /// What is built for a field, an operator and a value, and the readers that it finds.
    void conditions()
    {
        const QString date = u"Convert(varchar(10),dzk.paperdate,111) "_s;
        const struct {
            QueryField field;
            QString word, value, condition, readers;
        } rows[] {
            {Name, u"等于"_s, u"O'NEIL"_s, u"name='O''NEIL'"_s, u"2"_s},
            {Name, u"不等于"_s, u"王一"_s, u"name<>'王一'"_s, u"2345"_s},
            {Name, u"包含"_s, u"[%]"_s, u"name Like '%[%]%'"_s, u"3"_s},
            {Name, u"等于"_s, u" "_s, u"name=' '"_s, u""_s},
            {Quota, u"大于"_s, u"-5"_s, u"bookcount>-5"_s, u"135"_s},
            {Quota, u"不大于"_s, u"-5"_s, u"bookcount<=-5"_s, u"2"_s},
            {Fine, u"等于"_s, u"0.50"_s, u"fine=0.50"_s, u"1"_s},
            {Fine, u"不小于"_s, u"2e0"_s, u"fine>=2e0"_s, u"3"_s},
            {Issued, u"等于"_s, u"2003-05-31"_s, date + u"Like '2003/05/31'"_s, u"1"_s},
            {Issued, u"等于"_s, u"2003-__-__"_s, date + u"Like '2003/__/__'"_s, u"12"_s},
            {Issued, u"等于"_s, u"____-12-__"_s, date + u"Like '____/12/__'"_s, u"23"_s},
            {Issued, u"不等于"_s, u"2003-__-__"_s, date + u"<>'2003/__/__'"_s, u"1235"_s},
            {Issued, u"大于"_s, u"2003-05-__"_s, date + u">'2003/05/99'"_s, u"25"_s},
            {Issued, u"不小于"_s, u"2003-__-__"_s, date + u">='2003/00/00'"_s, u"125"_s},
            {Issued, u"小于"_s, u"2003-12-__"_s, date + u"<'2003/12/00'"_s, u"13"_s},
            {Issued, u"不大于"_s, u"2003-__-__"_s, date + u"<='2003/99/99'"_s, u"123"_s},
            {Issued, u"不大于"_s, u"2003-13-45"_s, date + u"<='2003/13/45'"_s, u"123"_s},
        };
        for (const auto& [field, word, value, condition, readers] : rows) {
            QueryBuilder query;
            QVERIFY(query.add(field, word, value));
            QCOMPARE(query.condition(), condition);
            QCOMPARE(query.readableCondition(), field.caption + u'\'' + word + u'\'' + doubled(value));
            QCOMPARE(condition + found(condition), condition + readers);
        }
    }

    void refusesWhatIsNoNumber()
    {
        QueryBuilder query;
        for (const QString& value : {u"x"_s, u"5 or 1=1"_s, u"'5'"_s, u"--5"_s, u"5--"_s, u"."_s, u"-"_s,
                 u" "_s, u"1.2.3"_s, u"nan"_s, u"0x10"_s, u"1e"_s, u"5\n"_s, u"2003-05-01"_s})
            QVERIFY2(!query.add(Quota, u"等于", value), qPrintable(value));
        QVERIFY(!query.add(Name, u"等于", {}));
        QVERIFY(!query.add(Issued, u"等于", u"____-__-__"_s));
        QCOMPARE(query.condition() + query.readableCondition() + query.merge(), QString());
    }

    void chains()
    {
        QueryBuilder query;
        query.add(Name, u"包含", u"王"_s);
        query.add(Quota, u"大于", u"5"_s);
        QCOMPARE(query.condition(), u"name Like '%王%' And bookcount>5"_s);
        QCOMPARE(query.merge(), u"姓名'包含'王;可借册数'大于'5"_s);
        QCOMPARE(query.merge(), QString());
        QCOMPARE(query.condition(), u"(name Like '%王%' And bookcount>5)"_s);
        query.add(Issued, u"等于", u"2004-__-__"_s);
        query.merge();
        query.add(Name, u"等于", u"O'Neil"_s);
        query.add(Quota, u"小于", u"0"_s);
        QCOMPARE(query.condition(),
            u"(name Like '%王%' And bookcount>5) OR (Convert(varchar(10),dzk.paperdate,111) Like '2004/__/__') OR (name='O''Neil' And bookcount<0)"_s);
        QCOMPARE(found(query.condition(), u"bookcount Desc,name Asc"_s), u"352"_s);
        query.clear();
        QCOMPARE(query.condition() + query.readableCondition(), QString());
    }

    void sortOrder()
    {
        QueryBuilder query;
        query.sortBy(Issued, SortDirection::Descending, u"降序");
        query.sortBy(Name, SortDirection::Ascending, u"升序");
        QCOMPARE(query.order(), u"dzk.paperdate Desc,name Asc"_s);
        QCOMPARE(query.readableOrder(), u"'办证日期'降;'姓名'升"_s);
        QCOMPARE(found(u"paperdate is not null"_s, query.order()), u"5213"_s);
    }

private:
    QString found(const QString& condition, const QString& order = u"readercode"_s)
    {
        QString select = u"select readercode from dzk"_s;
        if (!condition.isEmpty()) select += u" where "_s + condition;
        return m->rows(select + u" order by "_s + order).join(QString());
    }
};

QTEST_GUILESS_MAIN(TestQuery)
#include "test_query.moc"
