#include "db/error_of.h"
#include "platform/core/text.h"
#include "platform/sql/shape_statement.h"
#include "platform/sql/translator.h"

#include <QTest>

using namespace quilla;
using namespace quilla::sql;

namespace {

const QString Tables
    = u"create table t (id int identity(1,1) primary key, code varchar(20), number int, day datetime)\n"
      "go\n"
      "create view v as select code, number from t"_s;

} // namespace

/// The cache of shapes, literals of every form, and the limits of the parser.
class TestTranslator : public QObject {
    Q_OBJECT

private:
    Schema m_schema = readSchema(Tables);
    Translator m_translator {Engine::Sqlite, m_schema};
    std::vector<Literal> m_literals;

    const Translation& translate(const QString& tsql)
    {
        m_text = tsql; // the literals point into it
        return m_translator.translate(m_text, m_literals);
    }
    QString m_text;

private Q_SLOTS:
    void oneShapeIsTranslatedOnce()
    {
        const Translation& first = translate(u"select number from t where code='a' and number=1"_s);
        const Translation& second = translate(u"select number from t where code='b''c' and number=22"_s);
        QCOMPARE(&second, &first);
        QCOMPARE(m_literals.size(), std::size_t(2));
        QCOMPARE(m_literals[0].text, u"b''c");
        QVERIFY(m_literals[0].quoted && m_literals[0].hasDoubledQuote);
        QVERIFY(m_literals[1].text == u"22" && !m_literals[1].quoted);
    }

    void shapesThatDifferInMoreThanLiterals()
    {
        const std::pair<QString, QString> rows[] {
            {u"select top 1 code from t"_s, u"select top 2 code from t"_s},
            {u"select convert(varchar(5),number) from t"_s, u"select convert(varchar(6),number) from t"_s},
            {u"select convert(varchar(10),day,111) from t"_s,
                u"select convert(varchar(10),day,120) from t"_s},
            {u"select code,number from t order by 1"_s, u"select code,number from t order by 2"_s},
            {u"select code from t where number='1'"_s, u"select code from t where number=1"_s},
            {u"select code from t where number=1"_s, u"select code from t where number=1.5"_s},
            {u"select datediff(dd,day,'2003-01-01') from t"_s,
                u"select datediff(mm,day,'2003-01-01') from t"_s},
            {u"select code as c1 from t"_s, u"select code as c2 from t"_s},
        };
        for (const auto& [one, other] : rows) {
            const int first = translate(one).id;
            QVERIFY(translate(other).id != first);
            QCOMPARE(translate(one).id, first);
        }
    }

    void literals()
    {
        const int plain = translate(u"select number from t where code='x' and number=7"_s).id;
        for (const QString& literal : {u""_s, u"📚读者👩‍🏫"_s, u"''''"_s, u"a--b/*c"_s,
                 u"[1]?2.5"_s, u"a\r\nb"_s, QString(10000, u'书')}) {
            QCOMPARE(
                translate(u"select number from t where code='"_s + literal + u"' and number=7"_s).id, plain);
            QCOMPARE(m_literals[0].text.toString(), literal);
            QCOMPARE(m_literals[0].hasDoubledQuote, literal.contains(u'\''));
            QCOMPARE(m_literals[1].text, u"7");
        }
    }

    void literalsAreCountedAlike()
    {
        const Translation& found = translate(
            u"select [a]]'1'] /* '2' 3 */ as x9, N'n', .5, 1e3, code from t -- '4'\nwhere t.code=N'5' and number<6"_s);
        QCOMPARE(m_literals.size(), std::size_t(5));
        QCOMPARE(found.parameters.size(), m_literals.size());
        QCOMPARE(m_literals[1].text, u".5");
        QCOMPARE(m_literals[3].text, u"5");
        QCOMPARE(found.parameters[4].literal, 4);
    }

    void refusals()
    {
        const std::pair<QString, QString> rows[] {
            {u"select code\nfrom t where code='a"_s, u"第 2 行第 19 列"_s},
            {u"select [code from t"_s, u"第 1 行第 8 列"_s},
            {u"select 1 /* x"_s, u"第 1 行第 10 列"_s},
            {u"select \u0001 from t"_s, u"第 1 行第 8 列"_s},
            {u"select 'a''"_s, u"第 1 行第 8 列"_s},
            {u"select code from t where"_s, u"语句末尾"_s},
            {{}, u"语句末尾"_s},
            {u"delete from t; delete from t"_s, u"“delete”"_s},
            {u"select "_s + QString(5000, u'(') + u"1"_s + QString(5000, u')'), u"嵌套太深"_s},
            {u"select * from "_s + u"(select * from "_s.repeated(5000), u"嵌套太深"_s},
            {u"select "_s + u"case when 1=1 then "_s.repeated(5000), u"嵌套太深"_s},
            {u"select "_s + QString(50000, u'+') + u"1"_s, u"嵌套太深"_s},
            {u"select 1 from t where "_s + u"not "_s.repeated(50000), u"嵌套太深"_s},
            {u"select 1"_s + u"+1"_s.repeated(5000), u"算式太长"_s},
        };
        for (const auto& [statement, told] : rows) {
            const QString message = errorText([&] { translate(statement); });
            QVERIFY2(message.contains(told), qPrintable(message));
        }
    }

