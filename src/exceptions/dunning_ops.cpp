#include "exceptions/dunning_ops.h"

#include "frame/work.h"

namespace quilla {

namespace {

/// A kind of notice: what is selected, what it is grouped by, and whose name the last column has.
struct NoticeKind {
    QString select;
    QString groups;
    QString title;
};

NoticeKind noticeKind(const QString& groupField)
{
    if (groupField == u"readercode")
        return {u"select name+' 超期图书如下：' as GroupKey,readunit as itital,* from JhskCqV"_s,
            u"'readercode','GroupKey'"_s, u"读者单位"_s};
    return {
        u"select readunit+' 超期图书如下：' as GroupKey,readercode,name,name as itital,readunit,barcode,bookname,orderdate,yhdate from JhskCqV"_s,
        u"'GroupKey'"_s, u"读者姓名"_s};
}

} // namespace

QString dunningStatement(const QString& groupField, const OverdueSelection& selection)
{
    const NoticeKind kind = noticeKind(groupField);
    QString inner = kind.select;
    if (!selection.condition.isEmpty()) inner += u" where "_s + selection.condition;
    if (!selection.order.isEmpty()) inner += u" order by "_s + selection.order;
    return u" SHAPE {"_s + inner + u"}  AS JHSKT COMPUTE JHSKT BY "_s + kind.groups;
}

void PrintDunningNotices(
    Session& session, ReportViewer& reports, const QString& groupField, const OverdueSelection& selection)
{
    ResumingWork work(session, Opened::Shaped);
    auto notices
        = work.attempt([&] { return work.connection().openShaped(dunningStatement(groupField, selection)); });
    if (notices) reports.showReport(u"JHSKCQRpt"_s, *notices, {noticeKind(groupField).title, {}});
}

} // namespace quilla
