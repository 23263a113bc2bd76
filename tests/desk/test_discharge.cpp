#include "desk/charge_ops.h"
#include "desk/discharge_ops.h"
#include "desk/reader_panel_ops.h"
#include "desk/renewal_ops.h"
#include "frame/sublib.h"
#include "support/desk_double.h"
#include "support/fine_double.h"
#include "support/library_test.h"

#include <ctime>

using namespace quilla;

namespace {

QString offerTo(const QString& reader)
{
    return u"读者证号为【"_s + reader + u"】的读者最先预约了这本书。是否将这本书预约给这位读者？"_s;
}

/// The zone of the machine while it stands.
class TimeZone {
public:
    explicit TimeZone(const QByteArray& name) { put(name); }
    ~TimeZone() { put(m_before); }
    Q_DISABLE_COPY_MOVE(TimeZone)

private:
    static void put(const QByteArray& name)
    {
        qputenv("TZ", name);
        tzset();
    }
    QByteArray m_before = qgetenv("TZ");
};

} // namespace

/// Discharge and renewal, and what the desk shows of reader, loans and returns. The clock stands at
/// 2026-03-10 9:30:15.
class TestDischarge : public LibraryTest {
    Q_OBJECT

    void fill() override
    {
        m_fines = {};
        m->reader(u"R1"_s,
            {{u"recount"_s, u"2"_s}, {u"reday"_s, u"15"_s}, {u"daycount"_s, u"60"_s},
                {u"orderday"_s, u"null"_s}});
        m->reader(u"R2"_s, {{u"orderday"_s, u"3"_s}});
        m->loan(u"B1"_s, u"R1"_s, u"2026-03-11"_s);
        m_desk.takeDone();
    }

private Q_SLOTS:
    void unknownLoan()
    {
        m->prompt.expect(u"查找不到此书的借书记录"_s).titled(u"青简台").icon(Icon::Information);
        QCOMPARE(discharge(u"' or 1=1 --"_s), 1);
        QCOMPARE(discharge({}), 0);
        m->settings.values.clear();
        m->prompt.expect(u"无法取得正确连接数据库的信息!现在输入吗?"_s).answer(Answer::No);
        QCOMPARE(discharge(u"B1"_s), 0);
        storeConnectionText(m->session, m->connectionText);
        QCOMPARE(m->value(u"select count(*) from jhsk"_s), u"1"_s);
    }

    /// A copy brought back on its due date is late, and what becomes of it is the fine screen's. So it is on
    /// a day that begins at one o'clock where the desk stands.
    void overdueGoesToTheFines()
    {
        const TimeZone havana("America/Havana");
        m->setNow({QDate(2026, 3, 8), QTime(9, 30)});
        m->send(u"update jhsk set yhdate='2026-03-08'"_s);
        const QString all = m->everything();
        for (const bool settled : {false, true}) {
            m_fines.closes = [&](const QString&) { return settled; };
            QCOMPARE(discharge(u"B1"_s), settled ? 0 : 10);
            QCOMPARE(m_desk.takeDone(), u"reader R1, untick"_s);
        }
        QCOMPARE(m_fines.given, (QStringList {u"B1"_s, u"B1"_s}));
        QCOMPARE(m->everything(), all);
    }

    void copyWithdrawnMeanwhileIsRolledBack()
    {
        m->send(u"update sck set bookstatus='注销'"_s);
        const QString all = m->everything();
        QCOMPARE(discharge(u"B1"_s), -2);
        QCOMPARE(m->everything(), all);
    }

    void offers_data()
    {
        const QStringList two {u"R2 2026-03-02 "_s, u"R1 2026-03-01 "_s};
        const QStringList served {u"R2 2026-03-02 "_s, u"R1 2026-03-01 B7"_s};
        cases<QStringList, QString, Answer, QString>({
            {"taken", {QStringList {u"R2 2026-03-01 "_s}, u"R2"_s, Answer::Yes, u"R2|B1|2026-03-13|True"_s}},
            {"no period of his own: ten days",
                {QStringList {u"R1 2026-03-01 "_s}, u"R1"_s, Answer::Yes, u"R1|B1|2026-03-20|True"_s}},
            {"earliest first, declined", {two, u"R1"_s, Answer::No, u"R1||null|False\nR2||null|False"_s}},
            {"earliest is served already", {served, {}, Answer::Ok, u"R1|B7|null|False\nR2||null|False"_s}},
            {"reader is gone: ten days",
                {QStringList {u"R7 2026-03-01 "_s}, u"R7"_s, Answer::Yes, u"R7|B1|2026-03-20|True"_s}},
        });
    }

