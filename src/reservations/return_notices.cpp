#include "reservations/return_notices.h"

#include "platform/ui/form/wait_cursor.h"
#include "reservations/return_notice_ops.h"

namespace quilla {

void printReturnNotices(const Workplace& place)
{
    const QString today = prepareReturnNotices(place.session);
    const WaitCursor hourglass;
    PrintReturnNotices(place.session, place.reports, today);
}

} // namespace quilla
