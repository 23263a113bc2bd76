#include "reservations/return_notice_ops.h"

#include "frame/sublib.h"
#include "frame/work.h"

namespace quilla {

QString returnNotices(const QString& today)
{
    return u"select b.bookname as bookname,a.barcode as barcode,a.readercode as readercode,a.ordertime as ordertime,a.oldtime as oldtime,d.backdate as backdate,c.name from yyk a  join zsk b on a.zskid=b.zskid  join dzk c on a.readercode=c.readercode  join (Select max(backdate) as backdate,barcode from jhslsk group by barcode) d on a.barcode=d.barcode where a.barcode<>'' and a.oldtime>='%1' and a.oldtime>=d.backdate"_s
        .arg(today);
}

QString prepareReturnNotices(Session& session)
{
    const QString today = isoDate(GetServerDate(session));
    session.prompt.inform(
        u"请将打印机设置为【A4--横向(宽行)打印】\n设置正确后点击确定按钮！"_s, OperationTitle);
    return today;
}

void PrintReturnNotices(Session& session, ReportViewer& reports, const QString& today)
{
    auto notices = handled(
        session, Opened::Directly, [&](StrictWork& work) { return work.open(returnNotices(today)); },
        [&](const Error& error) {
            session.prompt.inform(u"出现异常错误！错误原因如下：\n"_s + error.text, OperationTitle);
        });
    if (!notices) return;
    if (notices->eof()) return session.prompt.inform(u"没有符合条件的图书！"_s, OperationTitle);
    reports.showReport(u"printYuYueOk"_s, *notices);
}

} // namespace quilla