    /// The reservations are given as reader, when, copy held.
    void offers()
    {
        const auto [claims, offered, answer, after] = given<QStringList, QString, Answer, QString>();
        for (const QString& claim : claims) {
            const QStringList parts = claim.split(u' ');
            m->reservation(parts[0], {{u"ordertime"_s, parts[1]}, {u"barcode"_s, parts[2]}});
        }
        m->reservation(u"R2"_s, {{u"zskid"_s, u"9"_s}}); // of another title
        if (!offered.isEmpty())
            m->prompt.expect(offerTo(offered)).titled(u"操作提示").icon(Icon::Information).answer(answer);
        QCOMPARE(discharge(u"B1"_s), 0);
        QCOMPARE(m->rows(u"select readercode,barcode,oldtime,orderstatus from yyk where zskid=1 "
                         "order by readercode"_s)
                     .join(u'\n'),
            after);
        QCOMPARE(m->value(u"select barcode from yyk where zskid=9"_s), QString());
        QCOMPARE(m->value(u"select bookstatus from sck"_s), u"库本"_s);
    }

    /// The statement that fails and the result; a return stands whatever becomes of the offer behind it.
    void faults_data()
    {
        cases<QString, int>({
            {"loan", {u"select jhskid,readercode"_s, 1}},
            {"begin", {u"begin"_s, -2}},
            {"history", {u"insert into JHSLSK"_s, -2}},
            {"reader", {u"update DZK"_s, -2}},
            {"copy", {u"update SCK"_s, -2}},
            {"delete", {u"delete from JHSK"_s, -2}},
            {"commit", {u"commit"_s, -2}},
            {"offer", {u"select top 1 yyk.zskid"_s, 0}},
            {"hold period", {u"select orderday"_s, 0}},
            {"hold", {u"update yyk set oldtime"_s, 0}},
        });
    }

    void faults()
    {
        const auto [statement, result] = given<QString, int>();
        const bool holds = statement.startsWith(u"update yyk");
        m->reservation(u"R2"_s);
        const QString all = m->everything();
        if (result == 1) m->prompt.expect(u"查找不到此书的借书记录"_s);
        if (holds || statement == u"select orderday") m->prompt.expect(offerTo(u"R2"_s)).answer(Answer::Yes);
        if (holds) m->prompt.expect(u"预约失败！原因如下：\n语句失败："_s + statement).titled(u"操作提示");
        m->failAt(statement);
        QCOMPARE(discharge(u"B1"_s), result);
        m->factory.setHook({});
        QCOMPARE(m->everything() == all, result != 0);
        QCOMPARE(m->broken(), QString());
        QVERIFY(!m->session.error.isSet());
    }

    /// The loan was renewed once already.
    void renewalChecks()
    {
        const QString never = u"该读者不可续借书刊。"_s;
        const std::tuple<QString, int, QString> rows[] {
            {u"recount=2"_s, 2, {}},
            {u"recount=1"_s, -1, u"此书刊已经续借1次，不能再续借。"_s},
            {u"recount=0"_s, -1, never},
            {u"recount=2,reday=0"_s, -1, never},
            {u"recount=2,reday=null"_s, 2, {}},
        };
        m->send(u"update jhsk set res=1"_s);
        for (const auto& [rules, count, text] : rows) {
            m->send(u"update dzk set %1 where readercode='R1'"_s.arg(rules));
            if (!text.isEmpty()) m->prompt.expect(text).titled(u"操作提示").icon(Icon::Warning);
            QCOMPARE(int(CheckRenewal(m->session, m_desk, u"B1"_s)), count);
            QCOMPARE(m_desk.takeDone(), text.isEmpty() ? QString() : u"untick"_s);
        }
    }

    void renewalOfNothing()
    {
        m->prompt.expect(u"此书刊没有借阅，或该读者类型不符。"_s).titled(u"操作提示").icon(Icon::Warning);
        QCOMPARE(int(CheckRenewal(m->session, m_desk, u"it's"_s)), -1);
        QCOMPARE(m_desk.takeDone(), QString());
        m->prompt.expect(u"请先输入读者"_s).titled(u"提示").icon(Icon::Warning);
        QCOMPARE(recharge(u"R9"_s), 2);
    }

