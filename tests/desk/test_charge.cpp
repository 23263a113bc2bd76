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

    void writesLoanCopyAndReader()
    {
        QCOMPARE(charge(u"B1"_s, u"R1"_s), 0);
        QCOMPARE(m->value(u"select readercode,barcode,orderdate,yhdate,operater,res from jhsk"_s),
            u"R1|B1|2026-03-10|2026-03-30|王馆员|0"_s);
        QCOMPARE(m->value(u"select borrowstatus,bookstatus from sck"_s), u"False|借出"_s);
        QCOMPARE(m->rows(u"select readercode,orderbook,yordercshu from dzk order by readercode"_s),
            (QStringList {u"R1|1|0"_s, u"R2|0|0"_s}));
        QCOMPARE(m_desk.takeDone(), QString());
    }

    void refusals_data()
    {
        QTest::addColumn<QStringList>("before");
        QTest::addColumn<QString>("barcode");
        QTest::addColumn<QString>("reader");
        QTest::addColumn<int>("result");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("title");
        QTest::addColumn<int>("icon");
        QTest::addColumn<QString>("done");
        const QString own = u"青简台"_s;
        const QString hint = u"提示"_s;
        constexpr int info = int(Icon::Information);
        constexpr int warning = int(Icon::Warning);
        const auto row = [](const char* name, const QStringList& before, const QString& barcode,
                             const QString& reader, int result, const QString& text, const QString& title,
                             int icon, const QString& done) {
            QTest::newRow(name) << before << barcode << reader << result << text << title << icon << done;
        };
        row("no reader code", {}, u"B1"_s, {}, 1, {}, {}, 0, {});
        row("no barcode", {}, {}, u"R1"_s, 1, {}, {}, 0, {});
        row("unknown reader", {}, u"B1"_s, u"R9"_s, 2, NoSuchReaderText, hint, warning, u"focus reader"_s);
        for (const int held : {5, 6})
            row(held == 5 ? "quota used" : "quota passed",
                {u"update dzk set bookcount=5,orderbook=%1"_s.arg(held),
                    u"delete from dzk where readercode='R2'"_s, u"update dzk set readstatus='有效'"_s},
                u"B1"_s, u"R1"_s, 3, u"此读者借书额已满，不能再借新书！"_s, own, warning, u"page 1"_s);
        const QString selects = u"select barcode"_s;
        row("unknown copy", {}, u"B9"_s, u"R1"_s, 4, NoSuchCopyText, hint, info, selects);
        const auto state = [](int lendable, const QString& status) {
            return QStringList {
                u"update sck set borrowstatus=%1,bookstatus='%2'"_s.arg(QString::number(lendable), status)};
        };
        row("lost copy", state(0, u"丢失"_s), u"B1"_s, u"R1"_s, 4, NoSuchCopyText, hint, info, selects);
        row("withdrawn copy", state(0, u"注销"_s), u"B1"_s, u"R1"_s, 4, NoSuchCopyText, hint, info, selects);
        row("copy without a state", {u"update sck set bookstatus=null"_s}, u"B1"_s, u"R1"_s, 4,
            NoSuchCopyText, hint, info, selects);
        row("on loan", state(0, u"借出"_s), u"B1"_s, u"R1"_s, 5, u"此书当前已借出"_s, own, info, selects);
        row("reference, barred", state(0, u"典藏"_s), u"B1"_s, u"R1"_s, 5, u"此书当前不可借"_s, hint, info,
            selects);
        row("reference", state(1, u"典藏"_s), u"B1"_s, u"R1"_s, 6, u"此书是典藏书，不能外借"_s, hint, info,
            selects);
    }

    void refusals()
    {
        QFETCH(QStringList, before);
        QFETCH(QString, text);
        for (const QString& statement : before)
            m->send(statement);
        const QString all = m->everything();
        if (!text.isEmpty()) {
            QFETCH(QString, title);
            QFETCH(int, icon);
            m->prompt.expect(text).titled(title).icon(Icon(icon));
        }
        QFETCH(QString, barcode);
        QFETCH(QString, reader);
        QFETCH(int, result);
        QFETCH(QString, done);
        QCOMPARE(charge(barcode, reader), result);
        QCOMPARE(m_desk.takeDone(), done);
        QCOMPARE(m->everything(), all);
        // The planted states are not those of a working library.
        m->send(u"update dzk set orderbook=0"_s);
        m->send(u"update sck set borrowstatus=1,bookstatus='库本'"_s);
    }

    using Cards = std::tuple<QString, QString, QString>;
    void cards_data()
    {
        const QString lost = u"该读者证在挂失中。。。"_s;
        const QString cancelled = u"该读者证已注销！"_s;
        const QString expired = u"该读者证已过期"_s;
        const QString invalid = u"读者证过期或无效！"_s;
        cases<Cards>({
            {"valid", {u"有效"_s, u"2026-03-11"_s, {}}},
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
        const auto [status, term, text] = given<Cards>();
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
        QTest::newRow("own") << u"7"_s << u"2026-03-17"_s;
        QTest::newRow("one") << u"1"_s << u"2026-03-11"_s;
        QTest::newRow("zero") << u"0"_s << u"2026-04-09"_s;
        QTest::newRow("below zero") << u"-3"_s << u"2026-04-09"_s;
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

    using Holds = std::tuple<QString, QString, bool, QString>;
    void holds_data()
    {
        cases<Holds>({
            {"own, live", {u"R1"_s, u"2026-03-11"_s, false, {}}},
            {"own, last day today", {u"R1"_s, u"2026-03-10"_s, false, u"R1|B1|2026-03-10|True"_s}},
            {"own, no last day", {u"R1"_s, u"null"_s, false, u"R1|B1|null|True"_s}},
            {"another's, live", {u"R2"_s, u"2026-03-11"_s, true, u"R2|B1|2026-03-11|True"_s}},
            {"another's, dead", {u"R2"_s, u"2026-03-09"_s, false, u"R2|B1|2026-03-09|True"_s}},
        });
    }

    void holds()
    {
        const auto [holder, lastDay, asks, left] = given<Holds>();
        m->reservation(
            holder, {{u"barcode"_s, u"B1"_s}, {u"oldtime"_s, lastDay}, {u"orderstatus"_s, u"1"_s}});
        if (asks)
            m->prompt.expect(questionOf(holder)).titled(u"青简台").icon(Icon::Information).answer(Answer::No);
        QCOMPARE(charge(u"B1"_s, u"R1"_s), asks ? -1 : 0);
        QCOMPARE(m->value(u"select readercode,barcode,oldtime,orderstatus from yyk"_s), left);
        QCOMPARE(m->value(u"select count(*) from jhsk"_s), asks ? u"0"_s : u"1"_s);
        QCOMPARE(m->value(u"select yordercshu from dzk where readercode='%1'"_s.arg(holder)),
            left.isEmpty() ? u"0"_s : u"1"_s);
    }

    void holdForAnotherMayBeLent()
    {
        m->reservation(
            u"R2"_s, {{u"barcode"_s, u"B1"_s}, {u"oldtime"_s, u"2026-03-20"_s}, {u"orderstatus"_s, u"1"_s}});
        m->prompt.expect(questionOf(u"R2"_s)).answer(Answer::Yes);
        QCOMPARE(charge(u"B1"_s, u"R1"_s), 0);
        QCOMPARE(m->value(u"select readercode,barcode,orderstatus from yyk"_s), u"R2||False"_s);
        QCOMPARE(m->value(u"select yordercshu from dzk where readercode='R2'"_s), u"1"_s);
        QCOMPARE(m->value(u"select readercode from jhsk"_s), u"R1"_s);
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

    void codesCompareAsTheServerDoes()
    {
        QCOMPARE(charge(u"b1 "_s, u"r1"_s), 0);
        QCOMPARE(m->value(u"select orderbook from dzk where readercode='R1'"_s), u"1"_s);
        QCOMPARE(m->value(u"select bookstatus from sck"_s), u"借出"_s);
    }

    void hostileInput_data()
    {
        QTest::addColumn<QString>("code");
        QTest::newRow("quote") << u"O'Neil"_s;
        QTest::newRow("injection") << u"x' or '1'='1"_s;
        QTest::newRow("second statement") << u"x'; delete from dzk --"_s;
        QTest::newRow("only quotes") << u"''''"_s;
        QTest::newRow("percent") << u"%"_s;
        QTest::newRow("underscore and bracket") << u"_[a-z]"_s;
        QTest::newRow("backslash") << u"\\'"_s;
        QTest::newRow("blanks") << u"   "_s;
        QTest::newRow("emoji") << u"📚读者😀"_s;
        QTest::newRow("lone surrogate") << QString(QChar(0xd83d));
        QTest::newRow("zero byte") << u"R1\0x"_s;
        QTest::newRow("10,000 characters") << QString(10'000, u'长');
    }

    void hostileInput()
    {
        QFETCH(QString, code);
        const QString all = m->everything();
        m->prompt.expect(NoSuchReaderText);
        QCOMPARE(charge(u"B1"_s, code), 2);
        m->prompt.expect(NoSuchCopyText);
        QCOMPARE(charge(code, u"R1"_s), 4);
        QCOMPARE(m->everything(), all);
        if (code.size() > 50 || code.trimmed().isEmpty() || code.contains(QChar(0))
            || (code.size() == 1 && code[0].isSurrogate()))
            return;
        // The same text as a real code is found and written whole.
        m->reader(code);
        m->copy(code);
        QCOMPARE(charge(code, code), 0);
        QCOMPARE(m->value(u"select readercode,barcode from jhsk"_s), code + u'|' + code);
    }

    void noSettings()
    {
        m->settings.values.clear();
        m->prompt.expect(u"无法取得正确连接数据库的信息!现在输入吗?"_s)
            .titled(u"管理系统操作提示")
            .icon(Icon::Information)
            .answer(Answer::Yes);
        QCOMPARE(charge(u"B1"_s, u"R1"_s), 0);
        QCOMPARE(m->editor.calls, 1);
        QCOMPARE(m->value(u"select count(*) from jhsk"_s), u"0"_s);
        storeConnectionText(m->session, m->connectionText);
    }

    void noConnection()
    {
        const QString good = m->connectionText;
        storeConnectionText(
            m->session, u"PROVIDER=MSDASQL;DSN=青简内置数据库;UID=a;PWD=;Database=/nowhere/at/all.db;"_s);
        m->prompt.expectStart(u"对不起，连接数据库失败！错误原因如下：\n"_s)
            .titled(u"管理系统操作提示")
            .answer(Answer::No);
        m->prompt.expect(NoSuchReaderText);
        QCOMPARE(charge(u"B1"_s, u"R1"_s), 2);
        m->prompt.expectStart(u"对不起，连接数据库失败！错误原因如下：\n"_s).answer(Answer::Yes);
        QCOMPARE(charge(u"B1"_s, u"R1"_s), 0);
        QCOMPARE(m->editor.calls, 1);
        storeConnectionText(m->session, good);
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
