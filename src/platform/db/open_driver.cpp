#include "platform/db/open_driver.h"

#include "platform/db/embedded.h"
#include "platform/db/odbc/odbc_driver.h"
#include "platform/db/sqlite/library_order.h"

namespace quilla {

std::unique_ptr<Driver> openDriver(const ConnectionItems& items, const Clock& clock)
{
    const auto file = embeddedFileOf(items);
    if (!file) return std::make_unique<OdbcDriver>(items);
    tightenEmbedded(*file);
    return openLibraryFile(*file, clock);
}

} // namespace quilla
