#include "app/screen_register.h"
#include "desk/desk_form.h"
#include "frame/login_form.h"
#include "frame/main_form.h"
#include "readers/holiday_editor.h"
#include "readers/holiday_form.h"
#include "readers/parameter_editor.h"
#include "readers/parameter_form.h"
#include "readers/reader_card_form.h"
#include "readers/reader_list_form.h"
#include "readers/reader_name_editor.h"
#include "readers/reader_register_form.h"
#include "support/test_library.h"
#include "support/window_steps.h"
#include "support/workplace_double.h"

using namespace quilla;

/// A library that holds nothing but an operator is made ready through its screens, up to the first loan.
class TestNewLibrary : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void fromTheFirstLoginToTheFirstLoan()
    {
        m.operatorUser(u"馆长"_s, u"geheim"_s);
        signIn();
        m_window = std::make_unique<LtMainFrm>(m_work.place, m.session, allScreens());
        appear(*m_window);
        m_window->openUp();
        enterUnit();
        enterRules();
        enterHoliday();
        enterReader();
        m.copy(u"B1"_s); // cataloguing is another program's
        charge();
        m_window.reset();
        QCOMPARE(m.prompt.takeComplaints(), QString());
        // 20 days reach into the holiday, of which none counts.
        QCOMPARE(m.value(u"select readercode,barcode,orderdate,yhdate,operater from jhsk"_s),
            u"G001|B1|2026-03-10|2026-04-05|馆长"_s);
        QCOMPARE(
            m.value(
                u"select readunit,readerclass,bookcount,daycount,fine,ifcanre,orderbook,readstatus from dzk"_s),
            u"一年级|学生|3|20|0.1|False|1|有效"_s);
        QCOMPARE(m.broken(), QString());
    }

private:
    void signIn()
    {
        LtLoginFrm login(m.session);
        whenShown<LtLoginFrm>([](LtLoginFrm& form) {
            form.txtInName.insert(u"馆长"_s);
            type(form.txtInPassword, u"geheim"_s);
        });
        QCOMPARE(login.exec(), int(QDialog::Accepted));
    }

    void enterUnit()
    {
        auto& units = open<MadddzlxFrm>(u"读者单位定义"_s);
        whenShown<ReaderNameFrm>([](ReaderNameFrm& editor) {
            editor.Text1.insert(u"一年级"_s);
            editor.CmdSave.click();
        });
        units.CmdDzcs[0].click();
        QCOMPARE(units.Grid1.current(1), u"一年级"_s);
    }

    void enterRules()
    {
        auto& rules = open<JycsFrm>(u"流通参数设置"_s);
        whenShown<JycsAddFrm>([](JycsAddFrm& editor) {
            editor.Combo1.setEditText(u"学生"_s);
            const QStringList numbers {
                u"20"_s, u"3"_s, u"0.1"_s, u"0.5"_s, u"2"_s, u"1"_s, u"10"_s, u"5"_s, u"2"_s, u"3"_s, u"3"_s};
            for (int box = 0; box < NumberRules; ++box)
                editor.Text1[box].insert(numbers[box]);
            editor.Command1[1].click();
        });
        rules.Command1[0].click();
        QCOMPARE(rules.Grid1.current(0), u"学生"_s);
    }

    void enterHoliday()
    {
        auto& holidays = open<holidayfrm>(u"假期设定"_s);
        whenShown<holidayaddFrm>([](holidayaddFrm& editor) {
            editor.Text1[HolidayBox::Name].insert(u"春假"_s);
            editor.Text1[HolidayBox::First].insert(u"2026-3-28"_s);
            editor.Text1[HolidayBox::Last].insert(u"2026-4-2"_s);
            editor.Command1[1].click();
        });
        holidays.Command1[0].click();
        QCOMPARE(holidays.Grid1.current(0), u"春假"_s);
    }

    void enterReader()
    {
        whenShown<DzaddFrm>([this](DzaddFrm& card) { fillCard(card); });
        auto& readers = open<DzglFrm>(u"读者管理"_s);
        readers.CmdDzgl[0].click();
        QCOMPARE(readers.Grid1.current(ReaderCode), u"G001"_s);
    }

    /// As the operator types it: Enter goes on, the type brings its parameters, 1 in the term is a year.
    void fillCard(DzaddFrm& card)
    {
        type(card.Text1[CardBox::ReaderCode], u"G001"_s);
        card.Text1[CardBox::Name].insert(u"张三"_s);
        QTest::keyClick(&card.Combo1[CardList::Type], Qt::Key_Down);
        QTest::keyClick(&card.Combo1[CardList::Unit], Qt::Key_Down);
        card.Text1[CardBox::Term].clear();
        type(card.Text1[CardBox::Term], u"1"_s);
        card.CmdSave.click();
        card.CmdQuit.click();
    }

    void charge()
    {
        auto& desk = open<TsjhFrm>(u"图书借还"_s);
        type(desk.TxtReaderCode, u"G001"_s);
        type(desk.TxtBarCode, u"B1"_s);
        QCOMPARE(desk.tMsg.text(), u"借书成功"_s);
    }

    /// Opens a screen by its menu entry.
    template <typename Screen> Screen& open(const QString& entry)
    {
        for (QAction* action : m_window->findChildren<QAction*>())
            if (action->text() == entry) action->trigger();
        auto* screen = m_window->findChild<Screen*>();
        if (!screen) qFatal("no screen behind %s", qPrintable(entry));
        return *screen;
    }

    TestLibrary m;
    const WorkplaceDouble m_work {m.session};
    std::unique_ptr<LtMainFrm> m_window;
};

QTEST_MAIN(TestNewLibrary)
#include "test_new_library.moc"
