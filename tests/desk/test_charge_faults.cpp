#include "desk/charge_ops.h"
#include "support/cases.h"
#include "support/desk_double.h"
#include "support/test_library.h"

#include <QTest>

using namespace quilla;

/// A failure of each statement of a charge, injected at the connection: the told result, and a library
/// in which loans, copies and readers still agree.
class TestChargeFaults : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachStatement_data()
    {
        cases<QString, QString, int, QString, bool>({
            {"reader", {{}, u"from DZK  where"_s, 2, u"没有找到该读者"_s, false}},
            {"overdue count", {{}, u"count(jhskid)"_s, 0, {}, true}},
            {"copy", {{}, u"from SCK  where"_s, 4, u"书库没有此书的记录"_s, false}},
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

    void eachStatement()
    {
        const auto [holder, statement, result, box, written]
            = given<QString, QString, int, QString, bool>(); // box: its beginning
        TestLibrary library;
        DeskDouble desk;
        plant(library, holder);
        const QString before = library.everything();
        if (!box.isEmpty()) library.prompt.expectStart(box);
        if (holder == u"R2") library.prompt.expectStart(u"这本书已经有人预约了"_s).answer(Answer::Yes);

        library.failAt(statement);
        QCOMPARE(int(ChargeBook(library.session, desk, u"B1"_s, u"R1"_s)), result);
        library.factory.setHook({});

        QCOMPARE(library.prompt.takeComplaints(), QString());
        QCOMPARE(library.broken(), QString());
        QCOMPARE(library.everything() != before, written);
        // The next charge works again.
        if (!written) {
            if (holder == u"R2") library.prompt.expectStart(u"这本书已经有人预约了"_s).answer(Answer::Yes);
            QCOMPARE(int(ChargeBook(library.session, desk, u"B1"_s, u"R1"_s)), 0);
        }
    }

    /// Each failing server date is told and the client's clock used, wherever in the charge it happens.
    void failingServerDate()
    {
        TestLibrary library;
        DeskDouble desk;
        plant(library, {});
        library.failAt(u"getdate()"_s);
        for (int call = 0; call < 4; ++call)
            library.prompt.expectStart(u"获取服务器日期时出现错误！原因如下：\n"_s)
                .titled(u"操作提示")
                .icon(Icon::Information);
        QCOMPARE(int(ChargeBook(library.session, desk, u"B1"_s, u"R1"_s)), 0);
        QCOMPARE(library.prompt.takeComplaints(), QString());
        library.factory.setHook({});
        QCOMPARE(library.value(u"select orderdate,yhdate from jhsk"_s), u"2026-03-10|2026-03-30"_s);
        QCOMPARE(library.broken(), QString());
    }

private:
    /// A library in which R1 charges B1, which is held as `holder` says; empty for no hold.
    void plant(TestLibrary& library, const QString& holder)
    {
        library.reader(u"R1"_s);
        library.reader(u"R2"_s);
        library.copy(u"B1"_s);
        library.holiday(u"假"_s, u"2026-05-01 2026-05-03"_s);
        if (!holder.isEmpty())
            library.reservation(holder,
                {{u"barcode"_s, u"B1"_s}, {u"oldtime"_s, u"2026-03-20"_s}, {u"orderstatus"_s, u"1"_s}});
    }
};

QTEST_GUILESS_MAIN(TestChargeFaults)
#include "test_charge_faults.moc"
