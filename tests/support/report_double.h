#pragma once

#include "platform/report/report_viewer.h"

#include <QStringList>

namespace quilla {

/// Opens no report and writes down which it was asked for, and of each row the fields that a test names.
class ReportDouble final : public ReportViewer {
public:
    explicit ReportDouble(QStringList names = {})
        : fields(std::move(names))
    {
    }
    void showReport(const QString& design, Recordset& rows, const ReportTexts& texts) override
    {
        shown.append(design);
        last = texts;
        for (; !fields.isEmpty() && !rows.eof(); rows.next())
            for (const QString& field : fields)
                shown.append(rows.field(field).text());
    }
    void showChart(const Chart& drawn) override
    {
        shown.append(drawn.title);
        chart = drawn;
    }
    QStringList fields;
    QStringList shown;
    ReportTexts last;
    Chart chart;
};

} // namespace quilla
