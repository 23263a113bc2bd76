#include "platform/report/report_preview.h"

#include <QPainter>

namespace quilla {

PageSheet::PageSheet(const PrintedPages& pages, const FontBook& fonts)
    : m_pages(pages)
    , m_fonts(fonts)
{
    setScale(m_scale);
}

void PageSheet::setPage(int page)
{
    m_page = page;
    m_picture = {};
    update();
}

void PageSheet::setScale(double scale)
{
    m_scale = scale;
    m_picture = {};
    setFixedSize((paperSize(m_pages.paper()) * scale).toSize());
    update();
}

void PageSheet::paintEvent(QPaintEvent*)
{
    const double ratio = devicePixelRatioF();
    if (m_picture.isNull() || m_picture.devicePixelRatio() != ratio) {
        m_picture = QPixmap((QSizeF(size()) * ratio).toSize());
        m_picture.setDevicePixelRatio(ratio);
        m_picture.fill(Qt::white);
        QPainter painter(&m_picture);
        painter.setRenderHint(QPainter::TextAntialiasing);
        painter.scale(m_scale, m_scale);
        paintPage(painter, m_pages.page(m_page), m_fonts);
    }
    QPainter(this).drawPixmap(0, 0, m_picture);
}

} // namespace quilla
