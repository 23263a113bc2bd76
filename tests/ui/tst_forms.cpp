#include "ui/recording_prompt.h"
#include "ui/sample_forms.h"

#include "platform/ui/editor.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTest>

using namespace quilla;

namespace {

/// Shows a form as the active window with the focus in one of its controls.
void enter(QWidget& form, QWidget& control)
{
    form.show();
    form.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    control.setFocus();
    QCoreApplication::processEvents();
}

QString focusName()
{
    return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : u"none"_s;
}

/// A form that writes down what happens in it.
class DiaryForm : public QDialog {
public:
    DiaryForm()
    {
        QUILLA_NAMES(first, second, list, memo, go);
        list.setEditable(true);
        list.addItems({u"甲"_s, u"乙"_s});
        build(*this, column(row(first, second), list, memo, go));
        onEnter(first, [this] { diary << u"enter"_s; });
        onFocus(second, [this] { diary << u"focus"_s; });
        onLeave(first, [this] { diary << u"leave "_s + first.text(); });
        onClick(go, [this] { diary << u"go"_s; });
        enterAsTab({first, second, list, memo});
    }

    TextBox first;
    TextBox second;
    QComboBox list;
    QPlainTextEdit memo;
    QPushButton go {u"&G 进入"_s};
    QStringList diary;
};

} // namespace

