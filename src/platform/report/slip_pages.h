#pragma once

#include "platform/report/report_page.h"
#include "platform/report/slip.h"
#include "platform/report/text_fit.h"

namespace quilla {

/// A slip laid out, black on white. A roll is one page as long as its lines; a sheet goes on on the next.
class SlipPages final : public PrintedPages {
public:
    SlipPages(const Slip& slip, const TextRuler& ruler);

    QString title() const override { return m_title; }
    Paper paper() const override { return Paper::Upright; }
    QSizeF size() const override { return m_size; }
    int pageCount() const override { return int(m_pages.size()); }
    ReportPage page(int index) const override { return m_pages[std::size_t(index)]; }

private:
    QString m_title;
    QSizeF m_size;
    std::vector<ReportPage> m_pages;
};

} // namespace quilla
