#pragma once

#include "frame/session.h"
#include "platform/grid/grid_model.h"

namespace quilla {

/// Captions and alignment of the list of reservations. Its first column, the number of the title, is hidden.
inline const QString ReservationListFormat
    = u"^控制ID|^索书号|<正题名|ISBN|条形码|预约时间|到期时间|是否到书"_s;

/// Fills `grid` with the reservations of the reader, with those of all readers when the code is empty; blanks
/// around the code don't count. A reservation whose title is gone is left out, one whose reader is gone is
/// not. A message says when there are none; the list is empty then. A failure is reported and leaves the grid
/// as it was.
void ListReservations(Session& session, const QString& readercode, GridModel& grid);

} // namespace quilla
