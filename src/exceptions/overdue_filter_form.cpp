#include "exceptions/overdue_filter_form.h"

#include "exceptions/overdue_ops.h"
#include "exceptions/overdue_result_form.h"
#include "platform/ui/form/form.h"
#include "platform/ui/form/open_list.h"
#include "platform/ui/look/theme.h"

namespace quilla {

namespace {

enum Part { Reader, Unit, Type };

/// The entries are there while the box is ticked, and no text stays when it is not.
void fillWhileTicked(QCheckBox& box, QComboBox& list, std::function<QStringList()> entries)
{
    QObject::connect(&box, &QCheckBox::toggled, &list, [&list, entries = std::move(entries)](bool ticked) {
        list.clear();
        if (ticked) list.addItems(entries());
        list.setCurrentIndex(-1);
        list.clearEditText();
    });
}

} // namespace

CqTjFrm::CqTjFrm(const Workplace& place)
    : CmdOK(u"&T 统计"_s)
    , CmdExit(u"&X 关闭"_s)
    , m_session(place.session)
    , m_host(place.host)
{
    setObjectName(u"CqTjFrm"_s);
    setWindowTitle(u"超期统计"_s);
    QUILLA_NAMES(Check1, Text1, Combo1, Combo2, CmdOK, CmdExit);
    setCaptions(Check1, {u"单个读者超期情况"_s, u"某单位读者超期情况"_s, u"某类型读者超期情况"_s});
    takeAnyText(Combo1);
    takeAnyText(Combo2);
    Combo1.setAccessibleName(u"读者单位"_s);
    Combo2.setAccessibleName(u"读者类型"_s);
    layOut();
    wire();
}

void CqTjFrm::layOut()
{
    build(*this,
        column(Check1[Reader], row(room(20), u"输入姓名或条码号"_s, Piece(Text1).grow()), Check1[Unit],
            row(room(20), Piece(Combo1).grow()), Check1[Type], row(room(20), Piece(Combo2).grow()), stretch(),
            row(stretch(), CmdOK, CmdExit)));
    resize(pixelsOf(5400, *this), sizeHint().height());
}

void CqTjFrm::wire()
{
    fillWhileTicked(Check1[Unit], Combo1, [this] { return unitsToChoose(m_session); });
    fillWhileTicked(Check1[Type], Combo2, [this] { return typesToChoose(m_session); });
    enterAsTab({Text1, Combo1, Combo2, Check1[Reader], Check1[Unit], Check1[Type]});
    onClick(CmdOK, [this] { loadData({}, {}); });
    onClick(CmdExit, [this] { closeScreen(*this); });
}

QString CqTjFrm::conditionAfter(const QString& given) const
{
    const auto part = [this](Part box, const QString& text) {
        return Check1[box].isChecked() ? std::optional(text) : std::nullopt;
    };
    return overdueCondition(
        {part(Reader, Text1.text()), part(Unit, Combo1.currentText()), part(Type, Combo2.currentText())},
        given);
}

void CqTjFrm::loadData(const QString& condition, const QString& order)
{
    auto* result = qobject_cast<CQListFrm*>(m_host.openScreen(u"CQListFrm"_s));
    if (result) result->loadData(conditionAfter(condition), order);
    closeScreen(*this);
}

} // namespace quilla
