#include "app/gallery_ops.h"

#include "frame/work.h"

namespace quilla {

namespace {

QString firstOf(Session& session, const QString& tsql)
{
    ResumingWork work(session);
    if (!work) return {};
    const Recordset row = work.select(tsql);
    return row.eof() ? QString() : row.field(0).text();
}

} // namespace

QString readerForPictures(Session& session)
{
    return firstOf(session,
        u"select top 1 readercode from dzk where readstatus='有效' order by orderbook desc,readercode"_s);
}

QString reservingReaderForPictures(Session& session)
{
    return firstOf(session,
        u"select top 1 readercode from yyk group by readercode order by count(oldtime) desc,count(*) desc,readercode"_s);
}

QString overdueCopyForPictures(Session& session)
{
    return firstOf(session, u"select top 1 barcode from JhskCqV order by cqday desc,barcode"_s);
}

} // namespace quilla
