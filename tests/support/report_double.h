#pragma once

#include "platform/report/report_viewer.h"

#include <QStringList>

namespace quilla {

/// Opens no report and writes down which it was asked for.
class ReportDouble final : public ReportViewer {
public:
    void showReport(const QString& design, Recordset&, const ReportTexts&) override { shown.append(design); }
    QStringList shown;
};

/// Writes down the design and, of each row, the fields asked for.
class PrintedRows final : public ReportViewer {
public:
    explicit PrintedRows(QStringList names)
        : fields(std::move(names))
    {
    }
    void showReport(const QString& design, Recordset& rows, const ReportTexts&) override
    {
        shown.append(design);
        for (; !rows.eof(); rows.next())
            for (const QString& field : fields)
                shown.append(rows.field(field).text());
    }
    QStringList fields;
    QStringList shown;
};

} // namespace quilla
