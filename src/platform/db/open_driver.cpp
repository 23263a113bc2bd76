#include "platform/db/open_driver.h"

#include "platform/core/error.h"
#include "platform/core/text.h"
#include "platform/db/embedded.h"
#include "platform/db/sqlite/sqlite_driver.h"

#include <algorithm>

namespace quilla {

namespace {

std::unique_ptr<Driver> openServer(const ConnectionItems& items)
{
    const QString name = items.value(u"DSN").value_or(QString());
    const auto known = odbcDataSources();
    if (!name.isEmpty() && std::find(known.begin(), known.end(), name) == known.end())
        throw Error(ErrorNumber::CannotOpen, u"ODBC"_s, u"本机没有名为“%1”的数据源。"_s.arg(name));
    throw Error(ErrorNumber::CannotOpen, u"ODBC"_s,
        u"尚不支持数据库服务器，请选择数据源“%1”。"_s.arg(BuiltInDataSource));
}

} // namespace

std::unique_ptr<Driver> openDriver(const ConnectionItems& items, const Clock& clock)
{
    if (const auto file = embeddedFileOf(items)) return std::make_unique<SqliteDriver>(*file, clock);
    return openServer(items);
}

} // namespace quilla
