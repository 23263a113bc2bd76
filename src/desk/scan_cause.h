#pragma once

#include "desk/scan_log.h"
#include "platform/core/error.h"

namespace quilla {

/// Why a scan failed and what to do, in words for the operator. Number 0: no statement failed, yet the copy
/// did not change.
QString causeText(const Failure& failure);

/// The line of the log about it: time, what, codes, the number and what it means. The engine's own words stay
/// out, since they may quote a row.
QString causeLine(const ScanEntry& scan, const Failure& failure);

} // namespace quilla
