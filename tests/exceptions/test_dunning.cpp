#include "exceptions/dunning_ops.h"
#include "support/library_test.h"

using namespace quilla;

namespace {

/// Writes down the groups of a report and their rows.
class Notices final : public ReportViewer {
public:
    void showReport(const QString& design, Recordset& groups, const ReportTexts& texts) override
    {
        shown.append(design + u' ' + texts.title + u':');
        for (; !groups.eof(); groups.next()) {
            QStringList rows;
            for (Recordset row = groups.child(u"jhskt"); !row.eof(); row.next())
                rows.append(row.field(u"barcode").text() + u' ' + row.field(u"iTital").text());
            const Value& key = groups.field(u"groupkey");
            shown.append((key.isNull() ? u"(null)"_s : key.text()) + u'[' + rows.join(u',') + u']');
        }
    }
    void showChart(const Chart&) override { }
    QStringList shown;
};

} // namespace

/// The dunning notices, and the groups that they are made of.
class TestDunning : public LibraryTest {
    Q_OBJECT

    void fill() override
    {
        // it is 2026-03-10
        m_notices.shown.clear();
        m->session.ConnectionText = m->connectionText;
        m->reader(u"R1"_s, {{u"name"_s, u"王一"_s}, {u"readunit"_s, u"一班"_s}});
        m->reader(u"R2"_s, {{u"name"_s, u"王一"_s}, {u"readunit"_s, u"二班"_s}});
        m->reader(u"R3"_s, {{u"name"_s, u"null"_s}, {u"readunit"_s, u"一班"_s}});
        for (const auto& [barcode, reader] :
            {std::pair {u"B1"_s, u"R1"_s}, {u"B2"_s, u"R2"_s}, {u"B3"_s, u"R1"_s}, {u"B4"_s, u"R3"_s}})
            m->loan(barcode, reader, u"2026-03-0%1"_s.arg(barcode.back()));
        m->loan(u"B9"_s, u"R2"_s, u"2026-03-10"_s); // due today
    }

private Q_SLOTS:
    void notices_data()
    {
        cases<QString, QString, QString, QString>({
            {"a reader each, also of one name",
                {u"readercode"_s, {}, u"barcode"_s,
                    u"读者单位: 王一 超期图书如下：[B1 一班,B3 一班] 王一 超期图书如下：[B2 二班] (null)[B4 一班]"_s}},
            {"a unit each, in the order asked for",
                {u"readunit"_s, {}, u"barcode desc"_s,
                    u"读者姓名: 一班 超期图书如下：[B4 ,B3 王一,B1 王一] 二班 超期图书如下：[B2 王一]"_s}},
            {"one reader",
                {u"readercode"_s, u"readercode='r2'"_s, {}, u"读者单位: 王一 超期图书如下：[B2 二班]"_s}},
            {"nobody", {u"readunit"_s, u"readunit='三班'"_s, {}, u"读者姓名:"_s}},
        });
    }

    void notices()
    {
        const auto [groupField, condition, order, shown] = given<QString, QString, QString, QString>();
        PrintDunningNotices(m->session, m_notices, groupField, {{}, condition, order});
        QCOMPARE(m_notices.shown.join(u' '), u"JHSKCQRpt "_s + shown);
    }

    void failuresAreSilent()
    {
        PrintDunningNotices(m->session, m_notices, u"readercode"_s, {.condition = u"nix=1"_s});
        m->session.ConnectionText = u"nonsense"_s;
        PrintDunningNotices(m->session, m_notices, u"readercode"_s, {});
        QCOMPARE(m_notices.shown, QStringList());
        QVERIFY(!m->session.error.isSet());
    }

    /// Keys compare as the database compares texts; null is a key of its own.
    void groupsOfAShapedResult()
    {
        Connection conn = m->factory.open(m->connectionText);
        const QString select
            = u"select 'a' as k,1 as n union all select null,2 union all select 'A ',3 union all select '',4 union all select null,5"_s;
        const auto shaped = [&](const QString& by) {
            return conn.openShaped(
                u"SHAPE {select * from (%1) x order by n} AS c COMPUTE c BY %2"_s.arg(select, by));
        };
        Recordset groups = shaped(u"k"_s);
        conn.close(); // what it brought is kept
        QCOMPARE(groups.recordCount(), 3);
        QStringList found;
        for (; !groups.eof(); groups.next()) {
            QStringList numbers;
            for (Recordset child = groups.child(u"C"); !child.eof(); child.next())
                numbers.append(child.field(u"n").text());
            QCOMPARE(groups.child(u"C").recordCount(), numbers.size());
            found.append(numbers.join(u'+'));
        }
        QCOMPARE(found.join(u' '), u"1+3 2+5 4"_s);
        conn = m->factory.open(m->connectionText);
        QVERIFY_THROWS_EXCEPTION(Error, shaped(u"nix"_s));
        groups = shaped(u"k"_s);
        QVERIFY_THROWS_EXCEPTION(Error, groups.child(u"other"));
    }

private:
    Notices m_notices;
};

QTEST_MAIN(TestDunning)
#include "test_dunning.moc"
