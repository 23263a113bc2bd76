#include "database/check.h"
#include "desk/charge_ops.h"
#include "frame/sublib.h"
#include "support/desk_double.h"
#include "support/library_test.h"

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

/// R1 charges B1. The clock of these tests stands at 2026-03-10 9:30:15.
class TestCharge : public LibraryTest {
    Q_OBJECT

    void fill() override
    {
        m->reader(u"R1"_s);
        m->reader(u"R2"_s);
        m->copy(u"B1"_s);
        m_desk.takeDone();
    }
    void finish() override { QCOMPARE(m->broken(), QString()); }

private Q_SLOTS:
    /// Codes compare as the server does, and no quota is no limit.
    void writesLoanCopyAndReader()
    {
        m->send(u"update dzk set bookcount=null where readercode='R1'"_s);
        QCOMPARE(charge(u"B1"_s, {}), 1);
        QCOMPARE(charge({}, u"R1"_s), 1);
        QCOMPARE(charge(u"b1 "_s, u"r1"_s), 0);
        QCOMPARE(m->value(u"select readercode,orderdate,yhdate,operater,res from jhsk"_s),
            u"r1|2026-03-10|2026-03-30|王馆员|0"_s);
        QCOMPARE(m->value(u"select borrowstatus,bookstatus from sck"_s), u"False|借出"_s);
        QCOMPARE(m->rows(u"select readercode,orderbook,yordercshu from dzk order by readercode"_s),
            (QStringList {u"R1|1|0"_s, u"R2|0|0"_s}));
        QCOMPARE(m_desk.takeDone(), QString());
    }

    /// The message and what the desk does then; the box has a title of its own or the hint's.
    void refusals_data()
    {
        const QString selects = u"select barcode"_s;
        const auto copy = [&](const char* state, int result, const QString& text, bool hint) {
            return std::tuple {u"update sck set "_s + QString::fromUtf8(state), result, text, hint, selects};
        };
        const auto card = [](const char* state, const QString& text) {
            return std::tuple {u"update dzk set "_s + QString::fromUtf8(state), 5, text, true, QString()};
        };
        const QString lost = u"该读者证在挂失中。。。"_s;
        const QString expired = u"该读者证已过期"_s;
        const QString invalid = u"读者证过期或无效！"_s;
        cases<QString, int, QString, bool, QString>({
            {"unknown reader", {u"delete from dzk"_s, 2, NoSuchReaderText, true, u"focus reader"_s}},
            {"quota used",
                {u"update dzk set orderbook=5"_s, 3, u"此读者借书额已满，不能再借新书！"_s, false,
                    u"page 1"_s}},
            {"unknown copy", {u"delete from sck"_s, 4, NoSuchCopyText, true, selects}},
            {"lost copy", copy("borrowstatus=0,bookstatus='丢失'", 4, NoSuchCopyText, true)},
            {"withdrawn copy", copy("borrowstatus=0,bookstatus='注销'", 4, NoSuchCopyText, true)},
            {"copy without a state", copy("bookstatus=null", 4, NoSuchCopyText, true)},
            {"on loan", copy("borrowstatus=0,bookstatus='借出'", 5, u"此书当前已借出"_s, false)},
            {"reference, barred", copy("borrowstatus=0,bookstatus='典藏'", 5, u"此书当前不可借"_s, true)},
            {"reference", copy("bookstatus='典藏'", 6, u"此书是典藏书，不能外借"_s, true)},
            {"last day is today", card("term='2026-03-10'", expired)},
            {"card lost, expired too", card("readstatus='挂失',term='2020-01-01'", lost)},
            {"card cancelled, quota used too", card("readstatus='无效',orderbook=5", u"该读者证已注销！"_s)},
            {"marked expired, term ahead", card("readstatus='超期'", invalid)},
            {"card without a state", card("readstatus=null", invalid)},
        });
    }

    void refusals()
    {
        const auto [before, result, text, hint, done] = given<QString, int, QString, bool, QString>();
        m->send(before);
        const QString all = m->everything();
        const bool warns = result == 2 || result == 3;
        m->prompt.expect(text)
            .titled(hint ? u"提示" : u"青简台")
            .icon(warns ? Icon::Warning : Icon::Information);
        QCOMPARE(charge(), result);
        QCOMPARE(m_desk.takeDone(), done);
        QCOMPARE(m->everything(), all);
        // The planted states are not those of a working library.
        m->send(u"update dzk set orderbook=0"_s);
        m->send(u"update sck set borrowstatus=1,bookstatus='库本'"_s);
    }

