#include "platform/ui/list_chooser.h"
#include "platform/ui/text_box.h"
#include "ui/reader_rows.h"

#include <QScrollBar>
#include <QTest>

using namespace quilla;

/// The pick list under a box.
class TestListChooser : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void choosesFromAListUnderABox()
    {
        QWidget form;
        TextBox box;
        box.setParent(&form);
        form.resize(400, 200);
        form.show();
        form.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        gListfrm list(box);
        const std::pair<Qt::Key, QString> keys[] {{Qt::Key_Return, u"R1"_s}, {Qt::Key_Space, u"R1"_s},
            {Qt::Key_Escape, u"before"_s}, {Qt::Key_unknown, u"R2"_s}}; // at last a click
        for (const auto& [key, taken] : keys) {
            box.setText(u"before"_s);
            Recordset four = readers(4);
            list.loadData(four);
            list.popUp();
            QCOMPARE(list.pos(), box.mapToGlobal(QPoint(0, box.height())));
            const QPoint second = list.Grid1.visualRect(list.Grid1.model()->index(1, 0)).center();
            if (key != Qt::Key_unknown)
                QTest::keyClick(&list.Grid1, key);
            else
                QTest::mouseClick(list.Grid1.viewport(), Qt::LeftButton, {}, second);
            QVERIFY(!list.isVisible());
            QCOMPARE(box.text(), taken);
        }
    }

    void showsThreeLinesOfALongPickList()
    {
        TextBox box;
        gListfrm list(box);
        const auto linesShown = [&](int count) {
            Recordset some = readers(count);
            list.loadData(some);
            list.popUp();
            return list.Grid1.viewport()->height() / list.Grid1.rowHeight(0);
        };
        QCOMPARE(linesShown(0), 1);
        QCOMPARE(linesShown(3), 3);
        QVERIFY(!list.Grid1.verticalScrollBar()->isVisible());
        QCOMPARE(linesShown(9), 3);
        QVERIFY(list.Grid1.verticalScrollBar()->isVisible());
    }
};

QTEST_MAIN(TestListChooser)
#include "tst_list_chooser.moc"
