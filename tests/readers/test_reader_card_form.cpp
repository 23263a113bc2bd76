#include "platform/ui/form/error_form.h"
#include "readers/reader_card_form.h"
#include "support/screen_test.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLayout>
#include <QProcess>
#include <QToolTip>

using namespace quilla;

/// The card editor by keys and mouse.
class TestReaderCardForm : public ScreenTest {
    Q_OBJECT

    void fill() override
    {
        m_refreshed = 0;
        m->insert(u"dzlx"_s, {{u"readerclass"_s, u"教师"_s}});
        m->insert(u"dzlx"_s, {{u"readerclass"_s, u"学生"_s}});
        m->insert(u"dzlx"_s, {{u"readerclass"_s, u"学生"_s}});
        m->insert(u"jycs"_s,
            {{u"readerclass"_s, u"学生"_s}, {u"daycount"_s, u"20"_s}, {u"bookcount"_s, u"3"_s},
                {u"ifcanre"_s, u"1"_s}});
        m->insert(u"dzdw"_s, {{u"readunit"_s, u"一班"_s}});
    }

private Q_SLOTS:
    void newCardsOneAfterTheOther()
    {
        DzaddFrm& form = card(u"a"_s, {});
        QCOMPARE(focusName() + form.Combo1[0].currentText() + form.Combo2.currentText(), u"Text1(0)身份证"_s);
        QCOMPARE(form.Text1[CardBox::Issued].text() + u' ' + form.Text1[CardBox::Term].text(),
            u"2026-03-10 2027-3-10"_s);
        QVERIFY(form.cmdUpdateZheng.isHidden());
        fill(form, u"R1"_s);
        form.CmdSave.click();
        QCOMPARE(m_refreshed, 1);
        QVERIFY(form.isVisible());
        QCOMPARE(focusName() + form.Text1[0].text() + form.Text1[1].text(), u"Text1(0)"_s);
        QCOMPARE(
            form.Text1[CardBox::LoanDays].text() + form.Combo1[CardList::Unit].currentText(), u"20一班"_s);
        QCOMPARE(m->value(u"select readercode,readstatus,term,bookcount,ifcanre,yordercshu from dzk"_s),
            u"R1|有效|2027-03-10|3|True|0"_s);
    }

    void cardChangedAndClosed()
    {
        m->reader(u"R1"_s,
            {{u"term"_s, u"2026-03-09"_s}, {u"paperdate"_s, u"null"_s}, {u"ifcanre"_s, u"1"_s},
                {u"name"_s, QString(12, u'名')}, {u"memo"_s, QString(120, u'注')}});
        DzaddFrm& form = card(u"E"_s, u"R1"_s);
        QCOMPARE(focusName(), u"Text1(1)"_s);
        QVERIFY(!form.Text1[0].isEnabled() && !form.Combo1[CardList::Type].isEnabled());
        QVERIFY(form.Text1[CardBox::OnLoan].isReadOnly());
        QCOMPARE(form.Text1[CardBox::Type].text() + form.Combo2.currentText(), u"学生其它"_s);
        form.Memo.setFocus();
        form.Memo.moveCursor(QTextCursor::End);
        QTest::keyClicks(&form.Memo, u"ab"_s); // what was stored longer is not cut
        form.Combo1[CardList::Unit].setEditText(u"新班"_s); // no unit of the list
        m->prompt.expectStart(u"请正确输入登记日期"_s);
        form.CmdSave.click();
        QCOMPARE(focusName(), u"Text1(4)"_s);
        QTest::keyClick(&form.Text1[CardBox::Issued], Qt::Key_Down);
        form.CmdSave.click();
        QVERIFY(!form.isVisible());
        QCOMPARE(form.result(), int(QDialog::Accepted));
        QCOMPARE(m_refreshed, 0);
        QCOMPARE(m->value(u"select readunit,readstatus,paperdate,ifcanre,name,memo from dzk"_s),
            u"新班|超期|2026-03-10|True|"_s + QString(12, u'名') + u'|' + QString(120, u'注'));
    }

