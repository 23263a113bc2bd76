#pragma once

#include "platform/db/recordset.h"
#include "platform/report/chart.h"

#include <QHash>

namespace quilla {

/// What a screen writes into a report before it is shown.
struct ReportTexts {
    QString title {}; ///< the report's title, where its labels show it; empty keeps the design's own
    QHash<QString, QString> captions {}; ///< of labels, by their names in the design; taken to the letter
};

/// Shows a report on the screen, from where it can be printed. Each call is a report of its own.
class ReportViewer {
public:
    virtual ~ReportViewer() = default;
    /// `design` is the name of a report design. `rows` is what it lists, for a design with groups a shaped
    /// result; it is read from its first row to its end before this returns. When the rows lack a field of
    /// the design, that is reported and no report opens.
    virtual void showReport(const QString& design, Recordset& rows, const ReportTexts& texts = {}) = 0;
    /// Shows bars in the same way.
    virtual void showChart(const Chart& chart) = 0;
};

} // namespace quilla
