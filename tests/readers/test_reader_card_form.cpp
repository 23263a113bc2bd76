#include "platform/ui/error_form.h"
#include "readers/reader_card_form.h"
#include "support/test_library.h"
#include "support/window_steps.h"

#include <QApplication>
#include <QLayout>

using namespace quilla;

/// The card editor by keys and mouse.
class TestReaderCardForm : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m = std::make_unique<TestLibrary>();
        m_refreshed = 0;
        m->insert(u"dzlx"_s, {{u"readerclass"_s, u"教师"_s}});
        m->insert(u"dzlx"_s, {{u"readerclass"_s, u"学生"_s}});
        m->insert(u"dzlx"_s, {{u"readerclass"_s, u"学生"_s}});
        m->insert(u"jycs"_s,
            {{u"readerclass"_s, u"学生"_s}, {u"daycount"_s, u"20"_s}, {u"bookcount"_s, u"3"_s},
                {u"ifcanre"_s, u"1"_s}});
        m->insert(u"dzdw"_s, {{u"readunit"_s, u"一班"_s}});
    }

    void cleanup()
    {
        m_form.reset();
        QCOMPARE(m->prompt.takeComplaints(), QString());
    }

    void newCardsOneAfterTheOther()
    {
        DzaddFrm& form = opened(u"a"_s, {});
        QCOMPARE(form.windowTitle() + focus(), u"新增读者信息Text1(0)"_s);
        QCOMPARE(form.Text1[CardBox::Issued].text() + u' ' + form.Text1[CardBox::Term].text(),
            u"2026-03-10 2027-3-10"_s);
        QCOMPARE(form.Combo1[0].currentText() + form.Combo2.currentText(), u"身份证"_s);
        QCOMPARE(form.Combo1[CardList::Type].count(), 2);
        QVERIFY(form.cmdUpdateZheng.isHidden());
        fill(form, u"R1"_s);
        form.CmdSave.click();
        QCOMPARE(m_refreshed, 1);
        QVERIFY(form.isVisible());
        QCOMPARE(focus() + form.Text1[0].text() + form.Text1[1].text(), u"Text1(0)"_s);
        QCOMPARE(
            form.Text1[CardBox::LoanDays].text() + form.Combo1[CardList::Unit].currentText(), u"20一班"_s);
        fill(form, u"r1 "_s);
        m->prompt.expect(u"读者号重复"_s);
        form.CmdSave.click();
        QCOMPARE(m_refreshed, 1);
        QCOMPARE(m->value(u"select readercode,readstatus,term,bookcount,ifcanre,yordercshu from dzk"_s),
            u"R1|有效|2027-03-10|3|True|0"_s);
    }

    void cardChangedAndClosed()
    {
        m->reader(u"R1"_s, {{u"term"_s, u"2026-03-09"_s}, {u"paperdate"_s, u"null"_s}});
        DzaddFrm& form = opened(u"E"_s, u"R1"_s);
        QCOMPARE(form.windowTitle() + focus(), u"修改读者信息Text1(1)"_s);
        QVERIFY(!form.Text1[0].isEnabled() && !form.Combo1[CardList::Type].isEnabled());
        QVERIFY(form.Text1[CardBox::OnLoan].isReadOnly());
        QCOMPARE(
            form.Text1[CardBox::Type].text() + form.Text1[CardBox::Issued].text() + form.Combo2.currentText(),
            u"学生其它"_s);
        form.Combo1[CardList::Unit].setEditText(u"新班"_s); // no unit of the list
        m->prompt.expectStart(u"请正确输入登记日期"_s);
        form.CmdSave.click();
        QCOMPARE(focus(), u"Text1(4)"_s);
        QTest::keyClick(&form.Text1[CardBox::Issued], Qt::Key_Down);
        form.CmdSave.click();
        QVERIFY(!form.isVisible());
        QCOMPARE(form.result(), int(QDialog::Accepted));
        QCOMPARE(m_refreshed, 0);
        QCOMPARE(m->value(u"select readunit,readstatus,paperdate from dzk"_s), u"新班|超期|2026-03-10"_s);
    }

    /// Nor what could not be read, lest it be written over; and no half card goes by Esc.
    void otherModesOnlyShow()
    {
        m->reader(u"R1"_s);
        QVERIFY(!opened(u"X"_s, u"R1"_s).CmdSave.isEnabled());
        QVERIFY(!opened(u"E"_s, u"R2"_s).CmdSave.isEnabled());
        m->failAt(u"from dzkx"_s);
        QVERIFY(!opened(u"E"_s, u"R1"_s).CmdSave.isEnabled());
        QTest::keyClick(m_form.get(), Qt::Key_Escape);
        QVERIFY(m_form->isVisible());
        m_form->CmdQuit.click();
        QVERIFY(!m_form->isVisible());
    }

    void choosingAndTypingAType()
    {
        DzaddFrm& form = opened(u"A"_s, {});
        TextBox& days = form.Text1[CardBox::LoanDays];
        QComboBox& types = form.Combo1[CardList::Type];
        types.setFocus();
        types.lineEdit()->insert(u"学生"_s);
        QTest::keyClick(&types, Qt::Key_Return);
        QCOMPARE(focus() + days.text(), u"Combo1(2)"_s); // typed to the end, not chosen
        days.setText(u"99"_s);
        types.clearEditText();
        fill(form, u"R1"_s);
        QCOMPARE(days.text(), u"20"_s);
        QCOMPARE(types.count(), 2);
        m->send(u"delete from dzdw"_s);
        QComboBox& units = opened(u"A"_s, {}).Combo1[CardList::Unit];
        m->insert(u"dzdw"_s, {{u"readunit"_s, QString(100, u'长')}});
        units.setFocus();
        QCOMPARE(units.itemText(0) + units.currentText(), QString(100, u'长'));
        QVERIFY(m_form->layout()->totalMinimumSize().width() < 900);
    }

    void newCodeByButton()
    {
        m->reader(u"R1"_s, {{u"readunit"_s, u"一班"_s}, {u"paperdate"_s, u"2026-01-01"_s}});
        DzaddFrm& form = opened(u"E"_s, u"r1"_s);
        form.cmdUpdateZheng.click();
        QVERIFY(!form.cmdUpdateZheng.isEnabled());
        QCOMPARE(focus() + form.Text1[0].selectedText(), u"Text1(0)R1"_s);
        QTest::keyClicks(&form.Text1[0], u"N9"_s);
        form.CmdSave.click();
        QCOMPARE(m->value(u"select readercode from dzk"_s), u"N9"_s);
    }

    void keysInBoxes()
    {
        DzaddFrm& form = opened(u"A"_s, {});
        QStringList way;
        for (QString now = focus(); now != u"cmdXianShi" && way.size() < 30; now = focus()) {
            way.append(now);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        }
        QCOMPARE(way.join(u' '),
            u"Text1(0) Text1(1) Combo1(0) Combo1(1) Combo1(2) Combo1(3) Text1(4) Text1(5) Combo2 Text2(0) Text2(1) Text2(2) Text1(6)"_s);
        TextBox& term = form.Text1[CardBox::Term];
        form.Text1[CardBox::Issued].setText(u"2025-01-31"_s);
        for (const auto& [typed, becomes] : {std::pair(u"5"_s, u"2030-01-31"_s), {u"6"_s, u"6"_s}}) {
            term.setText(typed);
            term.setFocus();
            QTest::keyClick(&term, Qt::Key_Return);
            QCOMPARE(term.text() + focus(), becomes + u"Combo2"_s);
        }
        QTest::keyClick(&term, Qt::Key_Down);
        QCOMPARE(term.selectedText(), u"2026-03-10"_s);
        form.Text1[CardBox::Name].setText(u"张三"_s);
        QTest::keyClick(&form.Text1[CardBox::Name], Qt::Key_Down);
        QCOMPARE(form.Text1[CardBox::Name].selectedText(), u"张三"_s);
    }

    /// What is typed is limited; what was stored longer is not cut.
    void longTexts()
    {
        m->reader(u"R1"_s, {{u"name"_s, QString(12, u'名')}, {u"memo"_s, QString(120, u'注')}});
        DzaddFrm& form = opened(u"E"_s, u"R1"_s);
        form.Memo.setFocus();
        form.Memo.moveCursor(QTextCursor::End);
        QTest::keyClicks(&form.Memo, u"ab"_s);
        QCOMPARE(
            form.Text1[CardBox::Name].text() + form.Memo.text(), QString(12, u'名') + QString(120, u'注'));
        DzaddFrm& fresh = opened(u"A"_s, {});
        QTest::keyClicks(&fresh.Text1[CardBox::Name], QString(11, u'a'));
        QTest::keyClicks(&fresh.Memo, QString(99, u'b'));
        QTest::keyClick(&fresh.Memo, Qt::Key_Return, Qt::ControlModifier);
        QTest::keyClick(&fresh.Memo, u'c');
        QCOMPARE(fresh.Text1[CardBox::Name].text() + fresh.Memo.text(),
            QString(10, u'a') + QString(99, u'b') + u'\n');
        fresh.Memo.setText(QString(99, u'b'));
        fresh.Memo.setFocus();
        fresh.Memo.moveCursor(QTextCursor::Start);
        fresh.Memo.insertPlainText(u"a\U0001F600"_s); // of which the half would fit no more
        QCOMPARE(fresh.Memo.text(), u'a' + QString(99, u'b'));
    }

    void parameterPanel()
    {
        DzaddFrm& form = opened(u"A"_s, {});
        const int low = form.height();
        QVERIFY(!form.Frame2.isVisible());
        form.cmdXianShi.click();
        QVERIFY(form.Frame2.isVisible());
        QVERIFY(form.height() > low);
        QCOMPARE(focus(), u"Text1(8)"_s);
        form.cmdXianShi.click();
        QCOMPARE(form.height(), low);
        fill(form, u"R1"_s);
        form.Text1[CardBox::LostFine].setText(u"三倍"_s);
        m->prompt.expectStart(u"读者流通参数应该为数值"_s);
        form.CmdSave.click();
        QCOMPARE(focus() + form.Text1[CardBox::LostFine].selectedText(), u"Text1(11)三倍"_s);
    }

    void photo()
    {
        const QString file = m->folder.filePath(u"o'neil.png"_s);
        QImage(30, 40, QImage::Format_RGB32).save(file);
        DzaddFrm& form = opened(u"A"_s, {});
        fill(form, u"R1"_s);
        QString chosen = file;
        form.setPhotoChooser([&](QWidget*, const QString& filter) {
            return filter.startsWith(u"Bitmaps|*.BMP|") ? chosen : QString();
        });
        QTest::mouseDClick(&form.ManPic, Qt::LeftButton);
        QVERIFY(form.ManPic.hasPicture());
        chosen.clear(); // the dialog is left by cancel
        form.PhotoMenu.setChooser(
            [](const QStringList& items) { return int(items.indexOf(u"选择照片"_s)) + 1; });
        Q_EMIT form.ManPic.customContextMenuRequested({});
        QCOMPARE(form.ManPic.toolTip(), file);
        form.CmdSave.click();
        QCOMPARE(m->value(u"select photo from dzk"_s), file);
        form.PhotoMenu.setChooser(
            [](const QStringList& items) { return int(items.indexOf(u"取消照片"_s)) + 1; });
        Q_EMIT form.ManPic.customContextMenuRequested({});
        QVERIFY(form.ManPic.toolTip().isEmpty() && !form.ManPic.hasPicture());

        QVERIFY(QFile::remove(file));
        DzaddFrm& missing = opened(u"E"_s, u"R1"_s);
        QVERIFY(!missing.ManPic.hasPicture());
        missing.CmdSave.click();
        QCOMPARE(m->value(u"select photo from dzk"_s), file);
    }

    void failureIsTold()
    {
        DzaddFrm& form = opened(u"A"_s, {});
        fill(form, u"R1"_s);
        QString told;
        QTimer::singleShot(0, this, [&] {
            auto* failure = qobject_cast<errMessageFrm*>(QApplication::activeModalWidget());
            if (!failure) return;
            told = failure->textErrMessage.toPlainText();
            failure->close();
        });
        m->failAt(u"insert into dzk("_s);
        form.CmdSave.click();
        QCOMPARE(told, u"读者增加失败！请检查后重新操作！详细资料如下：\n\n   语句失败：insert into dzk("_s);
        QCOMPARE(m_refreshed, 0);
        QCOMPARE(form.Text1[0].text() + form.Text1[1].text(), u"R1张三"_s);
    }

private:
    /// A screen as the reader list opens it.
    DzaddFrm& opened(const QString& mode, const QString& readercode)
    {
        m_form = std::make_unique<DzaddFrm>(m->session, [this] { ++m_refreshed; });
        m_form->SetEditMode(mode);
        m_form->LoadReader(readercode);
        appear(*m_form);
        return *m_form;
    }

    void fill(DzaddFrm& form, const QString& code)
    {
        form.Text1[CardBox::ReaderCode].setText(code);
        form.Text1[CardBox::Name].setText(u"张三"_s);
        QComboBox& types = form.Combo1[CardList::Type];
        types.setFocus();
        while (types.currentText() != u"学生") // the order of the types is the database's
            QTest::keyClick(&types, types.currentIndex() < types.count() - 1 ? Qt::Key_Down : Qt::Key_Up);
        form.Combo1[CardList::Unit].setEditText(u"一班"_s);
    }

    static QString focus()
    {
        QCoreApplication::processEvents();
        return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
    }

    std::unique_ptr<TestLibrary> m;
    std::unique_ptr<DzaddFrm> m_form;
    int m_refreshed = 0;
};

QTEST_MAIN(TestReaderCardForm)
#include "test_reader_card_form.moc"
