#pragma once

#include "platform/core/dates.h"
#include "platform/db/connection_text.h"
#include "platform/db/driver.h"

namespace quilla {

/// Opens a physical connection by the driver that the text asks for. Throws `Error`, its text fit for the
/// operator, when the database can't be opened. `clock` must outlive the driver.
std::unique_ptr<Driver> openDriver(const ConnectionItems& items, const Clock& clock);

} // namespace quilla
