#include "desk/charge_ops.h"
#include "frame/sublib.h"
#include "support/cases.h"
#include "support/desk_double.h"
#include "support/test_library.h"

#include <QTest>

using namespace quilla;

namespace {

const QString NoSuchReaderText = u"没有找到该读者的信息！请确定该读者是否办理了读者证！"_s;
const QString NoSuchCopyText = u"书库没有此书的记录"_s;

QString questionOf(const QString& code)
{
    return u"这本书已经有人预约了！预约读者资料如下：\n读者证号：%1\n读者姓名：读者%1\n读者类型：学生\n仍然要借出本书吗？(y/n)"_s
        .arg(code);
}

} // namespace

/// The clock of these tests stands at 2026-03-10 9:30:15.
class TestCharge : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m = std::make_unique<TestLibrary>();
        m->reader(u"R1"_s);
        m->reader(u"R2"_s);
        m->copy(u"B1"_s);
        m_desk.takeDone();
    }

    void cleanup()
    {
        QCOMPARE(m->prompt.takeComplaints(), QString());
        QCOMPARE(m->broken(), QString());
    }

    /// Codes compare as the server does, and no quota is no limit.
    void writesLoanCopyAndReader()
    {
        m->send(u"update dzk set bookcount=null where readercode='R1'"_s);
        QCOMPARE(charge(u"b1 "_s, u"r1"_s), 0);
        QCOMPARE(m->value(u"select readercode,orderdate,yhdate,operater,res from jhsk"_s),
            u"r1|2026-03-10|2026-03-30|王馆员|0"_s);
        QCOMPARE(m->value(u"select borrowstatus,bookstatus from sck"_s), u"False|借出"_s);
        QCOMPARE(m->rows(u"select readercode,orderbook,yordercshu from dzk order by readercode"_s),
            (QStringList {u"R1|1|0"_s, u"R2|0|0"_s}));
        QCOMPARE(m_desk.takeDone(), QString());
    }

    void refusals_data()
    {
        using Case = std::tuple<QString, QString, QString, int, QString, QString, int, QString>;
        const QString own = u"青简台"_s;
        const QString hint = u"提示"_s;
        constexpr int info = int(Icon::Information);
        constexpr int warning = int(Icon::Warning);
        const QString quota = u"此读者借书额已满，不能再借新书！"_s;
        const QString selects = u"select barcode"_s;
        const auto copy = [](const char* values) { return u"update sck set "_s + QString::fromUtf8(values); };
        const auto unknown = [&](const QString& before, const QString& barcode) {
            return Case {before, barcode, u"R1"_s, 4, NoSuchCopyText, hint, info, selects};
        };
        const auto barred
            = [&](const QString& before, int result, const QString& text, const QString& title) {
                  return Case {before, u"B1"_s, u"R1"_s, result, text, title, info, selects};
              };
        cases<QString, QString, QString, int, QString, QString, int, QString>({
            {"no reader code", {{}, u"B1"_s, {}, 1, {}, {}, 0, {}}},
            {"no barcode", {{}, {}, u"R1"_s, 1, {}, {}, 0, {}}},
            {"unknown reader", {{}, u"B1"_s, u"R9"_s, 2, NoSuchReaderText, hint, warning, u"focus reader"_s}},
            {"quota used",
                {u"update dzk set orderbook=5"_s, u"B1"_s, u"R1"_s, 3, quota, own, warning, u"page 1"_s}},
            {"unknown copy", unknown({}, u"B9"_s)},
            {"lost copy", unknown(copy("borrowstatus=0,bookstatus='丢失'"), u"B1"_s)},
            {"withdrawn copy", unknown(copy("borrowstatus=0,bookstatus='注销'"), u"B1"_s)},
            {"copy without a state", unknown(copy("bookstatus=null"), u"B1"_s)},
            {"on loan", barred(copy("borrowstatus=0,bookstatus='借出'"), 5, u"此书当前已借出"_s, own)},
            {"reference, barred",
                barred(copy("borrowstatus=0,bookstatus='典藏'"), 5, u"此书当前不可借"_s, hint)},
            {"reference", barred(copy("bookstatus='典藏'"), 6, u"此书是典藏书，不能外借"_s, hint)},
        });
    }

    void refusals()
    {
        const auto [before, barcode, reader, result, text, title, icon, done]
            = given<QString, QString, QString, int, QString, QString, int, QString>();
        if (!before.isEmpty()) m->send(before);
        const QString all = m->everything();
        if (!text.isEmpty()) m->prompt.expect(text).titled(title).icon(Icon(icon));
        QCOMPARE(charge(barcode, reader), result);
        QCOMPARE(m_desk.takeDone(), done);
        QCOMPARE(m->everything(), all);
        // The planted states are not those of a working library.
        m->send(u"update dzk set orderbook=0"_s);
        m->send(u"update sck set borrowstatus=1,bookstatus='库本'"_s);
    }

    void cards_data()
    {
        const QString lost = u"该读者证在挂失中。。。"_s;
        const QString cancelled = u"该读者证已注销！"_s;
        const QString expired = u"该读者证已过期"_s;
        const QString invalid = u"读者证过期或无效！"_s;
        cases<QString, QString, QString>({

            {"valid, no term", {u"有效"_s, u"null"_s, {}}},
            {"valid, blanks behind", {u"有效  "_s, u"2026-03-11"_s, {}}},
            {"last day is today", {u"有效"_s, u"2026-03-10"_s, expired}},
            {"lost, expired too", {u"挂失"_s, u"2020-01-01"_s, lost}},
            {"cancelled", {u"无效"_s, u"2027-01-01"_s, cancelled}},
            {"marked expired, term passed", {u"超期"_s, u"2026-03-09"_s, expired}},
            {"marked expired, term ahead", {u"超期"_s, u"2027-01-01"_s, invalid}},
            {"no state", {u"null"_s, u"2027-01-01"_s, invalid}},
        });
    }

    void cards()
    {
        const auto [status, term, text] = given<QString, QString, QString>();
        m->reader(u"C1"_s, {{u"readstatus"_s, status}, {u"term"_s, term}});
        if (!text.isEmpty()) m->prompt.expect(text).titled(u"提示").icon(Icon::Information);
        QCOMPARE(charge(u"B1"_s, u"C1"_s), text.isEmpty() ? 0 : 5);
    }

    void overdueCountsFromTheDueDate()
    {
        m->copy(u"L1"_s);
        m->copy(u"L2"_s);
        m->copy(u"L3"_s);
        m->loan(u"L1"_s, u"R1"_s, u"2026-03-10"_s);
        m->loan(u"L2"_s, u"R1"_s, u"2026-01-10"_s);
        m->loan(u"L3"_s, u"R1"_s, u"2026-03-11"_s);
        m->prompt.expect(u"该读者存在2册过期书刊。\n\r(该读者有过期书刊时不可继续借阅书刊)"_s)
            .titled(u"操作提示")
            .icon(Icon::Warning);
        QCOMPARE(charge(u"B1"_s, u"R1"_s), 100);
        QCOMPARE(m_desk.takeDone(), u"select barcode"_s);

        m->send(u"update dzk set ifcanre=1 where readercode='R1'"_s);
        QCOMPARE(charge(u"B1"_s, u"R1"_s), 0);
    }

    void periods_data()
    {
        QTest::addColumn<QString>("days");
        QTest::addColumn<QString>("due");

        QTest::newRow("one") << u"1"_s << u"2026-03-11"_s;
        QTest::newRow("zero") << u"0"_s << u"2026-04-09"_s;

        QTest::newRow("null") << u"null"_s << u"2026-04-09"_s;
        QTest::newRow("too large for a period") << u"40000"_s << u"2026-04-09"_s;
    }

    void periods()
    {
        QFETCH(QString, days);
        QFETCH(QString, due);
        m->reader(u"D1"_s, {{u"daycount"_s, days}});
        QCOMPARE(charge(u"B1"_s, u"D1"_s), 0);
        QCOMPARE(m->value(u"select yhdate from jhsk"_s), due);
    }

    void holds_data()
    {
        constexpr Answer none = Answer::Ok;
        const QString ahead = u"2026-03-11"_s;
        cases<QString, QString, Answer, int, QString>({
            {"own, live", {u"R1"_s, ahead, none, 0, {}}},
            {"own, last day today", {u"R1"_s, u"2026-03-10"_s, none, 0, u"R1|B1|2026-03-10|True"_s}},
            {"own, no last day", {u"R1"_s, u"null"_s, none, 0, u"R1|B1|null|True"_s}},
            {"another's, kept", {u"R2"_s, ahead, Answer::No, -1, u"R2|B1|2026-03-11|True"_s}},
            {"another's, lent", {u"R2"_s, ahead, Answer::Yes, 0, u"R2||2026-03-11|False"_s}},
            {"another's, dead", {u"R2"_s, u"2026-03-09"_s, none, 0, u"R2|B1|2026-03-09|True"_s}},
        });
    }

    void holds()
    {
        const auto [holder, lastDay, answer, result, left] = given<QString, QString, Answer, int, QString>();
        m->reservation(
            holder, {{u"barcode"_s, u"B1"_s}, {u"oldtime"_s, lastDay}, {u"orderstatus"_s, u"1"_s}});
        if (answer != Answer::Ok)
            m->prompt.expect(questionOf(holder)).titled(u"青简台").icon(Icon::Information).answer(answer);
        QCOMPARE(charge(u"B1"_s, u"R1"_s), result);
        QCOMPARE(m->value(u"select readercode,barcode,oldtime,orderstatus from yyk"_s), left);
        QCOMPARE(m->value(u"select readercode from jhsk"_s), result == 0 ? u"R1"_s : QString());
        QCOMPARE(m->value(u"select yordercshu from dzk where readercode='%1'"_s.arg(holder)),
            left.isEmpty() ? u"0"_s : u"1"_s);
    }

    void onlyTheFirstReservationCounts()
    {
        m->reservation(
            u"R1"_s, {{u"barcode"_s, u"B1"_s}, {u"oldtime"_s, u"2026-03-01"_s}, {u"orderstatus"_s, u"1"_s}});
        m->reservation(
            u"R2"_s, {{u"barcode"_s, u"B1"_s}, {u"oldtime"_s, u"2026-03-20"_s}, {u"orderstatus"_s, u"1"_s}});
        QCOMPARE(charge(u"B1"_s, u"R1"_s), 0);
        QCOMPARE(m->value(u"select count(*) from yyk"_s), u"2"_s);
    }

    /// What is no code finds nothing and changes nothing.
    void hostileInput()
    {
        const QString all = m->everything();
        for (const QString& code : {u"x'; delete from dzk --"_s, u"''''"_s, u"%"_s, u"_[a-z]"_s, u"   "_s,
                 u"📚读者😀"_s, QString(QChar(0xd83d)), u"R1\0x"_s, QString(10'000, u'长')}) {
            m->prompt.expect(NoSuchReaderText);
            QCOMPARE(charge(u"B1"_s, code), 2);
            m->prompt.expect(NoSuchCopyText);
            QCOMPARE(charge(code, u"R1"_s), 4);
        }
        QCOMPARE(m->everything(), all);
    }

    /// The same texts as real codes are found and written whole.
    void oddCodes()
    {
        for (const QString& code : {u"O'Neil"_s, u"x'; delete from dzk --"_s, u"''''"_s, u"%"_s, u"_[a-z]"_s,
                 u"\\'"_s, u"📚读者😀"_s}) {
            m->reader(code);
            m->copy(code);
            QCOMPARE(charge(code, code), 0);
            QCOMPARE(m->value(u"select readercode,barcode from jhsk"_s), code + u'|' + code);
            m->send(u"delete from jhsk"_s);
            m->send(u"update dzk set orderbook=0"_s);
            m->send(u"update sck set borrowstatus=1,bookstatus='库本'"_s);
        }
    }

    /// Without settings nothing is written and nothing told; without a connection no reader is known.
    void noConnection()
    {
        m->settings.values.clear();
        m->prompt.expect(u"无法取得正确连接数据库的信息!现在输入吗?"_s).answer(Answer::Yes);
        QCOMPARE(charge(u"B1"_s, u"R1"_s), 0);
        storeConnectionText(
            m->session, u"PROVIDER=MSDASQL;DSN=青简内置数据库;UID=a;PWD=;Database=/nowhere/at/all.db;"_s);
        const QString failed = u"对不起，连接数据库失败！错误原因如下：\n"_s;
        m->prompt.expectStart(failed).titled(u"管理系统操作提示").answer(Answer::No);
        m->prompt.expect(NoSuchReaderText);
        QCOMPARE(charge(u"B1"_s, u"R1"_s), 2);
        m->prompt.expectStart(failed).answer(Answer::Yes);
        QCOMPARE(charge(u"B1"_s, u"R1"_s), 0);
        QCOMPARE(m->editor.calls, 2);
        QCOMPARE(m->value(u"select count(*) from jhsk"_s), u"0"_s);
        storeConnectionText(m->session, m->connectionText);
    }

    void settingsAreReadAtEachOpening()
    {
        // The connection is lost between the checks and the writes: checks pass, nothing is written, result
        // 0.
        m->factory.setHook([&](QStringView statement) {
            if (statement.contains(u"from yyk  join")) m->settings.values.clear();
        });
        m->prompt.expect(u"无法取得正确连接数据库的信息!现在输入吗?"_s).answer(Answer::No);
        QCOMPARE(charge(u"B1"_s, u"R1"_s), 0);
        m->factory.setHook({});
        QCOMPARE(m->value(u"select count(*) from jhsk"_s), u"0"_s);
        storeConnectionText(m->session, m->connectionText);
    }

private:
    int charge(const QString& barcode, const QString& reader)
    {
        return ChargeBook(m->session, m_desk, barcode, reader);
    }

    std::unique_ptr<TestLibrary> m;
    DeskDouble m_desk;
};

QTEST_GUILESS_MAIN(TestCharge)
#include "test_charge.moc"
