#include "frame/about_ops.h"

#include "platform/core/text.h"
#include "platform/db/about_database.h"

#include <QCoreApplication>
#include <QSysInfo>

namespace quilla {

QStringList aboutLines(const Session& session)
{
    const DatabaseFacts database = databaseFacts(ConnectionItems(session.ConnectionText));
    const QStringList libraries
        = QStringList {u"Qt "_s + QString::fromLatin1(qVersion())} + databaseLibraries();
    return {
        u"版本："_s + QCoreApplication::applicationVersion(),
        u"数据库："_s + database.engine,
        u"数据位置："_s + database.place,
        u"程序库："_s + libraries.join(u"，"),
        u"操作系统："_s + QSysInfo::prettyProductName(),
    };
}

} // namespace quilla
