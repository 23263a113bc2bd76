#pragma once

#include "platform/db/recordset.h"

namespace quilla {

/// Shows a report on the screen, from where it can be printed.
class ReportViewer {
public:
    virtual ~ReportViewer() = default;
    /// `design` is the name of a report design, `rows` what it lists; read while it is shown.
    virtual void showReport(const QString& design, Recordset& rows) = 0;
};

} // namespace quilla
