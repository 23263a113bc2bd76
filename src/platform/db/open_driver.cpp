#include "platform/db/open_driver.h"

#include "platform/db/embedded.h"
#include "platform/db/server_schema.h"
#include "platform/db/sqlite/library_order.h"

namespace quilla {

namespace {

std::unique_ptr<Driver> openServer(const ConnectionItems& items)
{
    auto driver = std::make_unique<OdbcDriver>(items);
    refuseOtherSchema(*driver);
    return driver;
}

} // namespace

std::unique_ptr<Driver> openDriver(const ConnectionItems& items, const Clock& clock)
{
    const auto file = embeddedFileOf(items);
    if (!file) return openServer(items);
    tightenEmbedded(*file);
    return openLibraryFile(*file, clock);
}

} // namespace quilla
