#pragma once

#include "platform/report/report_viewer.h"

#include <QStringList>

namespace quilla {

/// Opens no report and writes down which it was asked for.
class ReportDouble final : public ReportViewer {
public:
    void showReport(const QString& design, Recordset&, const ReportTexts& texts) override
    {
        shown.append(design);
        last = texts;
    }
    void showChart(const Chart& drawn) override
    {
        shown.append(drawn.title);
        chart = drawn;
    }
    QStringList shown;
    ReportTexts last;
    Chart chart;
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
    void showChart(const Chart& chart) override { shown.append(chart.title); }
    QStringList fields;
    QStringList shown;
};

} // namespace quilla