    /// Nor what could not be read, lest it be written over; and no half card goes by Esc.
    void otherModesOnlyShow()
    {
        m->reader(u"R1"_s);
        QVERIFY(!card(u"X"_s, u"R1"_s).CmdSave.isEnabled());
        QVERIFY(!card(u"E"_s, u"R2"_s).CmdSave.isEnabled());
        m->failAt(u"from dzkx"_s);
        QVERIFY(!card(u"E"_s, u"R1"_s).CmdSave.isEnabled());
        QVERIFY(says(u"没有读到读者的证件资料"_s));
        m->failAt({});
        QVERIFY(card(u"E"_s, u"R1"_s).CmdSave.isEnabled() && !says(u"没有读到读者的证件资料"_s));
        QTest::keyClick(m_form, Qt::Key_Escape);
        QVERIFY(m_form->isVisible());
        m_form->CmdQuit.click();
        QVERIFY(!m_form->isVisible());
    }

    void choosingAndTypingAType()
    {
        DzaddFrm& form = card(u"A"_s, {});
        TextBox& days = form.Text1[CardBox::LoanDays];
        QComboBox& types = form.Combo1[CardList::Type];
        types.setFocus();
        types.lineEdit()->insert(u"学生"_s);
        QTest::keyClick(&types, Qt::Key_Return);
        QCOMPARE(focusName() + days.text(), u"Combo1(2)"_s); // typed to the end, not chosen
        days.setText(u"99"_s);
        types.clearEditText();
        fill(form, u"R1"_s);
        QCOMPARE(days.text(), u"20"_s);
        QCOMPARE(types.count(), 2);
    }

    void unitsOfAnotherDesk()
    {
        m->send(u"delete from dzdw"_s);
        QComboBox& units = card(u"A"_s, {}).Combo1[CardList::Unit];
        m->insert(u"dzdw"_s, {{u"readunit"_s, QString(100, u'长')}});
        units.setEditText(u"甲"_s);
        units.setFocus();
        QCOMPARE(units.itemText(0) + units.currentText(), QString(100, u'长') + u'甲');
        QVERIFY(m_form->layout()->totalMinimumSize().width() < 900);
    }

    void keysInBoxes()
    {
        DzaddFrm& form = card(u"A"_s, {});
        QStringList way;
        for (QString now = focusName(); now != u"cmdXianShi" && way.size() < 30; now = focusName()) {
            way.append(now);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        }
        QCOMPARE(way.join(u' '),
            u"Text1(0) Text1(1) Combo1(0) Combo1(1) Combo1(2) Combo1(3) Text1(4) Text1(5) Combo2 Text2(0) Text2(1) Text2(2) Text1(6)"_s);
        TextBox& term = form.Text1[CardBox::Term];
        form.Text1[CardBox::Issued].setText(u"2025-01-31"_s);
        term.setText(u"5"_s);
        QTest::keyClick(&term, Qt::Key_Return);
        QCOMPARE(term.text(), u"2030-01-31"_s);
        QTest::keyClick(&term, Qt::Key_Down);
        QCOMPARE(term.selectedText(), u"2026-03-10"_s);
        form.Text1[CardBox::Name].setText(u"张三"_s);
        QTest::keyClick(&form.Text1[CardBox::Name], Qt::Key_Down);
        QCOMPARE(form.Text1[CardBox::Name].selectedText(), u"张三"_s);
    }

    void typingIsLimited()
    {
        DzaddFrm& form = card(u"A"_s, {});
        QTest::keyClicks(&form.Text1[CardBox::Name], QString(11, u'a'));
        QTest::keyClicks(&form.Memo, QString(99, u'b'));
        QTest::keyClick(&form.Memo, Qt::Key_Return, Qt::ControlModifier);
        QTest::keyClick(&form.Memo, u'c');
        QCOMPARE(form.Text1[CardBox::Name].text() + form.Memo.text(),
            QString(10, u'a') + QString(99, u'b') + u'\n');
        QApplication::clipboard()->setText(QString(2000, u'路'));
        form.Text2[CardDetail::Address].paste();
        QCOMPARE(form.Text2[CardDetail::Address].text().size(), 400);
        QCOMPARE(QToolTip::text(), u"最多 400 个字符，多出的没有输入"_s);
        form.Memo.setText(QString(98, u'b'));
        form.Memo.setFocus();
        form.Memo.moveCursor(QTextCursor::Start);
        form.Memo.insertPlainText(u"a\U0001F600"_s); // of which the half would fit no more
        QCOMPARE(form.Memo.text(), u'a' + QString(98, u'b'));
    }

