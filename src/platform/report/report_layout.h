#pragma once

#include "platform/report/report_data.h"
#include "platform/report/report_page.h"
#include "platform/report/report_viewer.h"
#include "platform/report/text_fit.h"

#include <QDate>

#include <memory>

namespace quilla {

/// What a report shows besides its rows.
struct ReportFrame {
    ReportTexts texts;
    QDate date;
};

/// A report broken into pages: report header on the first page, captions on each, a group on pages of its
/// own, totals after the last row, the footer at the foot of each page. Nothing overlaps: a row is as high
/// as its tallest text, numbers and dates are set narrower rather than cut.
class ReportLayout final : public PrintedPages {
public:
    /// Throws `Error` for a caption of a label that the design does not have.
    ReportLayout(
        ReportDesign design, ReportData data, ReportFrame frame, std::shared_ptr<const TextRuler> ruler);

    QString title() const override { return m_design.title; }
    Paper paper() const override { return m_design.paper; }
    int pageCount() const override { return int(m_pages.size()); }
    ReportPage page(int index) const override;
    std::optional<ReportTable> table() const override;

private:
    friend class PageWriter;
    struct Span {
        qsizetype first;
        qsizetype count;
        int group; ///< -1 without groups
        bool totals;
    };

    void checkLabels() const;
    void placeColumns();
    void breakPages();
    void beginPage(int group, qsizetype row);
    void addRows(int group, qsizetype first, qsizetype count);
    void addTotals();
    bool showsTotals() const;

    QString captionOf(const ReportLabel& label, int page) const;
    QString filled(QString caption, int page) const;
    const std::vector<ReportLine>& groupLines() const;
    Typeface tableFont(bool bold = false) const;
    double cellPadding() const;
    double roomOf(int column) const;
    double rowHeight(int lines) const;
    std::vector<FittedLine> fitted(const QString& text, int column) const;
    int linesOf(qsizetype row) const;

    ReportDesign m_design;
    ReportData m_data;
    ReportFrame m_frame;
    std::shared_ptr<const TextRuler> m_ruler;
    QRectF m_area; ///< within the margins, above the page footer
    std::vector<double> m_edges; ///< of the columns, one more than there are
    int m_captionLines = 1;
    std::vector<quint8> m_lines; ///< how many each row has
    std::vector<Span> m_pages;
    double m_left = 0; ///< of the height of the page being filled
};

} // namespace quilla
