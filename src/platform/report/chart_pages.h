#pragma once

#include "platform/report/chart.h"
#include "platform/report/report_page.h"
#include "platform/report/text_fit.h"

#include <memory>

namespace quilla {

/// A chart on wide paper: bars from an axis at 0, with round numbers at the left.
class ChartPages final : public PrintedPages {
public:
    ChartPages(const Chart& chart, const TextRuler& ruler);

    QString title() const override { return m_title; }
    Paper paper() const override { return Paper::Wide; }
    int pageCount() const override { return int(m_pages.size()); }
    ReportPage page(int index) const override { return m_pages[std::size_t(index)]; }

private:
    QString m_title;
    std::vector<ReportPage> m_pages;
};

/// The distance of the lines behind the bars: 1, 2 or 5 times a power of ten, so that about five of them
/// reach over `highest`; 1 at least.
double chartStep(double highest);

} // namespace quilla
