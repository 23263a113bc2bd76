#include "reservations/reservation_list_form.h"

#include "platform/ui/form/form.h"
#include "platform/ui/form/wait_cursor.h"
#include "reservations/reservation_list_ops.h"

namespace quilla {

frmTuShuYuyueList::frmTuShuYuyueList(Session& session)
    : ListScreen(u"frmTuShuYuyueList"_s, u"图书预约信息查看"_s)
    , Reader(session)
    , m_session(session)
{
    QUILLA_NAMES(cmdYuYue);
    setCaptions(cmdYuYue, {u"查看(&Y)"_s, u"退出(&Q)"_s});
    Grid1.setUp(2, ReservationListFormat, {0, 1500, 3200, 1800, 1300, 1200, 1200, 1000});
    arrange(column(row(u"输入读者证号："_s, Reader.Text2[0], Reader.cmdDuZhe, u"读者姓名："_s,
                       Reader.Text2[1], stretch()),
        group(u"读者预约信息"_s, Piece(Grid1).grow()).grow(), row(stretch(), cmdYuYue[0], cmdYuYue[1])));
    Reader.Text2[0].setFocus();
    Reader.onReader([this] { showReservations(); });
    onClick(cmdYuYue[0], [this] { showReservations(); });
    onClick(cmdYuYue[1], [this] { closeScreen(*this); });
}

void frmTuShuYuyueList::showReservations()
{
    if (Reader.code().isEmpty()) return Reader.Text2[0].setFocus();
    const WaitCursor wait;
    ListReservations(m_session, Reader.code(), Grid1.cells());
    Grid1.setRow(1);
}

} // namespace quilla
