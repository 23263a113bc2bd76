#include "readers/batch_unit_form.h"
#include "readers/reader_card_form.h"
#include "readers/reader_register_form.h"
#include "statistics/query_form.h"
#include "support/screen_test.h"

#include <QHeaderView>

using namespace quilla;

namespace {

/// Does a step with the first events that are served once a window of that name shows.
class OnShow final : public QObject {
public:
    OnShow(QString name, std::function<void()> step)
        : m_name(std::move(name))
        , m_step(std::move(step))
    {
        qApp->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show && watched->objectName() == m_name)
            QMetaObject::invokeMethod(qApp, m_step, Qt::QueuedConnection);
        return false;
    }

private:
    QString m_name;
    std::function<void()> m_step;
};

} // namespace

/// The register of readers under the operator's hands.
class TestReaderRegisterForm : public ScreenTest {
    Q_OBJECT

    void fill() override
    {
        for (const QString& code : {u"R1"_s, u"R2"_s, u"R3"_s})
            m->reader(code, {{u"name"_s, u"丙乙甲"_s.mid(code[1].digitValue() - 1, 1)}});
        m->loan(u"B1"_s, u"R1"_s, u"2026-04-01"_s);
        m_list = &opened<DzglFrm>(m_work->place);
    }

private Q_SLOTS:
    void waitsForASearch()
    {
        QCOMPARE(m_list->Grid1.Rows(), 20);
        QCOMPARE(m_list->iRowCount.text() + codes(), u"0"_s);
        QVERIFY(m_list->Grid1.hasFocus());
        bool offered = false;
        m_list->Menu.setChooser([&](const QStringList&) { return offered = true, 1; });
        for (const int command : {1, 2, 4, 5})
            m_list->CmdDzgl[command].click();
        rightClick();
        QVERIFY(!offered);
        for (QPushButton* output : {&m_list->cmdToExcel, &m_list->cmdPrint}) {
            m->prompt.expect(u"没有可以打印的信息！"_s);
            output->click();
        }
    }