    void longChainsStayFlat()
    {
        const QString text = u"select code from t where id=0"_s + u" or id=1"_s.repeated(5000);
        QCOMPARE(translate(text).parameters.size(), std::size_t(5001));
        const QByteArray& written = m_translator.translate(text, m_literals).text;
        int depth = 0;
        int deepest = 0;
        for (const char c : written) {
            depth += c == '(' ? 1 : c == ')' ? -1 : 0;
            deepest = std::max(depth, deepest);
        }
        QVERIFY(deepest < 20);
    }

    void theCacheIsBounded()
    {
        Translator small(Engine::Sqlite, m_schema, 10);
        const QString kept = u"select code from t"_s;
        const Translation& first = small.translate(kept, m_literals);
        const int lost = small.translate(u"select number from t"_s, m_literals).id;
        QSet<int> ids = {first.id, lost};
        for (int i = 0; i < 100; ++i) {
            ids.insert(small.translate(u"select code as c%1 from t"_s.arg(i), m_literals).id);
            QCOMPARE(&small.translate(kept, m_literals), &first); // what is in use stays where it is
        }
        QCOMPARE(ids.size(), 102);
        QVERIFY(!ids.contains(small.translate(u"select number from t"_s, m_literals).id));
    }

    void aRefusedStatementLeavesTheCacheSound()
    {
        for (int i = 0; i < 3; ++i)
            QVERIFY(!errorText([&] { translate(u"select nosuch(code) from t"_s); }).isEmpty());
        QCOMPARE(translate(u"select code from t"_s).columns, std::vector<Kind> {Kind::Text});
    }

    void callsNameTheirProcedure()
    {
        const Translation& call = translate(u"exec dbo.procjylstj 17,'B1',''"_s);
        QCOMPARE(call.procedure, u"procjylstj"_s);
        QVERIFY(call.returnsRows && !call.writes && call.text.isEmpty());
        QCOMPARE(call.parameters.size(), std::size_t(3));
        QCOMPARE(call.parameters[0].kind, Kind::Integer);
        QCOMPARE(call.parameters[2].kind, Kind::Text);
    }

    void sqlServerTakesStatementsAsTheyStand()
    {
        Translator server(Engine::SqlServer, m_schema);
        QCOMPARE(
            server
                .translate(u"Select  top 5 [code] from t where code=N'a''b' and day<'2003-1-1' and id>7"_s,
                    m_literals)
                .text,
            "Select  top 5 [code] from t where code=? and day<? and id>?");
        const Translation& shaped
            = server.translate(u" SHAPE {select 'x' as k}  AS a COMPUTE a BY 'k'"_s, m_literals);
        QCOMPARE(shaped.text, " SHAPE {select 'x' as k}  AS a COMPUTE a BY 'k'");
        QVERIFY(shaped.returnsRows && shaped.parameters.empty());
        QVERIFY(server.translate(u" SHAPE {select 'y' as k}  AS a COMPUTE a BY 'k'"_s, m_literals).id
            != shaped.id);
    }

    void shapesGroupASelect()
    {
        const ShapeStatement shape
            = readShape(u" SHAPE {select name+' }：' as GroupKey,* from v where a='it''s'}  AS JHSKT COMPUTE "
                        u"jhskt BY 'readercode','GroupKey'");
        QCOMPARE(shape.select, u"select name+' }：' as GroupKey,* from v where a='it''s'"_s);
        QCOMPARE(shape.child, u"JHSKT"_s);
        QCOMPARE(shape.groupBy, (std::vector<QString> {u"readercode"_s, u"GroupKey"_s}));
        QCOMPARE(readShape(u"shape { select 1 } as a compute a by k").groupBy, std::vector<QString> {u"k"_s});
    }

    void shapesAreRefused()
    {
        const std::pair<QString, QString> rows[] {
            {u"shape select 1"_s, u"第 1 行第 7 列"_s},
            {u"shape {select '}' "_s, u"此处应为 }"_s},
            {u"shape {select 'a} as b compute b by 'k'"_s, u"第 1 行"_s},
            {u"shape {x} as a compute b by 'k'"_s, u"“b”：此处应为 a"_s},
            {u"shape {x} as a compute a"_s, u"语句末尾"_s},
            {u"shape {x} as a compute a by 'k' x"_s, u"附近有语法错误"_s},
        };
        for (const auto& [shape, told] : rows) {
            const QString message = errorText([&] { readShape(shape); });
            QVERIFY2(message.contains(told), qPrintable(message));
        }
    }

    void theSchemaKnowsColumns()
    {
        const Table* table = m_schema.table(u"T");
        QVERIFY(table && !table->view && table->column(u"ID")->identity);
        QCOMPARE(table->column(u"code")->width, 20);
        QCOMPARE(m_schema.table(u"v")->column(u"NUMBER")->kind, Kind::Integer);
        QVERIFY(!m_schema.table(u"other") && !table->column(u"other"));
    }

    void errorsOfAScriptNameItsLine()
    {
        const QString script = u"-- one\ngo\n\ncreate table a (b int)\nGO\n\ncreate table c (\n  d blob)"_s;
        QCOMPARE(splitScript(script).size(), std::size_t(2));
        const QString message = errorText([&] { readSchema(script); });
        QVERIFY2(message.contains(u"第 8 行第 5 列，“blob”"_s), qPrintable(message));
        QVERIFY(errorText([] {
            readSchema(u"create view v as select x from nowhere"_s);
        }).contains(u"类型不明"_s));
    }
};

QTEST_GUILESS_MAIN(TestTranslator)
#include "test_translator.moc"