class TestForms : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { applyTheme(*qApp); }

    void movesOnAtEnterThroughTheWholeForm()
    {
        sample::CardForm form;
        enter(form, form.Text1[0]);
        QStringList visited;
        for (int i = 0; i < 12; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            visited << focusName();
        }
        QCOMPARE(visited.join(u' '),
            u"Text1(1) Combo1(0) Combo1(1) Text1(4) Text1(5) Text1(8) Text1(2) Text1(9) Text1(10) Check1(0) "
            u"Check1(1) Text1(6)");
        QVERIFY(!form.isHidden());
    }

    void runsAStepBeforeMovingOn()
    {
        DiaryForm form;
        enter(form, form.first);
        QTest::keyClicks(&form.first, u"x"_s);
        QTest::keyClick(&form.first, Qt::Key_Enter);
        QCoreApplication::processEvents();
        QCOMPARE(form.diary, QStringList({u"enter"_s, u"focus"_s, u"leave x"_s}));
        QCOMPARE(focusName(), u"second");
    }

    void keepsTheFocusWhereAStepPutIt()
    {
        DiaryForm form;
        enter(form, form.first);
        onEnter(form.first, [&] { form.memo.setFocus(); });
        QTest::keyClick(&form.first, Qt::Key_Return);
        QCOMPARE(focusName(), u"memo");
    }

    void letsEnterThroughToTheControl()
    {
        DiaryForm form;
        enter(form, form.second);
        QSignalSpy returned(&form.second, &QLineEdit::returnPressed);
        QTest::keyClick(&form.second, Qt::Key_Return);
        QCOMPARE(returned.count(), 1);
        QTest::keyClick(form.list.lineEdit(), Qt::Key_Return); // the keys of an editable list go to its box
        QCOMPARE(focusName(), u"memo");
        QTest::keyClick(&form.memo, Qt::Key_Return);
        QCOMPARE(form.memo.toPlainText(), u""); // but breaks no line
        QCOMPARE(focusName(), u"go");
        QVERIFY(!form.isHidden());
    }

    void pressesAButtonOnceAndOnlyWithTheFocus()
    {
        DiaryForm form;
        enter(form, form.second);
        QTest::keyClick(&form.second, Qt::Key_Return);
        QCOMPARE(form.diary.count(u"go"_s), 0);
        form.go.setFocus();
        QTest::keyClick(&form.go, Qt::Key_Return);
        QCOMPARE(form.diary.count(u"go"_s), 1);
    }

    void leavesABoxBeforeTheButtonActs()
    {
        DiaryForm form;
        enter(form, form.first);
        QTest::mouseClick(&form.go, Qt::LeftButton);
        QCOMPARE(form.diary, QStringList({u"leave "_s, u"go"_s}));
    }

    void doesNotLeaveForAnotherWindow()
    {
        DiaryForm form;
        enter(form, form.first);
        QDialog other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QCoreApplication::processEvents();
        QCOMPARE(form.diary, QStringList());
    }

    void servesAccessKeys()
    {
        sample::CardForm form;
        enter(form, form.Text1[0]);
        QTest::keyClick(&form, Qt::Key_X, Qt::AltModifier); // "性别(&X)"
        QCOMPARE(focusName(), u"Combo1(0)");
        QSignalSpy quit(&form.cmdQuit, &QPushButton::clicked);
        QTest::keyClick(&form, Qt::Key_Q, Qt::AltModifier); // "&Q 关闭"
        QTRY_COMPARE(quit.count(), 1);
    }

    void namesEveryInput()
    {
        sample::CardForm card;
        sample::OverdueList list;
        sample::DeskForm desk;
        for (QWidget* form : std::initializer_list<QWidget*> {&card, &list, &desk})
            for (const QWidget* control :
                form->findChildren<QWidget*>(QRegularExpression(u"^(Text|Combo|Txt|Grid|MSH)"_s)))
                QVERIFY2(!control->accessibleName().isEmpty(), qPrintable(control->objectName()));
        QCOMPARE(card.Text1[8].accessibleName(), u"可借天数(天)");
        QCOMPARE(desk.TxtBarCode.accessibleName(), u"输入图书条码号");
        QCOMPARE(desk.Grid1.accessibleName(), u"借书信息");
        QCOMPARE(list.Grid1.accessibleName(), u"超期书刊管理");
        QCOMPARE(card.findChild<TextBox*>(u"Text1(10)"_s), &card.Text1[10]);
        QCOMPARE(list.Command1[4].text(), u"&E 输出到excel");
    }

    void outlivesItsFrames()
    {
        struct Frames : QWidget {
            TextBox before;
            QGroupBox frame {u"框"_s};
            QTabWidget book;
            TextBox behind;
            Frames()
            {
                build(*this, column(tabs(book, {{u"页"_s, column(group(frame, column(before, behind)))}})));
            }
        };
        auto form = std::make_unique<Frames>();
        form->show();
        const QPointer<QWidget> box(&form->before);
        form.reset(); // members go in the reverse of their order, the box inside the frame last
        QVERIFY(!box);
    }

    void selectsTheWholeTextOnEntry()
    {
        sample::CardForm form;
        enter(form, form.Text1[0]);
        form.Text1[1].setText(u"张三"_s);
        form.Text1[1].setFocus(Qt::TabFocusReason);
        QCOMPARE(form.Text1[1].selectedText(), u"张三");
        QTest::keyClicks(&form.Text1[1], u"x"_s);
        QCOMPARE(form.Text1[1].text(), u"x");
        form.Text1[0].setText(u"R2004001"_s);
        QTest::mouseClick(&form.Text1[0], Qt::LeftButton, {}, {20, 10});
        QCOMPARE(form.Text1[0].selectedText(), u"R2004001");
        QTest::mouseClick(&form.Text1[0], Qt::LeftButton, {}, {20, 10}); // a second click sets the cursor
        QCOMPARE(form.Text1[0].selectedText(), u"");
    }

    void highlightsOnlyWhileInFocus()
    {
        sample::CardForm form;
        enter(form, form.Text1[6]); // the one that is to be highlighted
        QCOMPARE(form.Text1[6].palette().color(QPalette::Base), Theme().highlight);
        form.Text1[0].setFocus();
        QCOMPARE(form.Text1[6].palette().color(QPalette::Base), Theme().surface);
        QCOMPARE(form.Text1[0].palette().color(QPalette::Base), Theme().surface);
    }

    void writesEditorButtonsOnlyWhenTheyDiffer()
    {
        QWidget form;
        QPushButton cmdAdd(&form);
        QPushButton CmdSave(&form);
        CmdSave.setEnabled(false);
        int written = 0;
        struct Counter : QObject {
            int* count;
            bool eventFilter(QObject*, QEvent* event) override
            {
                *count += event->type() == QEvent::EnabledChange;
                return false;
            }
        } counter;
        counter.count = &written;
        cmdAdd.installEventFilter(&counter);
        CmdSave.installEventFilter(&counter);
        QVERIFY(SetDataMode(u"a"_s, cmdAdd, CmdSave).isAdd());
        QCOMPARE(written, 1); // only CmdSave
        QVERIFY(SetDataMode(u"E"_s, cmdAdd, CmdSave).isEdit());
        QCOMPARE(written, 2); // only cmdAdd
        SetDataMode(u""_s, cmdAdd, CmdSave);
        QCOMPARE(written, 3);
        QVERIFY(!cmdAdd.isEnabled() && !CmdSave.isEnabled());
    }

    void dropsRefusedCharacters()
    {
        RecordingPrompt prompt;
        QDialog form;
        QComboBox number;
        number.setEditable(true);
        build(form, column(number));
        filterDigits(number, titleRankingFilter(), prompt);
        enter(form, number);
        QTest::keyClicks(number.lineEdit(), u"1/0:"_s);
        QCOMPARE(number.currentText(), u"1/0:");
        QTest::keyClick(number.lineEdit(), Qt::Key_Left);
        QTest::keyClick(number.lineEdit(), Qt::Key_Backspace);
        QCOMPARE(number.currentText(), u"1/:");
        QVERIFY(prompt.shown.empty());
        QTest::keyClicks(number.lineEdit(), u"a"_s);
        QCOMPARE(number.currentText(), u"");
        QCOMPARE(prompt.shown.size(), 1U);
        number.setEditText(u"10"_s);
        QInputMethodEvent commit;
        commit.setCommitString(u"十"_s);
        QCoreApplication::sendEvent(number.lineEdit(), &commit);
        QCOMPARE(number.currentText(), u"");
        QVERIFY(number.lineEdit()->hasFocus());
    }
};

QTEST_MAIN(TestForms)
#include "tst_forms.moc"
