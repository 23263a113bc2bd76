#include "catalogue/classification_form.h"
#include "catalogue/find_book_form.h"
#include "catalogue/good_book_form.h"
#include "statistics/query_form.h"
#include "support/screen_test.h"
#include "support/write_file.h"

using namespace quilla;

/// The screens by their keys.
class TestCatalogueForms : public ScreenTest {
    Q_OBJECT

    void fill() override
    {
        for (const QString& barcode : {u"B1"_s, u"B2"_s, u"B3"_s})
            m->copy(barcode);
        m->copy(u"B1b"_s, {{u"zskid"_s, u"1"_s}});
        m->send(u"delete from zsk where zskid=4"_s); // B1b is of the first title
        m->send(u"update sck set bookstatus='丢失' where barcode='B2'"_s);
    }

private Q_SLOTS:
    void copiesFollowTheCurrentTitle()
    {
        auto& form = opened<frmFindBook>(m->session);
        m->prompt.expect(u"请输入检索条件！"_s).titled(OperationTitle).icon(Icon::Information);
        QTest::keyClick(&form.Text1, Qt::Key_Return);
        QCOMPARE(focusName(), u"Text1"_s);
        enter(form.Text1, u"书名"_s);
        QCOMPARE(form.labZhongShu.text() + form.Text1.selectedText(), u"3书名"_s);
        QVERIFY(form.Grid1.FormatString().startsWith(u'^'));
        QCOMPARE(columnOf(form.Grid2, CopyBarcode), u"B1 B1b"_s);
        form.Grid1.setFocus();
        QTest::keyClick(&form.Grid1, Qt::Key_Down);
        QCOMPARE(columnOf(form.Grid2, CopyBarcode), QString()); // lost
        QTest::keyClick(&form.Grid1, Qt::Key_Down);
        QCOMPARE(columnOf(form.Grid2, CopyBarcode), u"B3"_s);
        QTest::keyClick(&form.Grid1, Qt::Key_Return);
        QCOMPARE(focusName(), u"Grid2"_s);

        m->failAt(u"from zsk"_s); // the last result stays
        m->prompt.expectStart(u"语句失败："_s);
        form.cmdQuery.click();
        QCOMPARE(form.labZhongShu.text() + columnOf(form.Grid2, CopyBarcode), u"3B3"_s);
        m->failAt({});
        form.Text1.setText(u"无此书"_s);
        form.cmdQuery.click();
        QCOMPARE(form.labZhongShu.text() + columnOf(form.Grid2, CopyBarcode) + form.Grid1.FormatString()[0],
            u"0控"_s);
        QCOMPARE(form.Grid1.Rows(), 2);

        inDialog<QueryFrm>([](QueryFrm& query) {
            QCOMPARE(query.windowTitle(), u"图书资料查询"_s);
            query.Command1[1].click();
        });
        form.cmdQueryAdvance.click();
        QCOMPARE(form.labZhongShu.text(), u"3"_s);
    }

    void recommendedBooks()
    {
        auto& form = opened<frmGoodBook>(m_work->place);
        form.cmdAdd[0].click(); // nothing found yet
        enter(form.Text1, u"书名"_s);
        form.Grid1.setFocus();
        QTest::keyClick(&form.Grid1, Qt::Key_End, Qt::ControlModifier);
        QTest::keyClick(&form.Grid1, Qt::Key_Up, Qt::ShiftModifier);
        form.cmdAdd[1].click();
        QCOMPARE(form.Grid2.TextMatrix(1, 2) + form.Grid2.TextMatrix(2, 2), u"书名2书名3"_s);
        m->prompt.expectStart(u"选择的图书中的某些图书已经加入到好书列表！"_s);
        form.cmdAdd[0].click();
        form.Text1.setText(u"无此书"_s);
        form.cmdQuery.click();
        QCOMPARE(form.labZhongShu.text() + form.labHaoShu.text(), u"02"_s);
        form.Grid2.setRow(2);
        m->prompt.expect(u"确实要清除当前选定的图书吗？"_s).answer(Answer::Yes);
        form.cmdClick[1].click();
        QCOMPARE(form.labHaoShu.text() + form.Grid2.current(2), u"1书名2"_s);
        m->prompt.expectStart(u"确实要确实要打印"_s).answer(Answer::Yes);
        m->prompt.expectStart(u"请将打印机设置为"_s);
        form.cmdClick[0].click();
        QCOMPARE(m_work->reports.shown, QStringList {u"printGoodBook"_s});
        for (const Answer answer : {Answer::No, Answer::Yes}) {
            m->prompt.expect(u"确实要清除好书列表吗？"_s).titled(OperationTitle).answer(answer);
            form.cmdClick[2].click();
        }
        QCOMPARE(form.labHaoShu.text() + form.Grid2.TextMatrix(1, 0), u"0"_s);
        enter(form.Text1, u"书名"_s);
        form.cmdAdd[0].click(); // whatever line is current
        QCOMPARE(columnOf(form.Grid2, 0), u"1 2 3"_s);
    }

    void secondLevelFollowsTheClass()
    {
        const QString path = m->folder.filePath(u"fenlei.Qjs"_s);
        m->prompt.expect(u"配置文件【%1】丢失。"_s.arg(path));
        const fenleihelp empty(m->session, m->folder.path());
        QCOMPARE(empty.Grid1.Rows() + empty.Grid2.Rows(), 4);

        writeFile(path, "[大类表]\n A 甲\n\n[二级类目表]\nA1 一\nA2 二\n");
        fenleihelp form(m->session, m->folder.path());
        QCOMPARE(form.Grid1.TextMatrix(2, 0) + form.Grid1.TextMatrix(1, 1), u"2 A 甲"_s);
        QCOMPARE(form.Grid2.TextMatrix(2, 0) + form.Grid2.TextMatrix(2, 1), u"2A2 二"_s);
        form.Grid1.setRow(2);
        QCOMPARE(form.Grid2.Rows(), 2);
        QCOMPARE(form.Grid2.TextMatrix(1, 1), QString());
    }
};

QTEST_MAIN(TestCatalogueForms)
#include "test_catalogue_forms.moc"
