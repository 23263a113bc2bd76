#include "statistics/query_form.h"
#include "support/scripted_prompt.h"
#include "support/window_steps.h"

using namespace quilla;

namespace {

class List final : public QueryReceiver {
public:
    void loadData(const QString& condition, const QString& order) override
    {
        loaded.append(condition + u'|' + order);
        ready = !dialog->isVisible() && QGuiApplication::overrideCursor();
    }
    QWidget* dialog = nullptr;
    QStringList loaded;
    bool ready = false; ///< the dialog had gone, and the operator saw an hourglass
};

} // namespace

/// The query dialog under the operator's hands.
class TestQueryForm : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_list = {};
        m = std::make_unique<QueryFrm>(m_prompt, m_list);
        m_list.dialog = m.get();
        m->LoadCombo(u"readercode,name,bookcount,paperdate,term"_s,
            u"读者号,姓名,可借册数,办证日期,有效期限"_s, u"字符,字符,数字,日期,日期"_s);
        appear(*m);
    }

    void cleanup()
    {
        m.reset();
        QCOMPARE(m_prompt.takeComplaints(), QString());
    }

    void operatorsFollowTheType()
    {
        QCOMPARE(m->cSql.currentText(), u"读者号"_s);
        QCOMPARE(entries(m->cFuhao), (QStringList {u"等于"_s, u"不等于"_s, u"包含"_s}));
        m->cFuhao.setCurrentIndex(2);
        m->lSql.setText(u"x"_s);
        m->LFields.setCurrentRow(1);
        QCOMPARE(m->cSql.currentText() + m->cFuhao.currentText() + m->lSql.Text(), u"姓名包含x"_s);
        m->cSql.setCurrentIndex(3);
        QCOMPARE(m->LFields.currentRow(), 1);
        QCOMPARE(m->cFuhao.currentText() + m->lSql.Text(), u"等于____-__-__"_s);
        QCOMPARE(m->cFuhao.count(), 6);
        m->cSql.setCurrentIndex(2);
        QCOMPARE(m->lSql.Text(), QString());
        const QRect line = m->LFields.visualItemRect(m->LFields.item(1));
        QTest::mouseClick(m->LFields.viewport(), Qt::LeftButton, {}, line.center());
        QCOMPARE(m->cSql.currentText(), u"姓名"_s); // also on the line that was current
        QTest::mouseDClick(m->LFields.viewport(), Qt::LeftButton, {}, line.center());
        QVERIFY(m->cSql.hasFocus());
    }

    void conditionByKeys()
    {
        m->cSql.setFocus();
        QTest::keyClick(&m->cSql, Qt::Key_Return);
        QVERIFY(m->cFuhao.hasFocus());
        QTest::keyClick(&m->cFuhao, Qt::Key_Return);
        QVERIFY(m->lSql.hasFocus());
        type(m->lSql, u"O'1"_s);
        QVERIFY(m->lSql.hasFocus() && m->lSql.text().isEmpty());
        QCOMPARE(m->signSql.toPlainText(), u"读者号'等于'O''1"_s);
        m->cSql.setCurrentIndex(2);
        type(m->lSql, u"many"_s);
        QCOMPARE(m->lSql.text(), u"many"_s);
        m->lSql.setText(u"3"_s);
        m->Command3.click();
        m->lSql.setText(u"left behind"_s);
        m->Command1[1].click();
        QCOMPARE(m_list.loaded, QStringList {u"readercode='O''1' And bookcount=3|"_s});
        QVERIFY(m_list.ready && !QGuiApplication::overrideCursor());
    }

    void halfDateByKeys()
    {
        m->cSql.setCurrentIndex(3);
        m->cFuhao.setCurrentText(u"不大于"_s);
        m->lSql.setFocus();
        type(m->lSql, QString());
        type(m->lSql, u"a2003x05"_s);
        QCOMPARE(m->signSql.toPlainText(), u"办证日期'不大于'2003-05-__"_s);
        m->Command1[1].click();
        QCOMPARE(m_list.loaded, QStringList {u"Convert(varchar(10),paperdate,111) <='2003/05/99'|"_s});
    }

    void mergesAndFinishes()
    {
        for (const QString& code : {u""_s, u"1"_s, u"2"_s}) {
            type(m->lSql, code);
            m->Command1[0].click();
            QCOMPARE(m->signSql.toPlainText(), QString());
        }
        QCOMPARE(m->totalSql.count(), 2);
        type(m->lSql, u"3"_s);
        m->Command1[1].click();
        QCOMPARE(m_list.loaded, QStringList {u"(readercode='1') OR (readercode='2') OR (readercode='3')|"_s});
    }

    void sorts()
    {
        m_prompt.expect(u"请选择排序项目，取消该操作。"_s).titled(u"操作提示").icon(Icon::Critical);
        m->Label3[0].click();
        QVERIFY(m->cOrderby.hasFocus());
        m->cOrderby.setCurrentIndex(1);
        m->Label3[1].click();
        QCOMPARE(m->cOrderby.currentText(), QString());
        m->cOrderby.setCurrentIndex(0);
        m->Label3[0].click();
        QCOMPARE(entries(m->cOrderby).join(u','), u"可借册数,办证日期,有效期限"_s);
        QCOMPARE(m->lOrderby.toPlainText(), u"'姓名'降;'读者号'升"_s);
        m->Command1[1].click();
        QCOMPARE(m_list.loaded, QStringList {u"|name Desc,readercode Asc"_s});
    }

    void clears()
    {
        m->cOrderby.setCurrentIndex(1);
        m->Label3[1].click();
        type(m->lSql, u"1"_s);
        m->Command1[0].click();
        m->cSql.setCurrentIndex(4);
        m->cFuhao.setCurrentIndex(2);
        m->lSql.setText(u"2003"_s);
        m->Command2.click();
        QCOMPARE(m->lSql.Text() + m->cFuhao.currentText(), u"____-__-__大于"_s);
        QCOMPARE(m->totalSql.count(), 0);
        QCOMPARE(m->signSql.toPlainText() + m->lOrderby.toPlainText() + m->cOrderby.currentText(), QString());
        QCOMPARE(m->cOrderby.count(), 5);
        m->Command1[1].click();
        QCOMPARE(m_list.loaded, QStringList {u"|"_s});
    }

    /// The readable texts take no keys; closing loads nothing.
    void readableTextsTakeNoKeys()
    {
        type(m->lSql, u"1"_s);
        m->signSql.setFocus();
        const int place = m->signSql.textCursor().position();
        for (const int key : {Qt::Key_X, Qt::Key_End, Qt::Key_Down, Qt::Key_Delete})
            QTest::keyClick(&m->signSql, Qt::Key(key));
        QCOMPARE(m->signSql.textCursor().position(), place);
        QCOMPARE(m->signSql.toPlainText(), u"读者号'等于'1"_s);
        QTest::keyClick(&m->signSql, Qt::Key_Tab);
        QVERIFY(!m->signSql.hasFocus());
        m->Command1[2].click();
        QVERIFY(!m->isVisible() && m_list.loaded.isEmpty());
    }

private:
    QStringList entries(const QComboBox& list) const
    {
        QStringList texts;
        for (int index = 0; index < list.count(); ++index)
            texts.append(list.itemText(index));
        return texts;
    }

    ScriptedPrompt m_prompt;
    List m_list;
    std::unique_ptr<QueryFrm> m;
};

QTEST_MAIN(TestQueryForm)
#include "test_query_form.moc"
