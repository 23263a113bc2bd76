#include "ui/recording_prompt.h"

#include "platform/ui/date_range.h"
#include "platform/ui/error_form.h"
#include "platform/ui/flex_grid.h"
#include "platform/ui/gallery.h"
#include "platform/ui/icons.h"
#include "platform/ui/popup_menu.h"
#include "platform/ui/theme.h"
#include "platform/ui/tooltip.h"
#include "platform/ui/working_form.h"

#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QTimer>

using namespace quilla;

namespace {

const QString Today = u"2004-03-09"_s;

DateRange range(DateRange::Filling filling)
{
    return DateRange(u"统计日期范围"_s, filling, [] { return QDateTime(QDate(2004, 3, 9), QTime(14, 0)); });
}

QLabel* visibleTip()
{
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->windowType() == Qt::ToolTip && window->isVisible()) return qobject_cast<QLabel*>(window);
    return nullptr;
}

} // namespace

class TestSmallClasses : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { applyTheme(*qApp); }

    void tooltipNeedsItsWindow()
    {
        cTooltip tip;
        QWidget form;
        QVERIFY(!tip.AddTool(&form, u"x"_s));
        QCOMPARE(tip.hwnd(), WId(0));
        QVERIFY(tip.Create(&form));
        const WId window = tip.hwnd();
        QVERIFY(window != 0);
        QVERIFY(tip.Create(&form)); // later calls do nothing
        QCOMPARE(tip.hwnd(), window);
    }

    void tooltipKeepsItsTools()
    {
        cTooltip tip;
        QWidget form;
        QLineEdit first(&form);
        FlexGrid second(&form);
        QTimer noControl;
        tip.Create(&form);
        QVERIFY(tip.AddTool(&first, u"甲"_s));
        QVERIFY(!tip.AddTool(&first, u"乙"_s)); // the text stays
        QCOMPARE(tip.ToolText(&first), u"甲");
        QVERIFY(tip.AddTool(&second, {}));
        QCOMPARE(tip.ToolText(&second), u"Tool2");
        QVERIFY(!tip.AddTool(&noControl, u"x"_s));
        tip.setToolText(&first, u"前\0后"_s);
        QCOMPARE(tip.ToolText(&first), u"前");
        tip.setToolText(&form, u"unknown"_s);
        QCOMPARE(tip.ToolText(&form), u"");
        QCOMPARE(tip.ToolCount(), 2);
        QVERIFY(tip.RemoveTool(&first));
        QVERIFY(!tip.RemoveTool(&first));
        auto passing = std::make_unique<QLabel>();
        QVERIFY(tip.AddTool(passing.get(), {}));
        QCOMPARE(tip.ToolText(passing.get()), u"Tool2");
        passing.reset();
        QCOMPARE(tip.ToolCount(), 1);
    }

    void tooltipPropertiesAsTheyAre()
    {
        cTooltip tip;
        QWidget form;
        tip.Create(&form);
        tip.setBackColor(Qt::yellow);
        QCOMPARE(tip.BackColor(), QColor(Qt::yellow));
        QCOMPARE(tip.BackColor(), QColor(Qt::yellow));
        tip.setForeColor(Qt::blue);
        QCOMPARE(tip.ForeColor(), QColor(Qt::black)); // a read turns the text black
        tip.setMaxTipWidth(480);
        QCOMPARE(tip.MaxTipWidth(), 480);
        tip.setMaxTipWidth(0);
        QCOMPARE(tip.MaxTipWidth(), -1);
        tip.setMargin(1, 7);
        QCOMPARE(tip.Margin(1), 7);
        QCOMPARE(tip.Margin(0), 0);
        tip.setDelayTime(2 + 4, 20000); // only the lowest two bits count
        QCOMPARE(tip.DelayTime(cTooltip::Autopop), 20000);
        tip.setDelayTime(cTooltip::Automatic, 100);
        QCOMPARE(tip.DelayTime(cTooltip::Initial), 100);
        QCOMPARE(tip.DelayTime(cTooltip::Reshow), 20);
        QCOMPARE(tip.DelayTime(cTooltip::Autopop), 1000);
    }

    void tooltipShowsWhenTheMouseRests()
    {
        cTooltip tip;
        QWidget form;
        FlexGrid grid(&form);
        form.resize(300, 200);
        grid.resize(300, 200);
        form.show();
        tip.Create(&form);
        tip.setDelayTime(cTooltip::Initial, 0);
        tip.AddTool(&grid, u"书    名:红楼梦\n作    者:曹雪芹"_s);
        QTest::mouseMove(grid.viewport(), {50, 50});
        QTRY_VERIFY(visibleTip());
        QCOMPARE(visibleTip()->text(), u"书    名:红楼梦\n作    者:曹雪芹");
        tip.setToolText(&grid, u"<b>"_s); // changes while it shows, and is no markup
        QCOMPARE(visibleTip()->text(), u"<b>");
        QCOMPARE(visibleTip()->textFormat(), Qt::PlainText);
        tip.setToolText(&grid, u""_s);
        QVERIFY(!visibleTip());
        QTest::mouseMove(grid.viewport(), {60, 60});
        QCoreApplication::processEvents();
        QVERIFY(!visibleTip());
        tip.setToolText(&grid, u"再"_s);
        QTest::mouseMove(grid.viewport(), {70, 70});
        QTRY_VERIFY(visibleTip());
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(grid.viewport(), &leave);
        QVERIFY(!visibleTip());
    }

    void menuCountsSeparators()
    {
        const std::tuple<int, int, QString> choices[] {
            {1, 1, u"增加"_s}, {3, 3, u"删除"_s}, {0, 0, {}}, {2, 0, {}}}; // a separator is no choice
        for (const auto& [chosen, number, text] : choices) {
            CreateMenu menu;
            menu.setChooser([](const QStringList&) { return 1; });
            menu.Popup({u"前"_s});
            menu.setChooser([&](const QStringList&) { return chosen; });
            QCOMPARE(menu.Popup({u" 增加 "_s, u" - "_s, u"删除"_s}), number);
            QCOMPARE(menu.SelMenuString(), text);
        }
    }

    void menuServesKeysAndDismissal()
    {
        CreateMenu menu;
        const auto press = [](std::initializer_list<Qt::Key> keys) {
            QTimer::singleShot(0, [keys = std::vector(keys)] {
                auto* shown = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                QVERIFY(shown);
                QCOMPARE(shown->actions().size(), 3);
                QVERIFY(shown->actions().at(1)->isSeparator());
                for (Qt::Key key : keys)
                    QTest::keyClick(shown, key);
            });
        };
        press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Return});
        QCOMPARE(menu.Popup({u"增加"_s, u"-"_s, u"修改"_s}), 3);
        QCOMPARE(menu.SelMenuString(), u"修改");
        press({Qt::Key_Escape});
        QCOMPARE(menu.Popup({u"增加"_s, u"-"_s, u"修改"_s}), 0);
        QCOMPARE(menu.SelMenuString(), u"");
    }

    void dateRangeFillsAndEmpties()
    {
        DateRange dates = range(DateRange::Filling::Fresh);
        QVERIFY(!dates.Text1[0].isEnabled());
        dates.Text1[0].setText(u"2003-1-1"_s);
        dates.Check1.setChecked(true);
        QCOMPARE(dates.from() + dates.to(), Today + Today);
        QVERIFY(dates.Text1[1].isEnabled());
        QCOMPARE(dates.Text1[1].palette().color(QPalette::Base), QColor(Qt::white));
        dates.Check1.setChecked(false);
        QCOMPARE(dates.from() + dates.to(), u"");
        QVERIFY(!dates.Text1[1].isEnabled());
        QCOMPARE(dates.Text1[1].palette().color(QPalette::Base), Theme().window);
    }

    void dateRangeKeepsWhatWasTyped()
    {
        DateRange dates = range(DateRange::Filling::Kept);
        dates.Check1.setChecked(true);
        QCOMPARE(dates.from(), Today); // both were empty
        dates.Text1[0].clear();
        dates.Text1[1].setText(u"2003-12-31"_s);
        dates.Check1.setChecked(false);
        QCOMPARE(dates.to(), u"2003-12-31");
        dates.Check1.setChecked(true);
        QCOMPARE(dates.from(), u""); // one was not empty
    }

    void dateRangeStopsAtTheFirstFault()
    {
        RecordingPrompt prompt;
        DateRange dates = range(DateRange::Filling::Fresh);
        dates.show();
        dates.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dates));
        dates.Check1.setChecked(true);
        QVERIFY(dates.Text1[0].hasFocus());
        QVERIFY(dates.passes(prompt));
        dates.Text1[1].setText(u"1-2-03"_s);
        QVERIFY(!dates.passes(prompt));
        QVERIFY(dates.Text1[1].hasFocus());
        dates.Text1[0].setText(u"x"_s);
        dates.Text1[0].setEnabled(false);
        QVERIFY(!dates.passes(prompt));
        QCOMPARE(prompt.shown.size(), 2U);
        QVERIFY(dates.Text1[0].hasFocus()); // and enabled again
        dates.Text1[0].clear();
        QVERIFY(!dates.passes(prompt));
        QCOMPARE(prompt.shown.size(), 2U);
    }

    void masksDates()
    {
        MaskDateEdit box;
        QCOMPARE(box.Text(), u"____-__-__");
        QCOMPARE(box.Text(), box.emptyText());
        box.setCursorPosition(0);
        QTest::keyClicks(&box, u"2003x+1"_s);
        QCOMPARE(box.Text(), u"2003-1_-__");
        box.setMask(u""_s);
        QTest::keyClicks(&box, u"a1"_s);
        QCOMPARE(box.Text(), u"a1");
        MaskDateEdit month(u"####-##"_s, u' ');
        QCOMPARE(month.Text(), u"    -  ");
        month.setText(u"2003-07"_s);
        QCOMPARE(month.Text(), u"2003-07");
    }

    void workingFormAsksForTheEnd()
    {
        WorkingFrm form;
        QVERIFY(form.isVisible() && !form.isModal());
        form.setTotal(3);
        QCOMPARE(form.labAll.text(), u"3");
        QVERIFY(form.Label3.isVisible());
        form.setDone(2);
        QCOMPARE(form.showBar.value(), 66);
        QCOMPARE(form.labTo.text(), u"2");
        QVERIFY(!form.Label3.isVisible());
        QVERIFY(!form.cancelRequested());
        form.cmdQuit.click();
        QVERIFY(form.cancelRequested() && form.isVisible());
        WorkingFrm closed;
        closed.close();
        QVERIFY(closed.cancelRequested() && closed.isVisible());
    }

    void failureFormTellsTheDetail()
    {
        QTimer::singleShot(0, [] {
            auto* form = qobject_cast<errMessageFrm*>(QApplication::activeModalWidget());
            QVERIFY(form);
            QCOMPARE(form->textErrMessage.toPlainText(), u"读者增加失败！\n\n   列名无效");
            QVERIFY(form->textErrMessage.isReadOnly());
            form->Command1.click();
        });
        ShowOperationFailure(nullptr, u"读者增加失败！"_s, u"列名无效"_s);
        ShowOperationFailure(nullptr, u"nothing happens"_s, {});
        QCOMPARE(failureText({}, u"x"_s), u"操作失败，详细信息如下：\n\n   x");
    }

    void drawsEveryPictureAtEveryScale()
    {
        QSet<QByteArray> pictures;
        for (const QString& key : u"JHBook Reader Tj Fkcl BookOut Jycs Password Quit"_s.split(u' '))
            for (const QSize size : {QSize(16, 16), QSize(32, 32), QSize(64, 64)}) {
                const QImage image = toolbarIcon(key).pixmap(size).toImage();
                QCOMPARE(image.size(), size);
                QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
                pictures.insert(
                    QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()));
            }
        QCOMPARE(pictures.size(), 24);
        QVERIFY(toolbarIcon(u"Nothing"_s).isNull());
        QLabel label(u"青简台"_s);
        label.resize(100, 30);
        QCOMPARE(picture(label, 1.5).size(), QSize(150, 45));
    }
};

QTEST_MAIN(TestSmallClasses)
#include "tst_small_classes.moc"
