#include "statistics/loan_count_form.h"

#include "platform/ui/form/form.h"

#include <QButtonGroup>

namespace quilla {

namespace {

/// Without a group of their own the options of the form would also exclude those in the frames, which are
/// their parent's buttons, too: both ways of counting could be on at once, and Tab would pass the frames
/// over.
template <std::size_t Count> void excludeEachOther(QRadioButton (&options)[Count], QWidget& form)
{
    auto* group = new QButtonGroup(&form);
    for (QRadioButton& option : options)
        group->addButton(&option);
}

} // namespace

LtCountFrm::LtCountFrm(const Workplace& place)
    : ReportStatistic(place, u"LtCountFrm"_s, u"流量统计"_s, u"根据流通日期统计"_s)
    , CmdSave(u"&O 确定"_s)
    , CmdExit(u"&X 关闭"_s)
{
    QUILLA_NAMES(Option1, Frame2, Option2, Frame3, Option3, CmdSave, CmdExit);
    setCaptions(Option1, {u"按读者统计"_s, u"按书目统计"_s});
    setCaptions(Option2, {u"根据读者统计"_s, u"根据读者单位统计"_s, u"根据读者类型统计"_s});
    setCaptions(Option3, {u"按书目进行统计"_s, u"按书册进行统计"_s});
    layOut();
    excludeEachOther(Option1, *this);
    excludeEachOther(Option2, *this);
    excludeEachOther(Option3, *this);
    for (QRadioButton* first : {&Option1[0], &Option2[0], &Option3[0]})
        first->setChecked(true);
    follow();
    onClick(Option1, [this](int) { follow(); });
    onClick(CmdSave, [this] { start(countTriple(countBy())); });
    onClick(CmdExit, [this] { closeScreen(*this); });
}

void LtCountFrm::layOut()
{
    build(*this,
        column(row(column(Option1[0],
                       group(Frame2, column(Option2[0], Option2[1], Option2[2], stretch())).grow())
                       .grow(),
                   column(Option1[1], group(Frame3, column(Option3[0], Option3[1], stretch())).grow()).grow())
                   .grow(),
            Dates, row(stretch(), CmdSave, CmdExit)));
}

void LtCountFrm::follow()
{
    Frame2.setEnabled(Option1[0].isChecked());
    Frame3.setEnabled(!Option1[0].isChecked());
}

CountBy LtCountFrm::countBy() const
{
    if (!Option1[0].isChecked()) return Option3[0].isChecked() ? CountBy::Title : CountBy::Copy;
    if (Option2[0].isChecked()) return CountBy::Reader;
    return Option2[1].isChecked() ? CountBy::Unit : CountBy::Type;
}

/// The report has no order of its own to give.
bool LtCountFrm::report(const std::optional<DateLimits>& dates, const QString& condition, const QString&)
{
    const auto limits = dates ? limitsOf(dates->from, dates->to) : std::nullopt;
    return reportCounts(m_session, m_reports, countBy(), countStatement(countBy(), condition, limits));
}

} // namespace quilla
