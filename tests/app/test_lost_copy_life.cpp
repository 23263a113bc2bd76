#include "app/screen_register.h"
#include "desk/desk_form.h"
#include "exceptions/fine_form.h"
#include "exceptions/ledger_editor.h"
#include "exceptions/ledger_form.h"
#include "exceptions/lost_editor.h"
#include "exceptions/lost_list_form.h"
#include "exceptions/overdue_form.h"
#include "frame/main_form.h"
#include "support/screen_test.h"

#include <QRegularExpression>

using namespace quilla;

namespace {

/// The lines of a table that two states of it do not share.
QStringList without(QStringList lines, const QStringList& others)
{
    for (const QString& line : others)
        lines.removeOne(line);
    return lines;
}

} // namespace

/// The life of one copy, through the windows that an operator opens from the main menu: lent, brought back
/// late, overdue, noticed, reported lost, settled, restored, lent again, withdrawn while on loan. After each
/// step every table is compared with what it held before.
class TestLostCopyLife : public ScreenTest {
    Q_OBJECT

private Q_SLOTS:
    void life()
    {
        lent(u"2026-03-30"_s);
        cameBackLate();
        lent(u"2026-04-21"_s);
        overdueAndNoticed();
        reportedLost();
        settled();
        restored();
        lent(u"2026-05-27"_s);
        withdrawnOnLoan();
    }

private:
    void fill() override
    {
        // it is 2026-03-10
        m->reader(u"R1"_s,
            {{u"name"_s, u"甲"_s}, {u"readunit"_s, u"一班"_s}, {u"fine"_s, u"0.1"_s}, {u"lost"_s, u"3"_s}});
        m->copy(u"B1"_s);
        m_window = &opened<LtMainFrm>(m_work->place, m->session, allScreens());
        m_window->resize(1400, 1000);
        m_window->openUp();
        m_before = tables();
    }

    template <typename Form> Form& open(const QString& target)
    {
        return *qobject_cast<Form*>(m_window->openScreen(target));
    }

    void lent(const QString& due)
    {
        auto& desk = open<TsjhFrm>(u"TsjhFrm"_s);
        if (desk.TxtReaderCode.text().isEmpty()) type(desk.TxtReaderCode, u"R1"_s);
        type(desk.TxtBarCode, u"B1"_s);
        QCOMPARE(desk.tMsg.text(), u"借书成功"_s);
        close(desk);
        const QString today = isoDate(m->clock.moment.date);
        const QString number = m->value(u"select max(jhskid) from jhsk"_s);
        QCOMPARE(changes(),
            QStringList({u"dzk.orderbook 0>1"_s, u"jhsk +%1|R1|B1|%2|%3|王馆员|0"_s.arg(number, today, due),
                u"sck.bookstatus 库本>借出"_s, u"sck.borrowstatus True>False"_s}));
    }

    /// First the operator leaves the fine open, so that the copy stays lent; then it is taken.
    void cameBackLate()
    {
        m->setNow({QDate(2026, 4, 1), QTime(10, 0)});
        auto& desk = open<TsjhFrm>(u"TsjhFrm"_s);
        desk.SSTab1.setCurrentIndex(1);
        for (const auto& [button, told] : {std::pair {2, u"取消还书"_s}, {1, u"还书成功"_s}}) {
            QCOMPARE(changes(), QStringList());
            inDialog<FKmangerFrm>([button = button](FKmangerFrm& form) { form.Command1[button].click(); });
            type(desk.TxtRetBook, u"B1"_s);
            QCOMPARE(desk.tMsg.text(), told);
        }
        close(desk);
        QCOMPARE(changes(),
            QStringList({u"dzk.orderbook 1>0"_s, u"fkk +R1|甲|B1|书名1|0.2|0.2|超期|王馆员|2026-04-01|"_s,
                u"jhsk -1|R1|B1|2026-03-10|2026-03-30|王馆员|0"_s,
                u"jhslsk +1|R1|B1|2026-03-10|2026-03-30|2026-04-01|王馆员"_s, u"sck.bookstatus 借出>库本"_s,
                u"sck.borrowstatus False>True"_s}));
    }