    void overdueCountsFromTheDueDate()
    {
        for (const auto& [barcode, due] : {std::pair {u"L1"_s, u"2026-03-10"_s},
                 std::pair {u"L2"_s, u"2026-01-10"_s}, std::pair {u"L3"_s, u"2026-03-11"_s}})
            m->loan(barcode, u"R1"_s, due);
        m->prompt.expect(u"该读者存在2册过期书刊。\n\r(该读者有过期书刊时不可继续借阅书刊)"_s)
            .titled(u"操作提示")
            .icon(Icon::Warning);
        QCOMPARE(charge(), 100);
        QCOMPARE(m_desk.takeDone(), u"select barcode"_s);

        m->send(u"update dzk set bookcount=3 where readercode='R1'"_s);
        m->prompt.expect(u"此读者借书额已满，不能再借新书！"_s); // comes first
        QCOMPARE(charge(), 3);
        m->send(u"update dzk set bookcount=4,ifcanre=1 where readercode='R1'"_s);
        QCOMPARE(charge(), 0);
    }

    /// What is no period of at least a day counts as thirty; the last day of a card may lie open or just
    /// ahead.
    void periods()
    {
        const std::tuple<QString, QString, QString> rows[] {
            {u"1"_s, u"2026-03-11"_s, u"2026-03-11"_s}, {u"0"_s, u"null"_s, u"2026-04-09"_s},
            {u"-1"_s, u"2026-03-11"_s, u"2026-04-09"_s},
            {u"40000"_s, u"2026-03-11"_s, u"2026-04-09"_s}, // too large for a period
        };
        for (const auto& [days, term, due] : rows) {
            m->reader(days, {{u"daycount"_s, days}, {u"term"_s, term}, {u"readstatus"_s, u"有效  "_s}});
            m->copy(days);
            QCOMPARE(charge(days, days), 0);
            QCOMPARE(m->value(u"select yhdate from jhsk where barcode='%1'"_s.arg(days)), due);
        }
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
        });
    }

    void holds()
    {
        const auto [holder, lastDay, answer, result, left] = given<QString, QString, Answer, int, QString>();
        hold(holder, lastDay);
        if (answer != Answer::Ok)
            m->prompt.expect(questionOf(holder))
                .titled(u"青简台")
                .icon(Icon::Information)
                .answer(answer, Answer::No);
        QCOMPARE(charge(), result);
        QCOMPARE(m->value(u"select readercode,barcode,oldtime,orderstatus from yyk"_s), left);
        QCOMPARE(m->value(u"select readercode from jhsk"_s), result == 0 ? u"R1"_s : QString());
        QCOMPARE(m->value(u"select yordercshu from dzk where readercode='%1'"_s.arg(holder)),
            left.isEmpty() ? u"0"_s : u"1"_s);
    }

    void onlyTheFirstReservationCounts()
    {
        hold(u"R1"_s, u"2026-03-01"_s);
        hold(u"R2"_s, u"2026-03-20"_s);
        QCOMPARE(charge(), 0);
    }

    /// What is no code finds nothing and changes nothing; the same texts as real codes are written whole.
    void hostileCodes()
    {
        const QString all = m->everything();
        const QStringList codes {
            u"O'Neil"_s, u"x'; delete from dzk --"_s, u"''''"_s, u"%"_s, u"_[a-z]"_s, u"\\'"_s, u"📚读者😀"_s};
        const QStringList unfit {u"   "_s, QString(QChar(0xd83d)), u"R1\0x"_s, QString(10'000, u'长')};
        for (const QString& code : codes + unfit) {
            m->prompt.expect(NoSuchReaderText);
            QCOMPARE(charge(u"B1"_s, code), 2);
            m->prompt.expect(NoSuchCopyText);
            QCOMPARE(charge(code, u"R1"_s), 4);
        }
        QCOMPARE(m->everything(), all);
        for (const QString& code : codes) {
            m->reader(code);
            m->copy(code);
            QCOMPARE(charge(code, code), 0);
        }
        QCOMPARE(m->rows(u"select barcode from jhsk where barcode=readercode order by jhskid"_s), codes);
    }

    /// Without a connection no reader is known; without settings nothing is written and no box is shown.
    void noConnection()
    {
        storeConnectionText(m->session, u"DSN=青简内置数据库;UID=a;PWD=;Database=/nowhere/at/all.db;"_s);
        m->prompt.expectStart(u"对不起，连接数据库失败！错误原因如下：\n"_s).answer(Answer::No);
        m->prompt.expect(NoSuchReaderText);
        QCOMPARE(charge(), 2);
        storeConnectionText(m->session, m->connectionText);
        m->factory.setHook([&](QStringView statement) { // lost between the checks and the writes
            if (statement.contains(u"from yyk  join")) m->settings.values.clear();
        });
        m->prompt.expect(u"无法取得正确连接数据库的信息!现在输入吗?"_s).answer(Answer::No);
        QCOMPARE(charge(), 0);
        m->factory.setHook({});
        QCOMPARE(m->value(u"select count(*) from jhsk"_s), u"0"_s);
        storeConnectionText(m->session, m->connectionText);
    }

    /// The database went after the transaction had begun, and the operator answered No: a due date without
    /// the holidays must not be stored, though the transaction itself could be committed.
    void calendarOutOfReach()
    {
        const QString before = m->everything();
        m->factory.setHook([&](QStringView statement) {
            if (statement == u"begin")
                m->settings.set(StoredText::Application.toString(), StoredText::Section.toString(),
                    StoredText::Key.toString(),
                    u"DSN=青简内置数据库;UID=a;PWD=;Database=/nowhere/at/all.db;"_s);
        });
        m->prompt.expectStart(u"对不起，连接数据库失败！错误原因如下：\n"_s).answer(Answer::No);
        m->prompt.expectStart(u"获取服务器日期时出现错误！原因如下：\n"_s);
        QCOMPARE(charge(), -1);
        m->factory.setHook({});
        storeConnectionText(m->session, m->connectionText);
        QCOMPARE(m->everything(), before);
    }

    /// Another desk charges the copy after this one has looked at it and before it writes.
    void guardedCopyIsLentOnce()
    {
        Connection administrator = m->factory.open(m->connectionText);
        guardLibrary(administrator);
        administrator.close();
        int others = -2;
        m->factory.setHook([&](QStringView statement) {
            if (statement != u"begin" || others != -2) return;
            others = -1;
            others = charge(u"B1"_s, u"R2"_s);
        });
        QCOMPARE(charge(), -1);
        m->factory.setHook({});
        QCOMPARE(others, 0);
        QCOMPARE(m->value(u"select readercode from jhsk"_s), u"R2"_s);
    }

    /// Lost between the look at the copy and the writes, which then change no copy.
    void copyLostMeanwhileIsNotLent()
    {
        QString lost;
        m->factory.setHook([&](QStringView statement) {
            if (statement != u"begin" || !lost.isEmpty()) return;
            m->send(u"update sck set bookstatus='丢失'"_s);
            lost = m->everything();
        });
        QCOMPARE(charge(), -1);
        m->factory.setHook({});
        QCOMPARE(m->everything(), lost);
        m->send(u"update sck set bookstatus='库本'"_s);
    }

    void eachStatement_data()
    {
        cases<QString, QString, int, QString, bool>({
            {"server date, four times", {{}, u"getdate()"_s, 0, {}, true}},
            {"reader", {{}, u"from DZK  where"_s, 2, NoSuchReaderText, false}},
            {"overdue count", {{}, u"count(jhskid)"_s, 0, {}, true}},
            {"copy", {{}, u"from SCK  where"_s, 4, NoSuchCopyText, false}},
            {"reservation", {{}, u"from yyk  join"_s, 0, {}, true}},
            {"begin", {{}, u"begin"_s, -1, {}, false}},
            {"holidays", {{}, u"From Global"_s, 0, {}, true}},
            {"loan", {{}, u"insert into JHSK"_s, -1, {}, false}},
            {"copy update", {{}, u"update SCK"_s, -1, {}, false}},
            {"reader update", {{}, u"update DZK"_s, -1, {}, false}},
            {"commit", {{}, u"commit"_s, -1, {}, false}},
            {"own hold: reader update", {u"R1"_s, u"yordercshu=yordercshu-1"_s, -1, {}, false}},
            {"own hold: delete", {u"R1"_s, u"delete yyk"_s, -1, {}, false}},
            {"another's hold: loan", {u"R2"_s, u"insert into JHSK"_s, -1, {}, false}},
            // The server date clears the error on its way, so this one does not reach the commit test.
            {"another's hold: reservation update", {u"R2"_s, u"update yyk"_s, 0, {}, true}},
        });
    }

    /// A failure of each statement, injected at the connection: the result, and a library in which
    /// loans, copies and readers still agree.
    void eachStatement()
    {
        const auto [holder, statement, result, box, written] = given<QString, QString, int, QString, bool>();
        if (!holder.isEmpty()) hold(holder, u"2026-03-20"_s);
        const QString before = m->everything();
        const auto askForAnothers = [&, another = holder == u"R2"] {
            if (another) m->prompt.expect(questionOf(u"R2"_s)).answer(Answer::Yes, Answer::No);
        };
        for (int date = 0; date < 4 && statement == u"getdate()"; ++date) // the client's clock serves then
            m->prompt.expectStart(u"获取服务器日期时出现错误！原因如下：\n"_s);
        if (!box.isEmpty()) m->prompt.expect(box);
        askForAnothers();
        m->failAt(statement);
        QCOMPARE(charge(), result);
        m->factory.setHook({});
        QCOMPARE(m->everything() != before, written);
        if (written) return;
        askForAnothers();
        QCOMPARE(charge(), 0); // the next charge works again
    }

private:
    int charge(const QString& barcode = u"B1"_s, const QString& reader = u"R1"_s)
    {
        return ChargeBook(m->session, m_desk, barcode, reader);
    }

    /// B1 is set aside for that reader.
    void hold(const QString& reader, const QString& lastDay)
    {
        m->reservation(
            reader, {{u"barcode"_s, u"B1"_s}, {u"oldtime"_s, lastDay}, {u"orderstatus"_s, u"1"_s}});
    }

    DeskDouble m_desk;
};

QTEST_GUILESS_MAIN(TestCharge)
#include "test_charge.moc"
