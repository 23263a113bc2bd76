#include "platform/db/open_driver.h"

#include "platform/db/embedded.h"
#include "platform/db/odbc/odbc_driver.h"
#include "platform/db/sqlite/sqlite_driver.h"

namespace quilla {

std::unique_ptr<Driver> openDriver(const ConnectionItems& items, const Clock& clock)
{
    if (const auto file = embeddedFileOf(items)) return std::make_unique<SqliteDriver>(*file, clock);
    return std::make_unique<OdbcDriver>(items);
}

} // namespace quilla