    void renewalEndsTheProgramOnNull()
    {
        m->send(u"update dzk set recount=null where readercode='R1'"_s);
        QVERIFY_THROWS_EXCEPTION(Error, CheckRenewal(m->session, m_desk, u"B1"_s));
        m->failAt(u"Select recount"_s);
        QVERIFY_THROWS_EXCEPTION(Error, CheckRenewal(m->session, m_desk, u"B1"_s));
    }

    /// Refused, the copy stays returned; lent in spite of the hold, its renewals count from the start. It is
    /// for thirty days, though the reader may have a book for sixty.
    void renewalOfAHeldCopy()
    {
        m->reservation(
            u"R2"_s, {{u"barcode"_s, u"B1"_s}, {u"oldtime"_s, u"2026-03-20"_s}, {u"orderstatus"_s, u"1"_s}});
        QCOMPARE(discharge(u"B1"_s), 0);
        for (const Answer answer : {Answer::No, Answer::Yes}) {
            const bool lent = answer == Answer::Yes;
            m->prompt.expectStart(u"这本书已经有人预约了！"_s).answer(answer, Answer::No);
            QCOMPARE(recharge(u"R1"_s), lent ? 0 : -1);
            QCOMPARE(m->value(u"select res,yhdate from jhsk"_s), lent ? u"0|2026-04-09"_s : QString());
        }
        QCOMPARE(m->broken(), QString());
    }

    void showsTheReader()
    {
        m->send(u"update dzk set name='李四  ',sex='女',readunit='一班',orderbook=2 where readercode='R1'"_s);
        ShowReader(m->session, m_desk, u"r1 "_s);
        const QStringList shown(m_desk.panel.begin(), m_desk.panel.end());
        QCOMPARE(shown.join(u'|'), u"R1|李四|女|学生|一班|5|2|3|有效|2027-12-31"_s);
        QCOMPARE(m_desk.takeDone(), u"empty barcode"_s);
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
        m->loan(u"B2"_s, u"R1"_s, u"2026-03-20"_s);
        m->send(u"update sck set bookstatus='注销' where barcode='B2'"_s);
        ShowLoans(m->session, m_desk, u"R1"_s);
        QCOMPARE(m_desk.loans, QStringList {u"B1"_s});
        ShowLoans(m->session, m_desk, {});
        QCOMPARE(m_desk.loans, QStringList());
    }

    void returnsOfToday()
    {
        for (const auto& [barcode, back] : {std::pair {u"B1"_s, u"2026-03-09"_s},
                 std::pair {u"B2"_s, u"2026-03-10 8:00:00"_s}, std::pair {u"B9"_s, u"2026-03-10"_s}})
            m->insert(
                u"jhslsk"_s, {{u"readercode"_s, u"R1"_s}, {u"barcode"_s, barcode}, {u"backdate"_s, back}});
        m->copy(u"B2"_s); // of B9 there is none
        ShowReturns(m->session, m_desk, u"r1"_s, Returns::Today);
        QCOMPARE(m_desk.returns, QStringList {u"B2"_s});
        ShowReturns(m->session, m_desk, u"R1"_s, Returns::All);
        QCOMPARE(m_desk.returns, (QStringList {u"B2"_s, u"B1"_s}));
        ShowReturns(m->session, m_desk, {}, Returns::All);
        QCOMPARE(m_desk.returns, QStringList());
    }

    void detailsOfACopy()
    {
        m->send(u"update zsk set catatime='2020-05-06',publisher=null"_s);
        const QStringList lines = bookDetails(m->session, u"B1"_s).split(u'\n');
        QCOMPARE(lines.size(), 15);
        QCOMPARE(lines[2] + lines[5], u"出 版 者:入库日期:2020-05-06"_s);
        QCOMPARE(bookDetails(m->session, u"none"_s) + bookDetails(m->session, u"  "_s), QString());
    }

private:
    int discharge(const QString& barcode) { return DischargeBook(m->session, m_desk, m_fines, barcode); }
    int recharge(const QString& reader) { return RechargeBook(m->session, m_desk, 2, u"B1"_s, reader); }

    DeskDouble m_desk;
    FineDouble m_fines;
};

QTEST_GUILESS_MAIN(TestDischarge)
#include "test_discharge.moc"
