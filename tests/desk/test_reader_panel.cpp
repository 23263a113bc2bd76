#include "desk/reader_panel_ops.h"
#include "support/desk_double.h"
#include "support/test_library.h"

#include <QTest>

using namespace quilla;

class TestReaderPanel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m = std::make_unique<TestLibrary>(); }

    void cleanup() { QCOMPARE(m->prompt.takeComplaints(), QString()); }

    void fillsThePanel()
    {
        m->reader(u"R1"_s,
            {{u"name"_s, u"李四  "_s}, {u"sex"_s, u"女"_s}, {u"readunit"_s, u"一班"_s},
                {u"orderbook"_s, u"2"_s}});
        ShowReader(m->session, m_desk, u"r1 "_s);
        const QStringList shown(m_desk.panel.begin(), m_desk.panel.end());
        QCOMPARE(shown.join(u'|'), u"R1|李四|女|学生|一班|5|2|3|有效|2027-12-31"_s);
        QCOMPARE(m_desk.takeDone(), u"empty barcode"_s);
    }

    void unknownReader()
    {
        m_desk.panel[0] = u"old"_s;
        m->prompt.expect(u"无效读者号，取消该操作。"_s).titled(u"操作提示").icon(Icon::Warning);
        ShowReader(m->session, m_desk, u"' or 1=1 --"_s);
        QCOMPARE(m_desk.panel, ReaderPanel());
        QCOMPARE(m_desk.takeDone(), u"empty reader, focus reader"_s);
    }

    /// Against the time of day, and of this reader alone.
    void repairsTheState()
    {
        const std::tuple<QString, QString, QString> rows[] {
            {u"有效"_s, u"2026-03-10"_s, u"超期"_s},
            {u"超期"_s, u"2026-03-11"_s, u"有效"_s},
            {u"超期"_s, u"2026-03-10"_s, u"超期"_s},
            {u"挂失"_s, u"2020-01-01"_s, u"挂失"_s},
            {u"无效"_s, u"2027-01-01"_s, u"无效"_s},
            {u"超期"_s, u"null"_s, u"超期"_s},
        };
        for (const auto& [status, term, repaired] : rows) {
            m->send(u"delete from dzk"_s);
            for (const QString& code : {u"O'1"_s, u"R2"_s})
                m->reader(code, {{u"readstatus"_s, status}, {u"term"_s, term}});
            ShowReader(m->session, m_desk, u"O'1"_s);
            QCOMPARE(m_desk.panel[PanelLabel::Status], repaired);
            QCOMPARE(m->rows(u"select readstatus from dzk order by readercode"_s),
                (QStringList {repaired, status}));
        }
    }

    void loansLeaveOutWithdrawnCopies()
    {
        m->reader(u"R1"_s);
        for (const QString& barcode : {u"B1"_s, u"B2"_s}) {
            m->copy(barcode);
            m->loan(barcode, u"R1"_s, u"2026-03-20"_s);
        }
        m->send(u"update sck set bookstatus='注销' where barcode='B2'"_s);
        ShowLoans(m->session, m_desk, u"R1"_s);
        QCOMPARE(m_desk.loans, QStringList {u"B1"_s});
        ShowLoans(m->session, m_desk, {});
        QCOMPARE(m_desk.loans, QStringList());
    }

    void detailsOfACopy()
    {
        m->copy(u"B1"_s);
        m->send(u"update zsk set catatime='2020-05-06',publisher=null"_s);
        const QStringList lines = bookDetails(m->session, u"B1"_s).split(u'\n');
        QCOMPARE(lines.size(), 15);
        QCOMPARE(lines[2] + lines[5], u"出 版 者:入库日期:2020-05-06"_s);
        QCOMPARE(bookDetails(m->session, u"none"_s) + bookDetails(m->session, u"  "_s), QString());
    }

private:
    std::unique_ptr<TestLibrary> m;
    DeskDouble m_desk;
};

QTEST_GUILESS_MAIN(TestReaderPanel)
#include "test_reader_panel.moc"