    void parameterPanel()
    {
        DzaddFrm& form = card(u"A"_s, {});
        const int low = form.height();
        QVERIFY(!form.Frame2.isVisible());
        form.cmdXianShi.click();
        QVERIFY(form.Frame2.isVisible() && form.height() > low);
        QCOMPARE(focusName(), u"Text1(8)"_s);
        form.cmdXianShi.click();
        QCOMPARE(form.height(), low);
        fill(form, u"R1"_s);
        form.Text1[CardBox::LostFine].setText(u"三倍"_s);
        m->prompt.expectStart(u"读者流通参数应该为数值"_s);
        form.CmdSave.click();
        QVERIFY(form.Frame2.isVisible());
        QCOMPARE(focusName() + form.Text1[CardBox::LostFine].selectedText(), u"Text1(11)三倍"_s);
    }

    /// A pipe that nobody writes to would be read for ever.
    void photoThatIsNoFile()
    {
        const QString pipe = m->folder.filePath(u"pipe.jpg"_s);
        QCOMPARE(QProcess::execute(u"mkfifo"_s, {pipe}), 0);
        DzaddFrm& form = card(u"A"_s, {});
        form.ManPic.setChooser([&](QWidget*, const QString&) { return pipe; });
        offerPhotoMenu(u"选择照片"_s);
        QVERIFY(!form.ManPic.hasPicture());
        QCOMPARE(form.ManPic.toolTip(), pipe);
    }

    void photo()
    {
        const QString file = m->folder.filePath(u"o'neil.png"_s);
        QImage(30, 40, QImage::Format_RGB32).save(file);
        DzaddFrm& form = card(u"A"_s, {});
        fill(form, u"R1"_s);
        QString chosen = file;
        form.ManPic.setChooser([&](QWidget*, const QString&) { return chosen; });
        QTest::mouseDClick(&form.ManPic, Qt::LeftButton);
        QVERIFY(form.ManPic.hasPicture());
        chosen.clear(); // the dialog is left by cancel
        offerPhotoMenu(u"选择照片"_s);
        form.CmdSave.click();
        QCOMPARE(m->value(u"select photo from dzk"_s), file);
        offerPhotoMenu(u"取消照片"_s);
        QVERIFY(form.ManPic.toolTip().isEmpty() && !form.ManPic.hasPicture());

        QVERIFY(QFile::remove(file));
        DzaddFrm& missing = card(u"E"_s, u"R1"_s);
        QVERIFY(!missing.ManPic.hasPicture());
        missing.CmdSave.click();
        QCOMPARE(m->value(u"select photo from dzk"_s), file);
    }

    void failureIsTold()
    {
        DzaddFrm& form = card(u"A"_s, {});
        fill(form, u"R1"_s);
        QString told;
        whenShown<errMessageFrm>([&](errMessageFrm& failure) {
            told = failure.textErrMessage.toPlainText();
            failure.close();
        });
        m->failAt(u"insert into dzk("_s);
        form.CmdSave.click();
        QCOMPARE(told, u"读者增加失败！请检查后重新操作！详细资料如下：\n\n   语句失败：insert into dzk("_s);
        QCOMPARE(m_refreshed, 0);
        QCOMPARE(form.Text1[0].text() + form.Text1[1].text(), u"R1张三"_s);
    }

private:
    bool says(const QString& beginning) const
    {
        return std::ranges::any_of(m_form->findChildren<QLabel*>(),
            [&](const QLabel* label) { return label->isVisible() && label->text().startsWith(beginning); });
    }
    /// A screen as the reader list opens it.
    DzaddFrm& card(const QString& mode, const QString& readercode)
    {
        m_form = &made<DzaddFrm>(m->session, [this] { ++m_refreshed; });
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

    void offerPhotoMenu(const QString& entry)
    {
        m_form->ManPic.PhotoMenu.setChooser(
            [&](const QStringList& items) { return int(items.indexOf(entry)) + 1; });
        Q_EMIT m_form->ManPic.customContextMenuRequested({});
    }

    DzaddFrm* m_form = nullptr;
    int m_refreshed = 0;
};

QTEST_MAIN(TestReaderCardForm)
#include "test_reader_card_form.moc"
