#include "exceptions/fine_screen_double.h"
#include "support/library_test.h"

using namespace quilla;

namespace {

const QString SaveFailed = u"数据保存出错，取消该操作。"_s;

QString questionOf(const QString& reader)
{
    return u"读者证号为【%1】的读者最先预约了这本书。是否将这本书预约给这位读者？"_s.arg(reader);
}

} // namespace

/// The settlement of B1, which R1 should have brought back three days ago. The clock stands at 2026-03-10.
class TestFineSettlement : public LibraryTest {
    Q_OBJECT

    void fill() override
    {
        m->reader(u"R1"_s, FineRules);
        m->reader(u"R2"_s);
        m->copy(u"B1"_s, {{u"price"_s, u"25"_s}});
        m->copy(u"B2"_s);
        m->loan(u"B1"_s, u"R1"_s, u"2026-03-07"_s);
        m->loan(u"B2"_s, u"R1"_s, u"2026-03-20"_s);
        start();
    }
    void finish() override { QCOMPARE(m->broken(), QString()); }

private Q_SLOTS:
    /// Late, damaged and lost: what all the tables hold then.
    void allThreeKinds()
    {
        m_screen.setTicked(FineKind::Lost, true);
        m_screen.setTicked(FineKind::Defile, true);
        m_fines->save(1);
        QCOMPARE(m_fines->SavedFlag, u"yes"_s);
        QCOMPARE(fines(), u"超期|0.3|0.3| 污损|12.5|12.5| 丢失|50|50|"_s);
        QCOMPARE(m->value(u"select distinct readercode,name,barcode,bookname,oprater,opratedate from fkk"_s),
            u"R1|甲|B1|书名1|王馆员|2026-03-10"_s);
        QCOMPARE(m->value(u"select borrowstatus,bookstatus from sck where barcode='B1'"_s), u"False|丢失"_s);
        QCOMPARE(m->value(u"select bookname,author,barcode,price,cause,memo,outdate,operater from BookOut"_s),
            u"书名1|著者1|B1|25|丢失|null|2026-03-10|王馆员"_s);
        QCOMPARE(m->value(u"select readercode,barcode,orderdate,yhdate,backdate,operater from jhslsk"_s),
            u"R1|B1|2026-02-20|2026-03-07|2026-03-10|王馆员"_s);
        QCOMPARE(m->rows(u"select barcode,orderbook from jhsk join dzk on dzk.readercode=jhsk.readercode"_s),
            QStringList {u"B2|1"_s});
    }

    void hostileTexts()
    {
        m->send(u"update dzk set name='O''Neil %1' where readercode='R1'"_s);
        m->send(u"update zsk set bookname='L''été %2; --' where zskid=1"_s);
        m->session.OperatorName = u"d'A"_s;
        start();
        m_screen.setBox(FineBox::remark(FineKind::Overdue), u"it's %9'); delete from dzk --"_s);
        m_fines->save(1);
        QCOMPARE(m->value(u"select name,bookname,oprater,memo from fkk"_s),
            u"O'Neil %1|L'été %2; --|d'A|it's %9'); delete from dzk --"_s);
        QCOMPARE(m->value(u"select operater from jhslsk"_s), u"d'A"_s);
    }

    /// Only `sfmoney` is the operator's; what is no number leaves a hole that fails the settlement.
    void amountsGoBare()
    {
        const QString before = m->everything();
        for (const QString& taken : {u""_s, u"yfmoney"_s, u"1,'x','x','2026-01-01','') --"_s}) {
            m_screen.setBox(FineBox::taken(FineKind::Overdue), taken);
            m->prompt.expect(SaveFailed).titled(u"操作提示").icon(Icon::Warning);
            m_fines->save(1);
            QVERIFY(!m_screen.closed);
        }
        QCOMPARE(m->everything(), before);
        m_screen.setBox(FineBox::taken(FineKind::Overdue), u"-0.125"_s); // not left yet
        m_fines->save(1);
        QVERIFY(m_screen.closed);
        QCOMPARE(fines(), u"超期|0.3|-0.13|"_s);
    }

    void reservations_data()
    {
        cases<QString, Answer, QString>({
            {"null, yes", {u"null"_s, Answer::Yes, u"R2|B1|null|True R1||null|False"_s}},
            {"empty, no", {QString(), Answer::No, u"R2||null|False R1||null|False"_s}},
            {"has another copy", {u"B3"_s, Answer::Ok, u"R2|B3|null|False R1||null|False"_s}},
        });
    }

