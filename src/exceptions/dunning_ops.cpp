#include "exceptions/dunning_ops.h"

#include "frame/work.h"

namespace quilla {

namespace {

/// A kind of notice: what is selected, what it is grouped by, whose name the last column has, and what it is
/// called.
struct NoticeKind {
    QString select;
    QString groups;
    QString title;
    QString name;
};

NoticeKind noticeKind(const QString& groupField)
{
    if (groupField == u"readercode")
        return {u"select name+' 超期图书如下：' as GroupKey,readunit as itital,* from JhskCqV"_s,
            u"'readercode','GroupKey'"_s, u"读者单位"_s, u"个人催还单"_s};
    return {
        u"select readunit+' 超期图书如下：' as GroupKey,readercode,name,name as itital,readunit,barcode,bookname,orderdate,yhdate from JhskCqV"_s,
        u"'GroupKey'"_s, u"读者姓名"_s, u"集体催还单"_s};
}

} // namespace

QString dunningStatement(const QString& groupField, const ListSearch& list)
{
    const NoticeKind kind = noticeKind(groupField);
    return u" SHAPE {"_s + list.of(kind.select).statement() + u"}  AS JHSKT COMPUTE JHSKT BY "_s
        + kind.groups;
}

void PrintDunningNotices(
    Session& session, ReportViewer& reports, const QString& groupField, const ListSearch& list)
{
    ResumingWork work(session, Opened::Shaped);
    auto notices
        = work.attempt([&] { return work.connection().openShaped(dunningStatement(groupField, list)); });
    if (!notices) return;
    reports.showReport(u"JHSKCQRpt"_s, *notices, {noticeKind(groupField).title, {}});
    session.NoticesShown.insert(groupField, session.clock.now());
}

QString noticesShownEarlier(const Session& session, const QString& groupField)
{
    const auto shown = session.NoticesShown.constFind(groupField);
    if (shown == session.NoticesShown.constEnd() || shown->date != session.clock.now().date) return {};
    return u"今天 %1 已打印过%2，请勿重复发放。"_s.arg(
        shown->time.toString(u"HH:mm"), noticeKind(groupField).name);
}

} // namespace quilla
