#include "frame/main_ops.h"

#include "frame/sublib.h"
#include "frame/work.h"
#include "platform/db/embedded.h"

namespace quilla {

namespace {

/// The built-in library is named by no server and mostly by no database.
QString databaseText(const Session& session)
{
    QString server = session.ServerName;
    QString database = session.DatabaseName;
    if (embeddedFileOf(ConnectionItems(session.ConnectionText))) {
        if (server.isEmpty()) server = u"本机"_s;
        if (database.isEmpty()) database = u"内置数据库"_s;
    }
    return u"当前数据库："_s + server + u"上的【"_s + database + u"】"_s;
}

} // namespace

std::array<QString, 3> statusTexts(Session& session)
{
    const Moment now = GetServerDate(session);
    return {
        u"当前日期："_s + now.date.toString(u"yyyy年MM月dd日") + now.time.toString(u"HH时"),
        u"操作员：  "_s + session.OperatorName,
        databaseText(session),
    };
}

bool overdueLoansExist(Session& session)
{
    StrictWork work(session);
    if (!work) return false;
    const QString today = isoDate(GetServerDate(session));
    return !work.open(u"Select Top 1 barcode From JHSK Where yhdate<'%1'"_s.arg(today)).eof();
}

bool openingSteps(Session& session, const std::function<void(const std::array<QString, 3>&)>& showStatus)
{
    const ResumeScope resume(session.error);
    bool look = false;
    session.error.attempt([&] { showStatus(statusTexts(session)); });
    session.error.attempt([&] {
        look = overdueLoansExist(session)
            && session.prompt.ask(u"借还书库中存在超期书刊，是否查看？"_s, OperationTitle, Icon::Warning);
    });
    if (session.error.isSet())
        session.prompt.inform(u"出现意外错误！详细信息如下：\n"_s + session.error.text(), OperationTitle);
    return look;
}

bool confirmExit(Session& session)
{
    return session.prompt.ask(u"是否确定退出青简台？（Y/N）"_s, OperationTitle);
}

} // namespace quilla
