#include "platform/ui/form/dialog_prompt.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/scan/scan_guard.h"
#include "support/window_steps.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QWindow>

#include <qpa/qwindowsysteminterface.h>

using namespace quilla;

namespace {

int keyOf(QChar letter)
{
    return letter == u'\r' ? int(Qt::Key_Return) : int(letter.toUpper().unicode());
}

/// Keys as the system hands them to a window, whether a box bars it or not.
void typeAtDesk(const QWidget& desk, const QString& text)
{
    for (const QChar letter : text)
        for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease})
            QWindowSystemInterface::handleKeyEvent(
                desk.windowHandle(), kind, keyOf(letter), Qt::NoModifier, letter);
}

/// Keys as they reach the box, or its button with the focus.
void queueKeys(const QString& text)
{
    QWidget* box = QApplication::activeModalWidget();
    QWidget* target = box->focusWidget() ? box->focusWidget() : box;
    for (const QChar letter : text)
        for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease})
            QCoreApplication::postEvent(target, new QKeyEvent(kind, keyOf(letter), Qt::NoModifier, letter));
}

Message question()
{
    return {u"仍然要借出本书吗？(y/n)"_s, {}, Icon::Information, true, Answer::No};
}

/// Does something to the message box that is about to show.
template <typename Step> void atMessage(Step step)
{
    QTimer::singleShot(0, [step] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box);
        step(*box);
        if (box->isVisible()) box->close();
    });
}

} // namespace

