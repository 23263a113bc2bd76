#pragma once

#include "platform/core/dates.h"
#include "platform/core/prompt.h"
#include "platform/report/font_book.h"
#include "platform/report/report_layout.h"

#include <functional>

namespace quilla {

/// Shows each report in a preview window of its own, which outlives the screen that asked for it.
class ReportPreviews final : public ReportViewer {
public:
    /// `printerName` returns the printer that the operator chose, empty for none.
    ReportPreviews(
        ReportCatalog designs, Prompt& prompt, const Clock& clock, std::function<QString()> printerName);
    ~ReportPreviews() override;

    void showReport(const QString& design, Recordset& rows, const ReportTexts& texts = {}) override;
    void showChart(const Chart& chart) override;

    /// The report broken into pages. Throws `Error`.
    std::shared_ptr<const ReportLayout> layOut(
        const ReportDesign& design, Recordset& rows, const ReportTexts& texts) const;
    const std::shared_ptr<const FontBook>& fonts() const;

private:
    void preview(std::shared_ptr<const PrintedPages> pages) const;

    ReportCatalog m_designs;
    Prompt& m_prompt;
    const Clock& m_clock;
    std::function<QString()> m_printerName;
    mutable std::shared_ptr<const FontBook> m_fonts; ///< looked up when the first report opens
};

} // namespace quilla