    void searchesByKeys()
    {
        inDialog<QueryFrm>([](QueryFrm& query) {
            query.cFuhao.setCurrentIndex(1);
            type(query.lSql, u"R2"_s);
            query.cOrderby.setCurrentIndex(0);
            query.Label3[1].click();
            query.Command1[1].click();
        });
        m_list->CmdDzgl[3].setFocus();
        QTest::keyClick(&m_list->Grid1, Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(m_list->focusWidget(), &m_list->Grid1);
        QCOMPARE(m_list->iRowCount.text() + u'|' + codes(), u"2|R3 R1"_s);
        m_list->loadData(u"name='nobody'"_s, u"readercode Desc"_s);
        QCOMPARE(m_list->iRowCount.text() + codes(), u"0"_s);
        m_list->RefreshReaderList(); // an empty result forgets the condition alone
        QCOMPARE(codes(), u"R3 R2 R1"_s);
    }

    void editorByKeys()
    {
        m_list->RefreshReaderList();
        m_list->Grid1.setRow(2);
        inDialog<DzaddFrm>([this](DzaddFrm& editor) {
            QCOMPARE(editor.windowTitle() + editor.Text1[0].text(), u"修改读者信息R2"_s);
            m->send(u"update dzk set name='丁' where readercode='R2'"_s);
        });
        QTest::keyClick(&m_list->Grid1, Qt::Key_Return);
        QCOMPARE(m_list->Grid1.current(ReaderCode) + m_list->Grid1.current(ReaderName), u"R2丁"_s);
        inDialog<DzaddFrm>([](DzaddFrm& editor) {
            QCOMPARE(editor.windowTitle() + editor.Text1[0].text(), u"新增读者信息"_s);
        });
        QTest::keyClick(&m_list->Grid1, Qt::Key_Insert);
        inDialog<DzaddFrm>([](DzaddFrm& editor) {
            editor.cmdUpdateZheng.click();
            QCOMPARE(focusName() + editor.Text1[0].selectedText(), u"Text1(0)R2"_s);
            editor.Text1[0].setText(u"R9 "_s);
            for (const int box : {CardBox::Issued, CardBox::Term})
                editor.Text1[box].setText(u"2027-01-01"_s);
            editor.Combo1[CardList::Unit].setEditText(u"一班"_s);
            editor.CmdSave.click();
        });
        m_list->CmdDzgl[1].click();
        QCOMPARE(m_list->Grid1.current(ReaderCode), u"R9"_s);
    }

    void lostUntilTheNextRefresh()
    {
        m_list->RefreshReaderList();
        m_list->Grid1.setRow(2);
        for (const Answer answer : {Answer::No, Answer::Yes}) {
            m->prompt.expect(u"你确定要挂失读者证: R2 吗？(Y/N)"_s)
                .titled(OperationTitle)
                .answer(answer, Answer::No);
            m_list->CmdDzgl[4].click();
            QCOMPARE(m_list->Grid1.current(ReaderState), answer == Answer::No ? u"有效"_s : u"挂失"_s);
        }
        m_list->RefreshReaderList();
        QCOMPARE(m_list->Grid1.TextMatrix(2, ReaderState), u"有效"_s);
        QCOMPARE(m->value(u"select readstatus from dzk where readercode='R2'"_s), u"挂失"_s);
    }

    void deletesByKeys()
    {
        m_list->RefreshReaderList();
        m_list->CmdDzgl[2].setFocus();
        m->prompt.expectStart(u"此读者尚有借书未还"_s);
        m_list->CmdDzgl[2].click();
        QVERIFY(m_list->Grid1.hasFocus());
        m_list->Grid1.setRow(2);
        m->prompt.expect(u"你确定要删除读者:R2 吗？(Y/N)"_s).answer(Answer::Yes, Answer::No);
        QTest::keyClick(&m_list->Grid1, Qt::Key_Delete);
        QCOMPARE(codes() + u'|' + m_list->Grid1.current(ReaderCode), u"R1 R3|R3"_s);
        m->prompt.expectStart(u"是否确定删除当前所有读者资料？"_s).answer(Answer::Yes);
        m->prompt.expectStart(u"部分读者存在未还图书"_s);
        m_list->CmdDzgl[5].click();
        QCOMPARE(codes() + m_list->iRowCount.text(), u"R11"_s);
    }

    void anotherUnitForAll()
    {
        m_list->loadData(u"readercode<'R3'"_s, u"readercode"_s);
        m_list->Menu.setChooser([&](const QStringList&) { return 1; });
        for (const bool confirmed : {false, true}) {
            if (confirmed) m->prompt.expect(u"读者单位修改完毕！"_s);
            inDialog<updateAll>([confirmed](updateAll& dialog) {
                dialog.Text1.setText(u" "_s);
                dialog.Command1.setFocus();
                dialog.Command1.click();
                QVERIFY(dialog.isVisible() && dialog.Text1.hasFocus());
                dialog.Text1.setText(u"二班"_s);
                if (confirmed) dialog.Command1.click(); // else the window is closed
            });
            rightClick();
            QCOMPARE(m_list->Grid1.TextMatrix(1, ReaderUnit), confirmed ? u"二班"_s : QString());
        }
        QCOMPARE(m->rows(u"select readercode from dzk where readunit='二班'"_s).size(), 2);
    }

    /// The screen goes while its walk stands before the operator; the walk ends there.
    void closedDuringAChangeOfUnits()
    {
        for (int i = 0; i < LongWalk; ++i)
            m->reader(u"S%1"_s.arg(i));
        m_list->loadData(u"readercode Like 'S%'"_s, {});
        m_list->Menu.setChooser([&](const QStringList&) { return 1; });
        inDialog<updateAll>([](updateAll& dialog) {
            dialog.Text1.setText(u"二班"_s);
            dialog.Command1.click();
        });
        const OnShow closing(u"WorkingFrm"_s, [this] { m_screens.clear(); });
        m->prompt.expect(u"已取消，只修改了前 0 位读者的单位。"_s);
        rightClick();
        QVERIFY(m_screens.empty());
    }

    void sortsByACaptionAndPutsOut()
    {
        m_list->RefreshReaderList();
        m_list->Grid1.setRow(3);
        clickCaption(ReaderName);
        m_list->RefreshReaderList();
        QCOMPARE(codes() + m_list->Grid1.current(ReaderCode), u"R1 R3 R2R3"_s);
        clickCaption(ReaderName);
        QCOMPARE(codes(), u"R2 R3 R1"_s);
        m_list->loadData(u"readercode<>'R2'"_s, u"readercode Desc"_s);
        QCOMPARE(codes(), u"R3 R1"_s);
        m->failAt({});
        m_list->cmdToExcel.click();
        QVERIFY(m_work->sheets.shown.join(u' ').contains(u"读者资料一览表"_s));
        m->prompt.expectStart(u"请将打印机设置为"_s);
        m_list->cmdPrint.click();
        QCOMPARE(
            m->sent.filter(u"term from dzk where readercode<>'R2' order by readercode Desc"_s).size(), 2);
    }

private:
    QString codes() const { return trimBlanks(columnOf(m_list->Grid1, ReaderCode)); }
    void rightClick() { clickLine(m_list->Grid1, 1, Qt::RightButton); }
    void clickCaption(int col)
    {
        const QHeaderView* captions = m_list->Grid1.horizontalHeader();
        QTest::mouseClick(captions->viewport(), Qt::LeftButton, {},
            {captions->sectionViewportPosition(col) + 20, captions->height() / 2});
    }

    DzglFrm* m_list = nullptr;
};

QTEST_MAIN(TestReaderRegisterForm)
#include "test_reader_register_form.moc"
