#pragma once

#include "platform/report/report_layout.h"

namespace quilla {

/// The height of lines of labels, in twips.
double heightOf(const std::vector<ReportLine>& lines);

/// Writes the bands of a report onto one page, from the top down.
class PageWriter {
public:
    PageWriter(const ReportLayout& report, int page);

    /// `heads` are the texts of the lines that show a field.
    void lines(const std::vector<ReportLine>& lines, QStringList heads);
    void captions();
    void row(qsizetype row);
    void totals();
    void closeTable();
    void footer();

    ReportPage takePage() { return std::move(m_page); }

private:
    void labels(const ReportLine& line, double middle);
    void spread(const ReportLine& line, double middle);
    void inOneRun(const ReportLine& line, double middle);
    void cell(const std::vector<FittedLine>& lines, int column, double height, bool bold);
    void inCell(const FittedLine& line, double left, double right, Place place, double middle, bool bold);
    void put(const FittedLine& line, const Typeface& font, double x, double middle);
    void rule(double y, Ink ink);
    std::size_t columnOf(const ReportTotal& total) const;
    void totalCell(const QString& text, double left, double right, double least);
    double padding() const;

    const ReportLayout& m_report;
    int m_index;
    double m_y;
    double m_tableTop = 0;
    ReportPage m_page;
};

} // namespace quilla
