#include "app/gallery_ops.h"

#include "frame/sublib.h"

namespace quilla {

QString readerForPictures(Session& session)
{
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return {};
    const Recordset row = openOrEmpty(session, conn,
        u"select top 1 readercode from dzk where readstatus='有效' order by orderbook desc,readercode"_s);
    session.error.clear();
    return row.eof() ? QString() : row.field(0).text();
}

} // namespace quilla
