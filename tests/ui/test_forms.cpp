#include "support/scripted_prompt.h"
#include "support/window_steps.h"

#include "platform/ui/form/editor.h"
#include "platform/ui/form/form.h"
#include "platform/ui/form/input_rules.h"
#include "platform/ui/form/open_list.h"
#include "platform/ui/form/small_screen.h"
#include "platform/ui/form/text_box.h"
#include "platform/ui/look/theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>

using namespace quilla;

namespace {

/// Shows a form as the active window with the focus in one of its controls.
void enter(QWidget& form, QWidget& control)
{
    appear(form);
    control.setFocus();
    QCoreApplication::processEvents();
}

/// A form that writes down what happens in it.
class DiaryForm : public QDialog {
public:
    DiaryForm()
    {
        QUILLA_NAMES(first, second, list, tick, memo, go);
        list.setEditable(true);
        list.addItems({u"甲"_s, u"乙"_s});
        build(*this,
            column(fields(2, {{u"读者证号"_s, first}, {u"姓名(&X)"_s, second}}), row(list, tick), memo, go));
        onEnter(first, [this] { diary << u"enter"_s; });
        onFocus(second, [this] { diary << u"focus"_s; });
        onLeave(first, [this] { diary << u"leave "_s + first.text(); });
        onClick(go, [this] { diary << u"go"_s; });
        enterAsTab({first, second, list, tick, memo});
    }

    TextBox first;
    TextBox second;
    QComboBox list;
    QCheckBox tick;
    QPlainTextEdit memo;
    QPushButton go {u"&G 进入"_s};
    QStringList diary;
};

} // namespace

