#include "platform/report/report_previews.h"

#include "platform/core/error.h"
#include "platform/report/chart_pages.h"
#include "platform/report/report_preview.h"
#include "platform/ui/form/wait_cursor.h"

#include <QApplication>

namespace quilla {

namespace {

/// The main window: the screen in front may be gone before its report.
QWidget* lastingOwner()
{
    QWidget* window = QApplication::activeWindow();
    while (window && window->parentWidget())
        window = window->parentWidget()->window();
    return window;
}

} // namespace

ReportPreviews::ReportPreviews(
    ReportCatalog designs, Prompt& prompt, const Clock& clock, std::function<QString()> printerName)
    : m_designs(std::move(designs))
    , m_prompt(prompt)
    , m_clock(clock)
    , m_printerName(std::move(printerName))
{
}

ReportPreviews::~ReportPreviews() = default;

const std::shared_ptr<const FontBook>& ReportPreviews::fonts() const
{
    if (!m_fonts) m_fonts = std::make_shared<const FontBook>();
    return m_fonts;
}

std::shared_ptr<const ReportLayout> ReportPreviews::layOut(
    const ReportDesign& design, Recordset& rows, const ReportTexts& texts) const
{
    return std::make_shared<const ReportLayout>(
        design, ReportData(design, rows), ReportFrame {texts, m_clock.now().date}, fonts());
}

void ReportPreviews::showReport(const QString& design, Recordset& rows, const ReportTexts& texts)
{
    const auto found = std::find_if(m_designs.begin(), m_designs.end(),
        [&](const ReportDesign& candidate) { return candidate.name == design; });
    if (found == m_designs.end()) return m_prompt.warn(u"没有名为 %1 的报表。"_s.arg(design), OperationTitle);
    std::shared_ptr<const ReportLayout> pages;
    try {
        const WaitCursor wait;
        pages = layOut(*found, rows, texts);
    } catch (const Error& error) {
        if (!found->isSilent) m_prompt.warn(error.text, OperationTitle);
        return;
    }
    preview(pages);
}

void ReportPreviews::showChart(const Chart& chart)
{
    preview(std::make_shared<const ChartPages>(chart, *fonts()));
}

void ReportPreviews::preview(std::shared_ptr<const PrintedPages> pages) const
{
    auto* window = new ReportPreview(std::move(pages), fonts(), m_prompt, m_printerName(), lastingOwner());
    window->setAttribute(Qt::WA_DeleteOnClose);
    if (QApplication::activeModalWidget()) window->setWindowModality(Qt::ApplicationModal);
    window->show();
}

} // namespace quilla
