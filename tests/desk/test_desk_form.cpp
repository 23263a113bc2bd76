#include "desk/desk_form.h"
#include "desk/reader_picker_form.h"
#include "support/fine_double.h"
#include "support/screen_test.h"

using namespace quilla;

class TestDeskForm : public ScreenTest {
    Q_OBJECT

    void fill() override
    {
        m->reader(u"R1"_s);
        m->copy(u"B1"_s);
        open();
    }

private Q_SLOTS:
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
            before.contains(u"yyk") ? m->prompt.expectStart(box).answer(Answer::No, Answer::No)
                                    : m->prompt.expectStart(box);
        type(m_desk->TxtBarCode, barcode);
        QCOMPARE(m_desk->tMsg.text(), message);
        QCOMPARE(m_desk->TxtBarCode.text(), QString());
        QCOMPARE(focusName(), place);
    }

    /// Card and loan fill the page; the return page keeps the reader, who comes back to none of it.
    void pagesFillAndStartAnew()
    {
        QCOMPARE(m_desk->windowTitle(), u"图书借还-操作员：王馆员"_s);
        m_desk->tMsg.setText(u"old"_s);
        type(m_desk->TxtBarCode, u"B1"_s); // without a reader nothing happens
        QCOMPARE(m_desk->tMsg.text(), u"old"_s);
        type(m_desk->TxtReaderCode, u"R1"_s);
        QCOMPARE(focusName(), u"TxtBarCode"_s);
        QCOMPARE(m_desk->Grid1.Rows(), 8);
        type(m_desk->TxtBarCode, u"B1"_s);
        QCOMPARE(panel(PanelLabel::Free), u"4"_s);
        QCOMPARE(m_desk->Grid1.Rows(), 2);
        QCOMPARE(m_desk->Grid1.TextMatrix(1, 1) + m_desk->Grid1.TextMatrix(1, 5), u"B12026-03-30"_s);
        m->failAt({}); // a click on the line asks for the book
        clickLine(m_desk->Grid1, 1, Qt::LeftButton, 2);
        m_desk->SSTab1.setCurrentIndex(2);
        m_desk->Query.Grid3.setTextMatrix(1, LoanQueryPage::BarcodeColumn, u"B1"_s);
        clickLine(m_desk->Query.Grid3, 1);
        QCOMPARE(m->sent.filter(u"Select bookname as [书    名]"_s).filter(u"'B1'"_s).size(), 2);
        m_desk->SSTab1.setCurrentIndex(1);
        QCOMPARE(m_desk->Grid2.Rows(), 15);
        QCOMPARE(panel(PanelLabel::Name), u"读者R1"_s);
        m_desk->SSTab1.setCurrentIndex(0);
        QCOMPARE(panel(PanelLabel::Name) + m_desk->TxtReaderCode.text(), QString());
        QCOMPARE(m_desk->Grid1.Rows(), 8);
    }

    /// Each scan leaves one line, what failed with its cause; the list outlives the desk.
    void scansStandInTheList()
    {
        m->copy(u"B2"_s);
        type(m_desk->TxtReaderCode, u"R1"_s);
        type(m_desk->TxtBarCode, u"B1"_s);
        QVERIFY(m_desk->tMsg.font().bold());
        m->prompt.expectStart(u"书库没有此书的记录"_s);
        type(m_desk->TxtBarCode, u"B9"_s);
        type(m_desk->TxtBarCode, u"B2"_s);
        QTest::keyClick(&m_desk->TxtBarCode, Qt::Key_B);
        QVERIFY(!m_desk->tMsg.font().bold()); // 借书成功 is about a scan that is over
        QCOMPARE(m_desk->tMsg.text(), u"借书成功"_s);
        QTest::keyClick(&m_desk->TxtBarCode, Qt::Key_F3);
        QCOMPARE(focusName(), u"TxtRetBook"_s);
        m->failAt(u"insert into JHSLSK"_s);
        type(m_desk->TxtRetBook, u"B1"_s);
        m->failAt({});
        QVERIFY(m_desk->cmdCause.isVisible());
        m->prompt.expectStart(u"09:30:15 还 B1 失败 没有写入数据库\n"_s);
        QTest::keyClick(&m_desk->TxtRetBook, Qt::Key_F8);
        open();
        QStringList lines;
        for (int row = 0; row < m_desk->Scans.log().rowCount(); ++row)
            lines.append(lineOf(m_desk->Scans.log().entry(row)).sliced(9, 7));
        QCOMPARE(lines.join(u','), u"还 B1 失败,借 B2 成功,借 B9 拒绝,借 B1 成功"_s);
        QTest::keyClick(m_desk, Qt::Key_F6);
        QTest::keyClick(&m_desk->Scans.List, Qt::Key_B);
        QTest::keyClick(&m_desk->Scans.TxtFilter, Qt::Key_9);
        QCOMPARE(m_desk->Scans.List.model()->rowCount(), 1);
        QTest::keyClick(&m_desk->Scans.TxtFilter, Qt::Key_Return);
        QTest::keyClick(&m_desk->Scans.List, Qt::Key_F3);
        QCOMPARE(m_desk->TxtRetBook.selectedText(), u"B9"_s);
        type(m_desk->TxtRetBook, u"B2"_s);
        QCOMPARE(m_desk->Scans.List.model()->rowCount(), 5); // the filter does not hide what comes after it
    }

    /// A refusal by a check that could not read is a failure, and a renewal that fails half-way says so.
    void failuresStandAsSuch()
    {
        const auto newest = [&] { return lineOf(m_desk->Scans.log().entry(0)).sliced(9); };
        type(m_desk->TxtReaderCode, u"R1"_s);
        m->failAt(u"select readstatus,term"_s);
        m->prompt.expectStart(u"没有找到该读者的信息！"_s);
        type(m_desk->TxtBarCode, u"B1"_s);
        QCOMPARE(newest(), u"借 B1 失败 没有写入数据库，按 F8 看原因"_s);
        m->failAt({});
        type(m_desk->TxtReaderCode, u"R1"_s);
        type(m_desk->TxtBarCode, u"B1"_s);
        m_desk->SSTab1.setCurrentIndex(1);
        m_desk->Check1.setChecked(true);
        m->send(u"update dzk set recount=1,reday=10"_s);
        m->failAt(u"insert into JHSK("_s);
        type(m_desk->TxtRetBook, u"B1"_s);
        QCOMPARE(newest(), u"续 B1 失败 没有重新借出（书已还），按 F8 看原因"_s);
    }

    /// What a small screen leaves when the desktop doubles everything.
    void focusIsInSightInTheSmallestWindow()
    {
        const QSize small(640, 190);
        m_desk->resize(small);
        type(m_desk->TxtReaderCode, u"R1"_s);
        for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_F3, Qt::Key_F6, Qt::Key_F4, Qt::Key_F2}) {
            QTest::keyClick(QApplication::focusWidget(), key);
            QWidget* box = QApplication::focusWidget();
            QTRY_COMPARE(box->visibleRegion().boundingRect(), box->rect());
        }
        QCOMPARE(m_desk->size(), small);
        QCOMPARE(m_desk->tMsg.visibleRegion().boundingRect(), m_desk->tMsg.rect());
    }

    /// The box under a message still holds the barcode that it is about; after a charge the loan is in sight.
    void barcodeStaysUntilItsScanHasEnded()
    {
        QString shown;
        m->editor.edit = [&] { shown = m_desk->TxtBarCode.text(); };
        type(m_desk->TxtReaderCode, u"R1"_s);
        m->settings.values.clear();
        m->prompt.expectStart(u"无法取得正确连接数据库的信息!"_s).answer(Answer::Yes);
        for (int panel = 0; panel < 2; ++panel)
            m->prompt.expectStart(u"无法取得正确连接数据库的信息!"_s).answer(Answer::No);
        type(m_desk->TxtBarCode, u"B1"_s);
        QCOMPARE(shown + m_desk->TxtBarCode.text(), u"B1"_s);
    }

    void newLoanIsInSight()
    {
        m->send(u"update dzk set bookcount=100"_s);
        for (int loan = 0; loan < 60; ++loan)
            m->loan(u"L%1"_s.arg(loan), u"R1"_s, u"2026-04-01"_s);
        type(m_desk->TxtReaderCode, u"R1"_s);
        type(m_desk->TxtBarCode, u"B1"_s);
        QCOMPARE(m_desk->Grid1.current(1), u"B1"_s);
        QCOMPARE(m_desk->Grid1.markOf(m_desk->Grid1.Row()), -1);
        m->send(u"update jhsk set yhdate='2026-03-09' where barcode='B1'"_s);
        m_desk->TxtReaderCode.setFocus();
        type(m_desk->TxtReaderCode, u"R1"_s);
        m_desk->Grid1.setRow(m_desk->Grid1.cells().findRow(u"B1"_s, 1));
        QCOMPARE(m_desk->Grid1.markOf(m_desk->Grid1.Row()), 5); // overdue now
        QVERIFY(m_desk->Grid1.viewport()->rect().intersects(
            m_desk->Grid1.visualRect(m_desk->Grid1.currentIndex())));
    }

    /// What has ended empties box and tick and lists the returns of today; all else leaves them as they are.
    void everyReturnLeavesTheBox_data()
    {
        const QString overdue
            = u"insert into jhsk(readercode,barcode,yhdate) values('R1','B2','2026-03-01')"_s;
        cases<QString, bool, QString, QString, QString, bool>({
            {"in time", {{}, false, {}, {}, u"还书成功"_s, true}},
            {"no loan", {u"delete from jhsk"_s, false, {}, u"查找不到此书的借书记录"_s, {}, false}},
            {"rolled back", {{}, false, u"insert into JHSLSK"_s, {}, u"还书失败"_s, false}},
            {"renewed at full quota", {u"update dzk set bookcount=1"_s, true, {}, {}, u"续借成功"_s, true}},
            {"late, settled and not lent anew",
                {u"update jhsk set yhdate='2026-03-10'"_s, true, {}, {}, u"还书成功"_s, true}},
            {"renewal rolled back", {{}, true, u"insert into JHSK("_s, {}, u"续借失败"_s, true}},
            {"returned, but not lent anew", {overdue, true, {}, u"该读者存在1册过期书刊。"_s, {}, false}},
        });
    }

    void everyReturnLeavesTheBox()
    {
        const auto [before, renews, fails, box, message, ends]
            = given<QString, bool, QString, QString, QString, bool>();
        m->send(u"update dzk set recount=2,reday=30"_s);
        m->loan(u"B1"_s, u"R1"_s, u"2026-03-20"_s);
        const auto returned = [this](const QString& day) {
            m->insert(
                u"jhslsk"_s, {{u"readercode"_s, u"R1"_s}, {u"barcode"_s, u"B1"_s}, {u"backdate"_s, day}});
        };
        returned(u"2026-03-09"_s);
        m_fines.closes = [returned](const QString&) { return returned(u"2026-03-10"_s), true; };
        m_desk->SSTab1.setCurrentIndex(1);
        if (!before.isEmpty()) m->send(before);
        if (!box.isEmpty()) m->prompt.expectStart(box);
        m->failAt(fails);
        m_desk->Check1.setFocus();
        renews ? m_desk->Check1.click() : m_desk->TxtRetBook.setFocus();
        type(*QApplication::focusWidget(), u"B1"_s);
        QCOMPARE(m_desk->tMsg.text(), message);
        QCOMPARE(m_desk->TxtRetBook.text(), ends ? QString() : u"B1"_s);
        QCOMPARE(m_desk->Check1.isChecked(), renews && !ends);
        QCOMPARE(m_desk->Grid2.Rows(), ends ? 2 : 15);
        QCOMPARE(focusName(), u"TxtRetBook"_s);
    }

    /// The tick is for one scan; a refused one leaves the barcode selected.
    void renewalsRunOut()
    {
        m->send(u"update dzk set recount=1,reday=10"_s);
        m->loan(u"B1"_s, u"R1"_s, u"2026-03-20"_s);
        m_desk->SSTab1.setCurrentIndex(1);
        m->prompt.expect(u"此书刊已经续借1次，不能再续借。"_s);
        for (const QString& selected : {QString(), u"B1"_s}) {
            m_desk->Check1.click();
            type(m_desk->TxtRetBook, u"B1"_s);
            QCOMPARE(m_desk->tMsg.text(), u"续借成功"_s);
            QCOMPARE(m_desk->TxtRetBook.selectedText(), selected);
            QVERIFY(!m_desk->Check1.isChecked());
        }
    }

    void blankTurnsThePage_data()
    {
        cases<QString, int>({
            {"a box", {u"TxtRetBook"_s, 1}},
            {"a list", {u"Grid2"_s, 1}},
            {"the tabs", {u"qt_tabwidget_tabbar"_s, 0}},
            {"the screen", {QString(), 0}},
        });
    }

    void blankTurnsThePage()
    {
        const auto [where, page] = given<QString, int>();
        m_desk->SSTab1.setCurrentIndex(page);
        m_desk->tMsg.setText(u"old"_s);
        QWidget* place = where.isEmpty() ? m_desk : m_desk->findChild<QWidget*>(where);
        QTest::keyClick(place, Qt::Key_Space);
        QCOMPARE(m_desk->SSTab1.currentIndex(), 1 - page);
        QCOMPARE(focusName(), page == 1 ? u"TxtReaderCode"_s : u"TxtRetBook"_s);
        QCOMPARE(m_desk->tMsg.text(), QString());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QCOMPARE(m_desk->SSTab1.currentIndex(), page);
        QCOMPARE(m_desk->TxtReaderCode.text() + m_desk->TxtRetBook.text(), QString());
    }

    /// Scans that come as fast as a scanner types are served in order; none is lost, none runs into the next.
    void scannerRhythm()
    {
        constexpr int scans = 200;
        m->send(u"update dzk set bookcount=1000"_s);
        type(m_desk->TxtReaderCode, u"R1"_s);
        for (int scan = 0; scan < scans; ++scan) {
            const QString barcode = u"S%1"_s.arg(scan, 4, 10, QChar(u'0'));
            m->copy(barcode);
            for (const QChar key : barcode + u'\r') {
                const int code = key == u'\r' ? int(Qt::Key_Return) : int(key.unicode());
                for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease})
                    QCoreApplication::postEvent(
                        &m_desk->TxtBarCode, new QKeyEvent(kind, code, {}, QString(key)));
            }
        }
        QTRY_COMPARE_WITH_TIMEOUT(
            m->value(u"select count(distinct barcode) from jhsk"_s), QString::number(scans), 60'000);
        QCOMPARE(m->broken(), QString());
    }

    /// Left, and picked over the discharge page.
    void readerWithoutACard()
    {
        m->send(u"update dzk set wuzheng=1"_s);
        m->reader(u"R2"_s);
        for (const int button : {1, 0}) {
            type(m_desk->TxtReaderCode, u"R2"_s);
            m_desk->SSTab1.setCurrentIndex(1 - button);
            whenShown<ReaderPickerFrm>([&](ReaderPickerFrm& picker) { picker.Command2[button].click(); });
            m_desk->cmdWuZhengJieShu.click();
            QCOMPARE(m_desk->TxtReaderCode.text() + panel(PanelLabel::Code), button ? u""_s : u"R1R1"_s);
            QCOMPARE(m_desk->focusWidget(), button ? &m_desk->TxtReaderCode : &m_desk->TxtBarCode);
        }
    }

    void buttonsOfMissingScreens()
    {
        QVERIFY(!m_desk->cmdTuShuYuYue.isEnabled());
        m_work->host.exists = {u"frmTushuYuYue"_s};
        TsjhFrm desk(m_work->place, m_fines);
        desk.cmdTuShuYuYue.click();
        QCOMPARE(m_work->host.opened, QStringList {u"frmTushuYuYue"_s});
    }

private:
    void open() { m_desk = &opened<TsjhFrm>(m_work->place, m_fines); }
    QString panel(int label) const { return m_desk->Label5[label].text(); }

    FineDouble m_fines;
    TsjhFrm* m_desk = nullptr;
};

QTEST_MAIN(TestDeskForm)
#include "test_desk_form.moc"