class TestForms : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wheelNeedsTheFocus()
    {
        DiaryForm form;
        enter(form, form.first);
        const auto turned = [&](QWidget& under) {
            QWheelEvent wheel(
                {}, under.mapToGlobal(QPoint(2, 2)), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
            QApplication::sendEvent(&under, &wheel);
            return form.list.currentText();
        };
        QVERIFY(form.list.focusPolicy() != Qt::WheelFocus);
        QCOMPARE(turned(*form.list.lineEdit()), u"甲"_s);
        form.list.setFocus();
        QCOMPARE(turned(form.list), u"乙"_s);
    }

    /// Alt and a letter of two controls presses the first that is enabled; a letter of none types nothing.
    /// That of a label leads to its box, which has its name, and from there to a button of the same letter.
    void accessLetters()
    {
        DiaryForm form;
        QPushButton disabled(u"停(&G)"_s, &form);
        QPushButton second(u"过(&G)"_s, &form);
        QPushButton save(u"保存(&X)"_s, &form);
        disabled.setEnabled(false);
        for (QPushButton* button : {&disabled, &second, &save})
            button->show();
        QWidget::setTabOrder(&form.first, &disabled);
        QSignalSpy pressed(&second, &QPushButton::clicked);
        enter(form, form.first);
        for (int times = 1; times <= 2; ++times) {
            QTest::keyClick(&form.first, Qt::Key_G, Qt::AltModifier);
            QTRY_COMPARE(form.diary.count(u"go"_s), times);
        }
        QCOMPARE(pressed.count(), 0);
        QTest::keyClick(&form.first, Qt::Key_Z, Qt::AltModifier);
        QCOMPARE(form.first.text(), QString());
        QTest::keyClick(&form, Qt::Key_X, Qt::AltModifier); // "姓名(&X)"
        QCOMPARE(focusName() + form.second.accessibleName(), u"second姓名"_s);
        QSignalSpy saved(&save, &QPushButton::clicked);
        QTest::keyClick(&form.second, Qt::Key_X, Qt::AltModifier);
        QTRY_COMPARE(saved.count(), 1);
    }

    void formHigherThanItsScreenScrollsToTheFocus()
    {
        DiaryForm form;
        scrollWhereHigher(form, 80);
        form.resize(form.sizeHint().width(), 80);
        form.show();
        QCOMPARE(form.height(), 80);
        for (QWidget* box : std::initializer_list<QWidget*> {&form.second, &form.list, &form.first}) {
            box->setFocus();
            QTRY_COMPARE(box->visibleRegion().boundingRect(), box->rect());
        }
    }

    void initTestCase()
    {
        applyTheme(*qApp);
        applyInputRules(*qApp);
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
        onEnter(form.second, [&] { form.memo.setFocus(); });
        QTest::keyClick(&form.second, Qt::Key_Return);
        QCOMPARE(focusName(), u"memo"); // where the step put it
    }

    void letsEnterThroughToTheControl()
    {
        DiaryForm form;
        enter(form, form.second);
        QSignalSpy returned(&form.second, &QLineEdit::returnPressed);
        QTest::keyClick(&form.second, Qt::Key_Return);
        QCOMPARE(returned.count(), 1);
        QTest::keyClick(form.list.lineEdit(), Qt::Key_Return); // the keys of an editable list go to its box
        QCOMPARE(focusName(), u"tick");
        QTest::keyClick(&form.tick, Qt::Key_Return);
        QCOMPARE(focusName(), u"memo");
        QTest::keyClick(&form.memo, Qt::Key_Return);
        QCOMPARE(form.memo.toPlainText(), u""); // but breaks no line
        QCOMPARE(focusName(), u"go");
        QCOMPARE(form.diary.count(u"go"_s), 0);
    }

    void leavesABoxBeforeTheButtonActs()
    {
        DiaryForm form;
        enter(form, form.first);
        QDialog other;
        appear(other);
        QCoreApplication::processEvents();
        QCOMPARE(form.diary, QStringList()); // not left for another window
        enter(form, form.first);
        QTest::mouseClick(&form.go, Qt::LeftButton);
        QCOMPARE(form.diary, QStringList({u"leave "_s, u"go"_s}));
        QTest::keyClick(&form.go, Qt::Key_Return);
        QCOMPARE(form.diary.count(u"go"_s), 2);
    }

    /// A unit whose name begins like a longer one is taken as it was typed.
    void typedTextIsNotCompleted()
    {
        QComboBox list;
        takeAnyText(list);
        list.addItems({u"abcd"_s, u"abc"_s});
        list.setCurrentIndex(-1);
        appear(list);
        QTest::keyClicks(&list, u"ab"_s);
        QTest::keyClick(&list, Qt::Key_Return);
        QTest::keyClick(&list, Qt::Key_Tab);
        QCOMPARE(chosenOrTyped(list), u"ab"_s);
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
        DiaryForm form;
        enter(form, form.first);
        form.second.setText(u"张三"_s);
        form.second.setFocus(Qt::TabFocusReason);
        QCOMPARE(form.second.selectedText(), u"张三");
        form.first.setText(u"R2004001"_s);
        QTest::mouseClick(&form.first, Qt::LeftButton, {}, {20, 10});
        QCOMPARE(form.first.selectedText(), u"R2004001");
        QTest::mouseClick(&form.first, Qt::LeftButton, {}, {20, 10}); // a second click sets the cursor
        QCOMPARE(form.first.selectedText(), u"");
    }

    /// A message took the focus with the whole window; the box that is to be corrected gets it back with it.
    void selectsWhatIsEnteredWithTheWindow()
    {
        DiaryForm form;
        enter(form, form.second);
        form.first.setText(u"R2004001"_s);
        form.first.setCursorPosition(2);
        QWidget message;
        appear(message);
        form.first.setFocus();
        form.activateWindow();
        QTRY_COMPARE(form.first.selectedText(), u"R2004001");
        form.first.setSelection(1, 2);
        message.activateWindow();
        QTRY_VERIFY(!form.first.hasFocus());
        form.activateWindow(); // it was only away
        QTRY_VERIFY(form.first.hasFocus());
        QCOMPARE(form.first.selectedText(), u"20");
    }

    void whatIsPastedBecomesOneLine()
    {
        const std::pair<QString, QString> pasted[] {{u"R1\r\n"_s, u"<R1|>"_s},
            {u"张\t三\r四\n"_s, u"<张 三 四|>"_s}, {u"a\u0000\u0007b "_s, u"<ab |>"_s},
            {u"长长长长长长长\U0001F600"_s, u"<长长长长长长长|>"_s}};
        for (const auto& [text, becomes] : pasted) {
            TextBox box(u"<>"_s);
            box.setMaxLength(10); // the picture takes two
            box.setCursorPosition(1);
            box.insert(text);
            QCOMPARE(box.text().insert(box.cursorPosition(), u'|'), becomes);
        }
    }

    void highlightsOnlyWhileInFocus()
    {
        DiaryForm form;
        form.second.setHighlighted(true);
        enter(form, form.second);
        QCOMPARE(form.second.palette().color(QPalette::Base), Theme().highlight);
        QWidget other;
        appear(other);
        appear(form);
        QTRY_COMPARE(form.second.palette().color(QPalette::Base), Theme().highlight);
        form.first.setFocus();
        QCOMPARE(form.second.palette().color(QPalette::Base), Theme().surface);
    }

    void dropsRefusedCharacters()
    {
        ScriptedPrompt prompt;
        QDialog form;
        QComboBox number;
        number.setEditable(true);
        build(form, column(number));
        filterDigits(number, {false, u"请输入0-9之间的数字"_s, u""_s}, prompt);
        enter(form, number);
        QTest::keyClicks(number.lineEdit(), u"1/0:"_s);
        QCOMPARE(number.currentText(), u"1/0:");
        QTest::keyClick(number.lineEdit(), Qt::Key_Left);
        QTest::keyClick(number.lineEdit(), Qt::Key_Backspace);
        QCOMPARE(number.currentText(), u"1/:");
        QCOMPARE(prompt.takeComplaints(), QString());
        for (int times = 0; times < 2; ++times)
            prompt.expect(u"请输入0-9之间的数字"_s);
        QTest::keyClicks(number.lineEdit(), u"a"_s);
        QCOMPARE(number.currentText(), u"");
        number.setEditText(u"10"_s);
        QInputMethodEvent commit;
        commit.setCommitString(u"十"_s);
        QCoreApplication::sendEvent(number.lineEdit(), &commit);
        QCOMPARE(number.currentText(), u"");
        QVERIFY(number.lineEdit()->hasFocus());
        QCOMPARE(prompt.takeComplaints(), QString());
    }
};

QTEST_MAIN(TestForms)
#include "test_forms.moc"