    void close(TsjhFrm& desk)
    {
        desk.CmdQuit.click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    /// After the login the question about overdue loans leads to their list.
    void overdueAndNoticed()
    {
        m->setNow({QDate(2026, 4, 27), QTime(10, 0)});
        m->prompt.expect(u"借还书库中存在超期书刊，是否查看？"_s).icon(Icon::Warning).answer(Answer::Yes);
        m_window->openUp();
        auto* list = m_window->findChild<ChaoQifrm*>();
        QVERIFY(list);
        QCOMPARE(list->Grid1.current(0) + list->Grid1.current(7), u"B16"_s);
        list->PrintDunningNotices(u"readercode"_s);
        QCOMPARE(m_work->reports.shown, QStringList({u"JHSKCQRpt"_s}));
        QCOMPARE(changes(), QStringList());
    }

    void reportedLost()
    {
        auto& list = open<lostMangerfrm>(u"lostMangerfrm"_s);
        inDialog<lostMangerAddfrm>([](lostMangerAddfrm& editor) {
            typeInto(editor.Text1[LostBox::Barcode], u"B1"_s);
            editor.Command1[1].click();
        });
        QTest::keyClick(&list.Grid1, Qt::Key_Insert);
        QCOMPARE(m_dialogs, 0);
        QCOMPARE(changes(), QStringList({u"diushik +R1|甲|一班|B1|书名1|60|2026-04-27"_s}));
    }

    /// Ten days later: the overdue fine ended with the report. The entry of the register stays.
    void settled()
    {
        m->setNow({QDate(2026, 5, 7), QTime(10, 0)});
        inDialog<FKmangerFrm>([](FKmangerFrm& form) {
            typeInto(form.Text1[FineBox::Barcode], u"B1"_s);
            QVERIFY(form.Check1[2].isChecked() && !form.Check1[2].isEnabled());
            form.Command1[1].click();
        });
        m_window->openScreen(u"FKmangerFrm"_s, u"A"_s);
        QCOMPARE(m_dialogs, 0);
        QCOMPARE(changes(),
            QStringList({u"BookOut +1|书名1|著者1|B1|20|丢失|null|2026-05-07|王馆员"_s,
                u"dzk.orderbook 1>0"_s, u"fkk +R1|甲|B1|书名1|0.6|0.6|超期|王馆员|2026-05-07|"_s,
                u"fkk +R1|甲|B1|书名1|60|60|丢失|王馆员|2026-05-07|"_s,
                u"jhsk -2|R1|B1|2026-04-01|2026-04-21|王馆员|0"_s,
                u"jhslsk +2|R1|B1|2026-04-01|2026-04-21|2026-05-07|王馆员"_s,
                u"sck.bookstatus 借出>丢失"_s}));
    }

    void restored()
    {
        auto& ledger = open<BookOutFrm>(u"BookOutFrm"_s);
        ledger.Menu.setChooser([](const QStringList&) { return 1; });
        clickLine(ledger.Grid1, 1, Qt::RightButton);
        QCOMPARE(changes(),
            QStringList({u"BookOut -1|书名1|著者1|B1|20|丢失|null|2026-05-07|王馆员"_s,
                u"sck.bookstatus 丢失>库本"_s, u"sck.borrowstatus False>True"_s}));
    }

    /// The loan stays behind and shows nowhere; so does the entry of the register.
    void withdrawnOnLoan()
    {
        auto& ledger = open<BookOutFrm>(u"BookOutFrm"_s);
        inDialog<AddBookOutFrm>([](AddBookOutFrm& editor) {
            typeInto(editor.Text1[LedgerBox::Barcode], u"B1"_s);
            editor.CmdSave.click();
        });
        ledger.CmdAdd.click();
        QCOMPARE(changes(),
            QStringList(
                {u"BookOut +2|书名1|著者1|B1|20|丢失||2026-05-07|王馆员"_s, u"sck.bookstatus 借出>注销"_s}));
        QCOMPARE(m->rows(u"select barcode from JhskV"_s), QStringList());
        QCOMPARE(
            m->value(u"select barcode from jhsk"_s) + m->value(u"select barcode from diushik"_s), u"B1B1"_s);
    }

    /// Every table with its rows, amounts without zeros at the end.
    QMap<QString, QStringList> tables()
    {
        static const QRegularExpression zeros(u"(\\.\\d*?)0+(?=\\||$)"_s);
        static const QRegularExpression point(u"\\.(?=\\||$)"_s);
        QMap<QString, QStringList> all;
        for (const sql::Table& table : m->schema.tables()) {
            if (table.view) continue;
            QStringList lines = m->rows(u"select * from "_s + table.name);
            lines.sort();
            for (QString& line : lines)
                line.replace(zeros, u"\\1"_s).replace(point, QString());
            all.insert(table.name, lines);
        }
        return all;
    }

    /// What changed since the last call: "table +row", "table -row", "table.column old>new".
    QStringList changes()
    {
        const auto now = tables();
        QStringList found;
        for (auto table = now.begin(); table != now.end(); ++table) {
            const QStringList gone = without(m_before[table.key()], table.value());
            const QStringList come = without(table.value(), m_before[table.key()]);
            if (gone.size() == 1 && come.size() == 1) {
                found += changedFields(table.key(), gone[0].split(u'|'), come[0].split(u'|'));
                continue;
            }
            for (const QString& line : gone)
                found.append(table.key() + u" -"_s + line);
            for (const QString& line : come)
                found.append(table.key() + u" +"_s + line);
        }
        m_before = now;
        found.sort(Qt::CaseInsensitive);
        return found;
    }

    QStringList changedFields(const QString& table, const QStringList& before, const QStringList& after)
    {
        QStringList found;
        const auto& columns = m->schema.table(table)->columns;
        for (qsizetype i = 0; i < before.size(); ++i)
            if (before[i] != after[i])
                found.append(u"%1.%2 %3>%4"_s.arg(table, columns[std::size_t(i)].name, before[i], after[i]));
        return found;
    }

    LtMainFrm* m_window = nullptr;
    QMap<QString, QStringList> m_before;
};

QTEST_MAIN(TestLostCopyLife)
#include "test_lost_copy_life.moc"