    /// A copy that comes back goes to the earliest reservation of its title, if that wants it; the hold has
    /// no last day.
    void reservations()
    {
        const auto [held, answer, after] = given<QString, Answer, QString>();
        m->copy(u"B3"_s, {{u"zskid"_s, u"1"_s}});
        m->reservation(u"R2"_s, {{u"ordertime"_s, u"2026-03-01"_s}, {u"barcode"_s, held}});
        m->reservation(u"R1"_s, {{u"ordertime"_s, u"2026-03-02"_s}});
        if (answer != Answer::Ok) m->prompt.expect(questionOf(u"R2"_s)).titled(u"操作提示").answer(answer);
        m_fines->save(1);
        const QString claims = u"select readercode,barcode,oldtime,orderstatus from yyk order by ordertime"_s;
        QCOMPARE(m->rows(claims).join(u' '), after);
        QCOMPARE(m->value(u"select borrowstatus,bookstatus from sck where barcode='B1'"_s), u"True|库本"_s);
    }

    void lostBookLeavesQueueAndRegister()
    {
        m->reservation(u"R2"_s);
        m->send(u"insert into diushik values('R1','甲','','B1','书名1',30,'2026-03-08')"_s);
        start();
        const QString queue = m->value(u"select * from yyk"_s);
        m_fines->save(1);
        QCOMPARE(fines(), u"超期|0.1|0.1| 丢失|30|30|"_s);
        QCOMPARE(m->value(u"select * from yyk"_s), queue);
        QCOMPARE(m->value(u"select count(*) from diushik"_s), u"1"_s);
    }

    /// Kept open, the screen goes on with the same reader and shows the loan that is left.
    void keptOpen()
    {
        m_screen.setTicked(FineKind::Lost, true);
        m_fines->save(0);
        QVERIFY(!m_screen.closed);
        QCOMPARE(m_screen.texts(0, 12), u"R1|甲"_s + QString(11, u'|'));
        QCOMPARE(m_screen.kinds() + m_screen.workings[0], QString());
        QCOMPARE(m_screen.loans + u' ' + m_screen.fines, u"B2 B1,B1"_s);
        QCOMPARE(m_screen.focus, u"Text1(0)"_s);
    }

    void eachStatement_data() { cases<bool>({{"comes back", {false}}, {"lost", {true}}}); }

    /// A failure of each statement leaves library and screen as they were, and the settlement works
    /// afterwards.
    void eachStatement()
    {
        const auto [lost] = given<bool>();
        m->reservation(u"R2"_s);
        m_screen.setTicked(FineKind::Defile, true);
        m_screen.setTicked(FineKind::Lost, lost);
        m_fines->SavedFlag = u"yes"_s; // of the settlement before
        saveFailing(u"commit"_s, !lost);
        const QStringList sent = m->sent.mid(m->sent.indexOf(u"begin"));
        bool asked = false;
        for (const QString& statement : sent.first(sent.indexOf(u"commit"))) {
            if (!statement.contains(u"getdate")) saveFailing(statement, asked);
            asked |= statement.startsWith(u"select top 1 yyk");
        }
        if (!lost) m->prompt.expect(questionOf(u"R2"_s)).answer(Answer::Yes);
        m_fines->save(1);
        QVERIFY(m_screen.closed && asked != lost);
    }

    /// A server date that can't be read is reported each time, and the client's clock serves.
    void failingServerDate()
    {
        m->failAt(u"getdate()"_s);
        for (int date = 0; date < 2; ++date)
            m->prompt.expectStart(u"获取服务器日期时出现错误！"_s);
        m_fines->save(1);
        m->factory.setHook({});
        QCOMPARE(m->value(u"select opratedate from fkk"_s), u"2026-03-10"_s);
    }

private:
    void start()
    {
        m_screen = {};
        m_fines = std::make_unique<FineHandling>(m->session, m_screen, u"A"_s);
        m_screen.handling = m_fines.get();
        m_screen.enter(FineBox::Barcode, u"B1"_s);
    }

    /// Saves where that statement fails, before or after the question about the reservation.
    void saveFailing(const QString& statement, bool asked)
    {
        const QString before = m->everything();
        const auto boxes = m_screen.boxes;
        if (asked) m->prompt.expect(questionOf(u"R2"_s)).answer(Answer::Yes);
        m->prompt.expect(SaveFailed).titled(u"操作提示").icon(Icon::Warning);
        m->sent.clear();
        m->failAt(statement);
        m_fines->save(1);
        m->factory.setHook({});
        QCOMPARE(statement + m->prompt.takeComplaints(), statement);
        QCOMPARE(m->everything(), before);
        QVERIFY(m_screen.boxes == boxes && !m_screen.closed && !m->session.error.isSet());
        QCOMPARE(m_fines->SavedFlag, u"yes"_s);
    }

    QString fines() { return m->rows(u"select cause,yfmoney,sfmoney,memo from fkk"_s).join(u' '); }

    FineScreenDouble m_screen;
    std::unique_ptr<FineHandling> m_fines;
};

QTEST_GUILESS_MAIN(TestFineSettlement)
#include "test_fine_settlement.moc"
