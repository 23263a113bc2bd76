#include "app/gallery_ops.h"
#include "app/pictures/pictures.h"
#include "platform/report/report_preview.h"
#include "statistics/circulation_form.h"
#include "statistics/fine_statistic_form.h"
#include "statistics/loan_count_form.h"
#include "statistics/loan_history_form.h"
#include "statistics/period_form.h"
#include "statistics/query_form.h"
#include "statistics/ranking_form.h"
#include "statistics/yearly_readers_form.h"

#include <QApplication>
#include <QKeyEvent>

namespace quilla::Pictures {

namespace {

/// What the form has put into a preview window, where there is one.
void addPreview(Album& album, const QString& name)
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* preview = qobject_cast<ReportPreview*>(window);
        if (!preview || !preview->isVisible()) continue;
        album.add(name, *preview);
        preview->close();
    }
}

class Nobody final : public QueryReceiver {
    void loadData(const QString&, const QString&) override { }
};

} // namespace

/// Half filled in, as an operator leaves it in the middle of the work.
void query(Album& album, const Workplace& place)
{
    Nobody nobody;
    QueryFrm form(place.session.prompt, nobody);
    form.LoadCombo(u"barcode,bookname,readunit,readercode,name,orderdate,yhdate,cqday"_s,
        u"条形码,书名,读者单位,读者证号,读者姓名,借书日期,应还日期,超期天数"_s,
        u"字符,字符,字符,字符,字符,日期,日期,数字"_s);
    form.lSql.setText(u"B1"_s);
    form.Command3.click();
    form.Command1[0].click();
    form.cOrderby.setCurrentIndex(3);
    form.Label3[0].click();
    form.LFields.setCurrentRow(6);
    form.cFuhao.setCurrentIndex(3);
    form.lSql.setText(u"2004-05"_s);
    form.Command3.click();
    form.lSql.setText(u"2004"_s);
    album.add(form.objectName(), form);
}

/// Each mode with its rows.
void circulation(Album& album, const Workplace& place)
{
    for (int mode = 0; mode < 4; ++mode) {
        LttjFrm form(place);
        form.Option1[mode].click();
        form.loadData({}, {});
        album.add(u"%1-%2"_s.arg(form.objectName()).arg(mode), form);
    }
}

void loanCounts(Album& album, const Workplace& place)
{
    LtCountFrm form(place);
    form.Dates.Check1.click();
    album.add(form.objectName(), form);
}

void fineStatistic(Album& album, const Workplace& place)
{
    FkTjFrm form(place);
    form.Dates.Check1.click();
    album.add(form.objectName(), form);
}

void loanHistory(Album& album, const Workplace& place)
{
    JylsQueryFrm form(place);
    form.Text1[17].setText(readerForPictures(place.session));
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(&form.Text1[17], &enter);
    album.add(form.objectName(), form);
}

/// Without a class, then with the list of classes open.
void titleRanking(Album& album, const Workplace& place)
{
    frmtsjh form(place);
    form.Text1.clear();
    form.Combo1[0].setEditText(u"全部"_s);
    form.Command1[0].click();
    album.add(form.objectName(), form);
    Q_EMIT form.MSHFlexGrid2.wanted(form.Text1);
    album.add(form.objectName() + u"-classes"_s, form);
}

void readerRanking(Album& album, const Workplace& place)
{
    dzjyphbFrm form(place);
    form.Text1[2].setText(u"2020-01-01"_s);
    form.Command1[0].click();
    album.add(form.objectName(), form);
}

void yearlyReaders(Album& album, const Workplace& place)
{
    frmndzjytj form(place);
    form.Command1[0].click();
    album.add(form.objectName(), form);
    Q_EMIT form.MSHFlexGrid1.wanted(form.Text2[1]);
    album.add(form.objectName() + u"-types"_s, form);
}

/// After a run, then with the calendar open; on paper where it prints itself.
void periodStatistic(Album& album, const Workplace& place, std::size_t index)
{
    PeriodStatisticFrm form(place, periodStatistics()[index]);
    form.cmdNewSelect.click();
    album.add(form.objectName(), form);
    if (!periodStatistics()[index].paperName.isEmpty()) form.cmdClick[2].click();
    form.cmdChart.click();
    addPreview(album, form.objectName() + u"-chart"_s);
    if (index > 0) return;
    form.Box.labMonthhh.click();
    album.add(form.objectName() + u"-calendar"_s, form);
}

} // namespace quilla::Pictures
