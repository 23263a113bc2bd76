#include "support/scripted_prompt.h"
#include "support/window_steps.h"
#include "ui/reader_rows.h"

#include "platform/ui/form/date_range.h"
#include "platform/ui/form/error_form.h"
#include "platform/ui/form/list_chooser.h"
#include "platform/ui/form/popup_menu.h"
#include "platform/ui/form/tooltip.h"
#include "platform/ui/form/working_form.h"
#include "platform/ui/grid/flex_grid.h"
#include "platform/ui/look/icons.h"
#include "platform/ui/look/theme.h"

#include <QMenu>
#include <QScrollBar>

#include <cmath>

using namespace quilla;

namespace {

const QString Today = u"2004-03-09"_s;

DateRange range(DateRange::Filling filling)
{
    return DateRange(u"统计日期范围"_s, filling, [] { return Moment {QDate(2004, 3, 9), QTime(14, 0)}; });
}

QLabel* visibleTip()
{
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->windowType() == Qt::ToolTip && window->isVisible()) return qobject_cast<QLabel*>(window);
    return nullptr;
}

double brightness(const QColor& colour)
{
    const auto linear
        = [](double part) { return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

/// As the guidelines for web contents reckon it.
double contrast(const QColor& first, const QColor& second)
{
    const auto [dark, bright] = std::minmax({brightness(first), brightness(second)});
    return (bright + 0.05) / (dark + 0.05);
}

} // namespace

class TestSmallClasses : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { applyTheme(*qApp); }

    void wordsStandOutInBothShades()
    {
        for (const Theme& theme : {Theme(), Theme::dark()}) {
            for (const QColor& ground : {theme.window, theme.surface, theme.zebra, theme.header})
                for (const QColor& word :
                    {theme.text, theme.mutedText, theme.link, theme.ok, theme.warning, theme.error})
                    QVERIFY2(contrast(word, ground) >= 4.5, qPrintable(word.name() + ground.name()));
            for (const QColor& ground : {theme.restingSelection, theme.figures, theme.highlight})
                QVERIFY(contrast(theme.text, ground) >= 4.5);
            for (const QColor& ground : {theme.accent, theme.titleBar})
                QVERIFY(contrast(theme.accentText, ground) >= 4.5);
            for (const QColor& edge : {theme.border, theme.accent})
                QVERIFY(contrast(edge, theme.window) >= 3 && contrast(edge, theme.surface) >= 3);
        }
    }

    void tooltipKeepsItsTools()
    {
        cTooltip tip;
        QWidget form;
        QLineEdit first(&form);
        FlexGrid second(&form);
        QTimer noControl;
        QVERIFY(!tip.AddTool(&first, u"x"_s)); // there is no window yet
        tip.Create(&form);
        const WId window = tip.hwnd();
        tip.Create(&form); // later calls do nothing
        QCOMPARE(tip.hwnd(), window);
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
        QVERIFY(tip.RemoveTool(&first) && !tip.RemoveTool(&first));
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
        tip.setForeColor(Qt::blue);
        QCOMPARE(tip.ForeColor(), QColor(Qt::black)); // a read turns the text black
        tip.setMaxTipWidth(0);
        QCOMPARE(tip.MaxTipWidth(), -1);
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
        tip.setToolText(&grid, u"<b>"_s); // changes while it shows, and is no markup
        QCOMPARE(visibleTip()->text(), u"<b>");
        QCOMPARE(visibleTip()->textFormat(), Qt::PlainText);
        tip.setToolText(&grid, u""_s);
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
        const std::pair<std::vector<Qt::Key>, int> choices[] {
            {{Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}, 3}, {{Qt::Key_Escape}, 0}};
        for (const auto& choice : choices) {
            QTimer::singleShot(0, [&keys = choice.first] {
                auto* shown = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                QVERIFY(shown && shown->actions().at(1)->isSeparator());
                for (Qt::Key key : keys)
                    QTest::keyClick(shown, key);
            });
            QCOMPARE(menu.Popup({u"增加"_s, u"-"_s, u"修改"_s}), choice.second);
        }
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
        dates.Check1.setChecked(false);
        QCOMPARE(dates.from() + dates.to(), u"");
        QVERIFY(!dates.Text1[1].isEnabled());
    }

    void dateRangeKeepsWhatWasTyped()
    {
        DateRange dates = range(DateRange::Filling::Kept);
        dates.Check1.setChecked(true);
        QCOMPARE(dates.from(), Today); // both were empty
        dates.Text1[0].clear();
        dates.Check1.setChecked(false);
        QCOMPARE(dates.to(), Today);
        dates.Check1.setChecked(true);
        QCOMPARE(dates.from(), u""); // one was not empty
    }

    void dateRangeStopsAtTheFirstFault()
    {
        ScriptedPrompt prompt;
        DateRange dates = range(DateRange::Filling::Fresh);
        appear(dates);
        dates.Check1.setChecked(true);
        QVERIFY(dates.Text1[0].hasFocus());
        QVERIFY(dates.passes(prompt));
        dates.Text1[1].setText(u"1-2-03"_s);
        prompt.expectStart(u"请输入完整的日期格式"_s);
        QVERIFY(!dates.passes(prompt));
        QVERIFY(dates.Text1[1].hasFocus());
        dates.Text1[0].setText(u"x"_s);
        dates.Text1[0].setEnabled(false);
        prompt.expectStart(u"请输入正确的日期格式"_s);
        QVERIFY(!dates.passes(prompt));
        QVERIFY(dates.Text1[0].hasFocus()); // and enabled again
        dates.Text1[0].clear();
        QVERIFY(!dates.passes(prompt));
        QCOMPARE(prompt.takeComplaints(), QString());
    }

    void masksDates()
    {
        MaskDateEdit box;
        QCOMPARE(box.Text(), u"____-__-__");
        box.setCursorPosition(0);
        QTest::keyClicks(&box, u"2003x+1"_s);
        QCOMPARE(box.Text(), u"2003-1_-__");
        box.setMask(u""_s);
        QTest::keyClicks(&box, u"a1"_s);
        QCOMPARE(box.Text(), u"a1");
        QCOMPARE(MaskDateEdit(u"####-##"_s, u' ').Text(), u"    -  ");
    }

    void workingFormAsksForTheEnd()
    {
        WorkingFrm form;
        form.setTotal(3);
        form.setDone(2);
        QCOMPARE(form.showBar.value(), 66);
        QVERIFY(!form.cancelRequested());
        form.close();
        QVERIFY(form.cancelRequested() && form.isVisible());
    }

    void failureFormTellsTheDetail()
    {
        QTimer::singleShot(0, [] {
            auto* form = qobject_cast<errMessageFrm*>(QApplication::activeModalWidget());
            QVERIFY(form);
            QCOMPARE(form->textErrMessage.toPlainText(), u"读者增加失败！\n\n   列名无效");
            QTest::keyClick(&form->textErrMessage, Qt::Key_Escape); // nothing is typed here
        });
        ShowOperationFailure(nullptr, u"读者增加失败！"_s, u"列名无效"_s);
        ShowOperationFailure(nullptr, u"nothing happens"_s, {});
        QCOMPARE(failureText({}, u"x"_s), u"操作失败，详细信息如下：\n\n   x");
    }

    void drawsEveryPictureAtEveryScale()
    {
        QSet<qint64> pictures;
        for (const QString& key : u"JHBook Reader Tj Fkcl BookOut Jycs Password Quit"_s.split(u' '))
            for (const int size : {16, 32, 64}) {
                const QImage image = toolbarIcon(key).pixmap(size).toImage();
                QCOMPARE(image.size(), QSize(size, size));
                QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
                pictures.insert(qint64(qHashBits(image.constBits(), std::size_t(image.sizeInBytes()))));
            }
        QCOMPARE(pictures.size(), 24);
    }

    void choosesFromAListUnderABox()
    {
        QWidget form;
        TextBox box;
        box.setParent(&form);
        form.resize(400, 200);
        appear(form);
        gListfrm list(box);
        const std::pair<Qt::Key, QString> keys[] {{Qt::Key_Return, u"R1"_s}, {Qt::Key_Space, u"R1"_s},
            {Qt::Key_Escape, u"before"_s}, {Qt::Key_unknown, u"R2"_s}}; // at last a click
        for (const auto& [key, taken] : keys) {
            box.setText(u"before"_s);
            Recordset four = readers(4);
            list.loadData(four);
            list.popUp();
            QCOMPARE(list.pos(), box.mapToGlobal(QPoint(0, box.height())));
            if (key != Qt::Key_unknown)
                QTest::keyClick(&list.Grid1, key);
            else
                clickLine(list.Grid1, 2);
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
        QCOMPARE(linesShown(9), 3);
        QVERIFY(list.Grid1.verticalScrollBar()->isVisible());
    }
};

QTEST_MAIN(TestSmallClasses)
#include "test_small_classes.moc"
