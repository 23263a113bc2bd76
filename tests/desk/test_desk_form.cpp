#include "desk/desk_form.h"
#include "support/cases.h"
#include "support/fine_double.h"
#include "support/report_double.h"
#include "support/screen_host.h"
#include "support/test_library.h"
#include "support/window_steps.h"

#include <QTabBar>

using namespace quilla;

class TestDeskForm : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m = std::make_unique<TestLibrary>();
        m->reader(u"R1"_s);
        m->copy(u"B1"_s);
        m_desk = std::make_unique<TsjhFrm>(m->session, m_host, m_fines, m_reports);
        appear(*m_desk);
    }

    void cleanup()
    {
        m_desk.reset();
        QCOMPARE(m->prompt.takeComplaints(), QString());
    }

    /// The rule of the desk: whatever becomes of a scan, the box is empty, the focus is in it unless the
    /// outcome leads elsewhere, and `tMsg` speaks of this scan alone.
    void everyScanLeavesTheBoxReady_data()
    {
        const QString box = u"TxtBarCode"_s;
        const QString hold = u"insert into yyk(readercode,zskid,barcode,oldtime,ordertime,orderstatus) "
                             "values('R2',1,'B1','2026-03-20','2026-03-01',1)"_s;
        cases<QString, QString, QString, QString, QString>({
            {"empty", {{}, {}, {}, {}, box}},
            {"reader gone",
                {u"delete from dzk"_s, u"B1"_s, u"没有找到该读者的信息！"_s, {}, u"TxtReaderCode"_s}},
            {"card lost",
                {u"update dzk set readstatus='挂失'"_s, u"B1"_s, u"该读者证在挂失中。。。"_s, {}, box}},
            {"quota", {u"update dzk set bookcount=0"_s, u"B1"_s, u"此读者借书额已满"_s, {}, u"TxtRetBook"_s}},
            {"unknown copy", {{}, u"B9"_s, u"书库没有此书的记录"_s, {}, box}},
            {"declined", {hold, u"B1"_s, u"这本书已经有人预约了！"_s, u"借书失败"_s, box}},
        });
    }

    void everyScanLeavesTheBoxReady()
    {
        const auto [before, barcode, box, message, place]
            = given<QString, QString, QString, QString, QString>();
        m->reader(u"R2"_s);
        type(m_desk->TxtReaderCode, u"R1"_s);
        m_desk->tMsg.setText(u"old"_s);
        if (!before.isEmpty()) m->send(before);
        if (!box.isEmpty())
            m->prompt.expectStart(box).answer(before.contains(u"yyk") ? Answer::No : Answer::Ok);
        type(m_desk->TxtBarCode, barcode);
        QCOMPARE(m_desk->tMsg.text(), message);
        QCOMPARE(m_desk->TxtBarCode.text(), QString());
        QCOMPARE(focus(), place);
    }

    void scanWithoutAReaderDoesNothing()
    {
        m_desk->tMsg.setText(u"old"_s);
        type(m_desk->TxtBarCode, u"B1"_s);
        QCOMPARE(m_desk->tMsg.text(), u"old"_s);
        QCOMPARE(m->value(u"select count(*) from jhsk"_s), u"0"_s);
    }

    void readerCardFillsThePanel()
    {
        type(m_desk->TxtReaderCode, u"R1"_s);
        QCOMPARE(focus(), u"TxtBarCode"_s);
        QCOMPARE(panel(PanelLabel::Name), u"读者R1"_s);
        QCOMPARE(panel(PanelLabel::Free), u"5"_s);
        QCOMPARE(m_desk->Grid1.Rows(), 8);
        type(m_desk->TxtBarCode, u"B1"_s);
        QCOMPARE(panel(PanelLabel::Free), u"4"_s);
        QCOMPARE(m_desk->Grid1.Rows(), 2);
        QCOMPARE(m_desk->Grid1.TextMatrix(1, 1), u"B1"_s);
        QCOMPARE(m_desk->Grid1.TextMatrix(1, 5), u"2026-03-30"_s);
        QCOMPARE(m_desk->Grid1.TextMatrix(0, 0), u"借书控制号"_s);
        QCOMPARE(m_desk->TxtReaderCode.text(), u"R1"_s);
    }

    void unknownReaderEmptiesTheBox()
    {
        m->prompt.expect(u"无效读者号，取消该操作。"_s);
        type(m_desk->TxtReaderCode, u"R9"_s);
        QCOMPARE(m_desk->TxtReaderCode.text(), QString());
        QCOMPARE(focus(), u"TxtReaderCode"_s);
    }

    void blankTurnsThePage_data()
    {
        QTest::addColumn<QString>("where");
        for (const char* name : {"TxtReaderCode", "TxtRetBook", "Grid2"})
            QTest::newRow(name) << QString::fromLatin1(name);
        QTest::newRow("the tabs") << u"SSTab1"_s;
        QTest::newRow("the screen") << QString();
    }

    void blankTurnsThePage()
    {
        QFETCH(QString, where);
        type(m_desk->TxtReaderCode, u"R1"_s);
        const bool fromDischarge = where == u"TxtRetBook" || where == u"Grid2";
        m_desk->SSTab1.setCurrentIndex(fromDischarge ? 1 : 0);
        m_desk->tMsg.setText(u"old"_s);
        QWidget* place = where == u"SSTab1" ? m_desk->SSTab1.tabBar()
            : where.isEmpty()               ? m_desk.get()
                                            : m_desk->findChild<QWidget*>(where);
        QTest::keyClick(place, Qt::Key_Space);
        QCOMPARE(m_desk->SSTab1.currentIndex(), fromDischarge ? 0 : 1);
        QCOMPARE(focus(), fromDischarge ? u"TxtReaderCode"_s : u"TxtRetBook"_s);
        QCOMPARE(m_desk->tMsg.text(), QString());
        for (const TextBox* box : {&m_desk->TxtBarCode, &m_desk->TxtRetBook})
            QCOMPARE(box->text(), QString());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QCOMPARE(m_desk->SSTab1.currentIndex(), fromDischarge ? 1 : 0);
    }

    void pageChangesStartAnew()
    {
        type(m_desk->TxtReaderCode, u"R1"_s);
        type(m_desk->TxtBarCode, u"B1"_s);
        m_desk->SSTab1.setCurrentIndex(1);
        QCOMPARE(m_desk->Grid2.Rows(), 15);
        QCOMPARE(panel(PanelLabel::Name), u"读者R1"_s);
        m_desk->SSTab1.setCurrentIndex(0);
        QCOMPARE(panel(PanelLabel::Name), QString());
        QCOMPARE(m_desk->TxtReaderCode.text(), QString());
        QCOMPARE(m_desk->Grid1.Rows(), 8);
        QCOMPARE(m_desk->Grid1.TextMatrix(1, 1), QString());
    }

    void clickShowsTheBook()
    {
        type(m_desk->TxtReaderCode, u"R1"_s);
        type(m_desk->TxtBarCode, u"B1"_s);
        m->factory.setHook([this](QStringView statement) { m->sent.append(statement.toString()); });
        QTest::mouseClick(m_desk->Grid1.viewport(), Qt::LeftButton, {},
            m_desk->Grid1.visualRect(m_desk->Grid1.model()->index(0, 2)).center());
        QVERIFY(m->sent.filter(u"Select bookname as [书    名]"_s).size() == 1);
    }

    /// Scans that come as fast as a scanner types are served in order; none is lost, none runs into the next.
    void scannerRhythm()
    {
        m->send(u"update dzk set bookcount=1000"_s);
        constexpr int scans = 200;
        for (int scan = 0; scan < scans; ++scan)
            m->copy(u"S%1"_s.arg(scan, 4, 10, QChar(u'0')));
        type(m_desk->TxtReaderCode, u"R1"_s);
        for (int scan = 0; scan < scans; ++scan) {
            const QString code = u"S%1\r"_s.arg(scan, 4, 10, QChar(u'0'));
            for (const QChar key : code)
                for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease})
                    QCoreApplication::postEvent(&m_desk->TxtBarCode,
                        new QKeyEvent(
                            kind, key == u'\r' ? int(Qt::Key_Return) : int(key.unicode()), {}, QString(key)));
        }
        QTRY_COMPARE_WITH_TIMEOUT(
            m->value(u"select count(*) from jhsk where barcode like 'S%'"_s), QString::number(scans), 60'000);
        QCOMPARE(m->value(u"select count(distinct barcode) from jhsk"_s), QString::number(scans));
        QCOMPARE(m->broken(), QString());
    }

    void buttonsOfMissingScreens()
    {
        QVERIFY(!m_desk->cmdTuShuYuYue.isEnabled());
        m_host.exists = {u"frmTushuYuYue"_s};
        TsjhFrm desk(m->session, m_host, m_fines, m_reports);
        desk.cmdTuShuYuYue.click();
        QCOMPARE(m_host.opened, QStringList {u"frmTushuYuYue"_s});
    }

private:
    QString focus() const
    {
        return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
    }
    QString panel(int label) const { return m_desk->Label5[label].text(); }

    std::unique_ptr<TestLibrary> m;
    ReportDouble m_reports;
    NoHost m_host;
    FineDouble m_fines;
    std::unique_ptr<TsjhFrm> m_desk;
};

QTEST_MAIN(TestDeskForm)
#include "test_desk_form.moc"
