#include "platform/ui/dialog_prompt.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

using namespace quilla;

/// Scans that arrive while a message box waits: none answers it, none is lost.
class TestScanGuard : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void scansWaitForTheBox()
    {
        QWidget desk;
        QLineEdit box(&desk);
        QStringList scanned;
        connect(&box, &QLineEdit::returnPressed, this, [&] {
            scanned.append(box.text());
            box.clear();
        });
        desk.show();
        QVERIFY(QTest::qWaitForWindowActive(&desk));
        box.setFocus();

        bool stillOpen = false;
        QTimer::singleShot(0, this, [] { queueKeys(u"Y123N\rB2\r"_s); });
        QTimer::singleShot(250, this, [&] {
            stillOpen = QApplication::activeModalWidget();
            qobject_cast<QMessageBox*>(QApplication::activeModalWidget())->close();
        });
        QCOMPARE(DialogPrompt().show(question()), Answer::No);
        QVERIFY(stillOpen);
        QTRY_COMPARE(scanned, (QStringList {u"Y123N"_s, u"B2"_s}));
    }

    void handsReachTheBox_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<int>("answer");
        QTest::newRow("Y") << u"y"_s << int(Answer::Yes);
        QTest::newRow("N") << u"n"_s << int(Answer::No);
        QTest::newRow("Enter takes the default") << u"\r"_s << int(Answer::No);
    }

    void handsReachTheBox()
    {
        QFETCH(QString, keys);
        QFETCH(int, answer);
        QTimer::singleShot(0, this, [&] { queueKeys(keys); });
        QCOMPARE(int(DialogPrompt().show(question())), answer);
    }
};

namespace {

/// Keys as the system queues them: to the box, or to the box's button with the focus.
void queueKeys(const QString& text)
{
    QWidget* box = QApplication::activeModalWidget();
    QWidget* target = box->focusWidget() ? box->focusWidget() : box;
    for (const QChar letter : text) {
        const int key = letter == u'\r' ? int(Qt::Key_Return) : int(letter.toUpper().unicode());
        for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease})
            QCoreApplication::postEvent(target, new QKeyEvent(kind, key, Qt::NoModifier, QString(letter)));
    }
}

Message question()
{
    return {u"仍然要借出本书吗？(y/n)"_s, {}, Icon::Information, true, Answer::No};
}

} // namespace

QTEST_MAIN(TestScanGuard)
#include "tst_scan_guard.moc"