/// The message boxes, and scans that arrive while one waits: none answers it, none is lost.
class TestDialogPrompt : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void promptAnswers()
    {
        const std::tuple<Answer, Qt::Key, Answer> answers[] {{Answer::Yes, Qt::Key_Space, Answer::Yes},
            {Answer::No, Qt::Key_Space, Answer::No}, {Answer::Yes, Qt::Key_Escape, Answer::No},
            {Answer::Yes, Qt::Key_unknown, Answer::No}}; // closed
        for (const auto& [preset, key, answer] : answers) {
            const WaitCursor outer;
            const WaitCursor inner;
            atMessage([pressed = key](QMessageBox& box) {
                QCOMPARE(box.windowTitle(), u"操作提示");
                QCOMPARE(box.text(), u"请到<type>\n继续？(Y/N)");
                QCOMPARE(box.textFormat(), Qt::PlainText);
                QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor);
                if (pressed != Qt::Key_unknown) QTest::keyClick(box.defaultButton(), pressed);
            });
            const Message message {
                u"请到<type>\n继续？(Y/N)"_s, OperationTitle.toString(), Icon::Question, true, preset};
            QCOMPARE(DialogPrompt().show(message), answer);
            QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        }
    }

    void promptTellsWithOneButton()
    {
        atMessage([](QMessageBox& box) {
            QCOMPARE(box.windowTitle(), u"青简台");
            QCOMPARE(box.icon(), QMessageBox::Critical);
            QCOMPARE(box.buttons().size(), 1);
        });
        DialogPrompt().stop(u"对不起"_s);
    }

    /// Also what still goes to the desk when the box has just shown, and what comes right behind it.
    void scansWaitForTheBox()
    {
        QWidget desk;
        QLineEdit box(&desk);
        QStringList scanned;
        connect(&box, &QLineEdit::returnPressed, this, [&] {
            scanned.append(box.text());
            box.clear();
        });
        appear(desk);
        box.setFocus();
        bool stillOpen = false;
        QTimer::singleShot(0, this, [&desk] {
            typeAtDesk(desk, u"Y12"_s);
            QWindowSystemInterface::flushWindowSystemEvents();
            queueKeys(u"3N\rB2\r"_s);
        });
        QTimer::singleShot(250, this, [&] {
            stillOpen = QApplication::activeModalWidget();
            qobject_cast<QMessageBox*>(QApplication::activeModalWidget())->close();
        });
        QCOMPARE(DialogPrompt().show(question()), Answer::No);
        QVERIFY(stillOpen);
        type(box, u"C3"_s);
        QTRY_COMPARE(scanned, (QStringList {u"Y123N"_s, u"B2"_s, u"C3"_s}));
    }

    /// The desk was still at work: nothing reaches it in the midst of that, an Enter by itself is dropped.
    void scansFromBeforeTheBox()
    {
        QLineEdit desk;
        appear(desk);
        {
            QMessageBox box;
            const ScanGuard guard(box, {});
            typeAtDesk(desk, u"\rB1\ry"_s);
            box.setModal(true);
            box.show();
            QTest::qWait(100); // longer than a scanner pauses: no hand typed the "y" at the box
            QCOMPARE(desk.text(), QString());
        }
        QSignalSpy scans(&desk, &QLineEdit::returnPressed);
        QTRY_COMPARE(desk.text(), u"B1y"_s);
        QCOMPARE(scans.size(), 1);
    }

    /// The page was turned meanwhile: on the other page the scan would do something else.
    void scansForABoxThatIsGone()
    {
        QWidget desk;
        QLineEdit charge(&desk);
        QLineEdit discharge(&desk);
        appear(desk);
        charge.setFocus();
        QTimer::singleShot(0, this, [] { queueKeys(u"B1\rB2"_s); });
        QTimer::singleShot(
            200, this, [] { qobject_cast<QMessageBox*>(QApplication::activeModalWidget())->close(); });
        DialogPrompt().warn(u"此读者借书额已满，不能再借新书！"_s);
        charge.hide();
        discharge.setFocus();
        QString told;
        whenShown<QMessageBox>([&](QMessageBox& box) {
            told = box.text();
            box.close();
        });
        QTRY_VERIFY(told.contains(u"B1\nB2"));
        QCOMPARE(charge.text() + discharge.text(), QString());
    }

    /// In a window that is opened by a scan: what a hand writes stays there, a code waits for the desk.
    void scansIntoAText()
    {
        const std::tuple<QString, QString, int, QString> rows[] {{u"0.5"_s, u"0.5"_s, 0, u""_s},
            {u"0.5\r"_s, u"0.5"_s, 1, u""_s}, {u"1001708\r"_s, u""_s, 0, u"1001708"_s}};
        for (const auto& [keys, kept, enters, scanned] : rows) {
            QLineEdit desk;
            appear(desk);
            {
                QDialog window;
                QLineEdit amount(&window);
                QSignalSpy entered(&amount, &QLineEdit::returnPressed);
                amount.setFocus();
                const ScanGuard guard(window, {});
                QTimer::singleShot(0, &window, [&] { queueKeys(keys); });
                QTimer::singleShot(200, &window, &QDialog::accept);
                window.exec();
                QCOMPARE(amount.text(), kept);
                QCOMPARE(entered.size(), enters);
            }
            QTRY_COMPARE(desk.text(), scanned);
        }
    }

    /// The box asks in the midst of what closes the window.
    void scansIntoABoxOverAWindow()
    {
        QLineEdit desk;
        appear(desk);
        {
            QDialog window;
            QPushButton save(&window);
            const ScanGuard guard(window, {});
            QTimer::singleShot(50, &window, [&] {
                QTimer::singleShot(50, &window, [] { queueKeys(u"B1\r"_s); });
                QTimer::singleShot(200, &window, [] { queueKeys(u"n"_s); });
                DialogPrompt().show(question());
                window.accept();
            });
            window.exec();
        }
        QTRY_COMPARE(desk.text(), u"B1"_s);
    }

    /// Its first repetition comes as another press. What a screen reader hands on has no time, and answers.
    void anEnterHeldDownIsNoAnswer()
    {
        const std::tuple<quint64, bool, Answer> rows[] {
            {1000, false, Answer::Yes}, {1000, true, Answer::Yes}, {0, false, Answer::No}};
        for (const auto& [time, repeated, answer] : rows) {
            atMessage([when = time, again = repeated](QMessageBox& box) {
                for (const auto kind : {QEvent::KeyRelease, QEvent::KeyPress}) {
                    QKeyEvent key(kind, Qt::Key_Return, Qt::NoModifier, u"\r"_s, again);
                    key.setTimestamp(when);
                    QCoreApplication::sendEvent(box.defaultButton(), &key);
                }
                if (box.isVisible()) QTest::keyClick(box.buttons().constFirst(), Qt::Key_Space);
            });
            QCOMPARE(DialogPrompt().show(question()), answer);
        }
    }

    void handsReachTheBox()
    {
        const std::pair<QString, Answer> hands[] {
            {u"y"_s, Answer::Yes}, {u"n"_s, Answer::No}, {u"\r"_s, Answer::No}}; // Enter takes the default
        for (const auto& [keys, answer] : hands) {
            QTimer::singleShot(0, this, [&] { queueKeys(keys); });
            QCOMPARE(DialogPrompt().show(question()), answer);
        }
    }
};

QTEST_MAIN(TestDialogPrompt)
#include "test_dialog_prompt.moc"
