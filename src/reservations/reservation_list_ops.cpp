#include "reservations/reservation_list_ops.h"

#include "frame/sublib.h"
#include "frame/work.h"

namespace quilla {

namespace {

QString reservationsOf(const QString& readercode)
{
    const QString all
        = u"select yyk.zskid,classcode + '/'+ convert(varchar,zch) as shh, bookname,isbn,barcode,convert(varchar,ordertime,111),convert(varchar,oldtime,111),case orderstatus when 1 then '到书' when 0 then '没到' end  from yyk join zsk  on yyk.zskid=zsk.zskid "_s;
    const QString code = SqlText(readercode);
    return code.isEmpty() ? all : all + u" where  yyk.readercode='%1'"_s.arg(code);
}

enum Column { ReservedOn = 5, HeldUntil = 6 };

/// The statement brings its dates with slashes, as 2026/03/01.
void writeDatesWithDashes(GridModel& grid)
{
    for (int row = 1; row < grid.Rows(); ++row)
        for (const int col : {ReservedOn, HeldUntil})
            grid.setTextMatrix(row, col, grid.TextMatrix(row, col).replace(u'/', u'-'));
}

qsizetype fill(GridModel& grid, Recordset& reservations)
{
    const GridModel::Filling filling(grid);
    const qsizetype count = grid.bind(reservations);
    grid.setFormatString(ReservationListFormat);
    writeDatesWithDashes(grid);
    return count;
}

} // namespace

void ListReservations(Session& session, const QString& readercode, GridModel& grid)
{
    const auto tell = [&](const Error& error) { session.prompt.inform(error.text, OperationTitle); };
    const auto count = handled(
        session, Opened::Directly,
        [&](StrictWork& work) {
            Recordset reservations = work.open(reservationsOf(readercode));
            return fill(grid, reservations);
        },
        tell);
    if (count == 0) session.prompt.inform(u"该读者没有预约信息！"_s, OperationTitle);
}

} // namespace quilla
