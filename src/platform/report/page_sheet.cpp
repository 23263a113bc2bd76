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
    QPainter painter(this);
    const double ratio = painter.deviceTransform().m11(); // the screen's, or that of a picture of the window
    if (m_picture.isNull() || m_picture.devicePixelRatio() != ratio) m_picture = drawn(ratio);
    painter.drawPixmap(0, 0, m_picture);
}

QPixmap PageSheet::drawn(double ratio) const
{
    QPixmap picture((QSizeF(size()) * ratio).toSize());
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.scale(m_scale, m_scale);
    paintPage(painter, m_pages.page(m_page), m_fonts);
    return picture;
}

} // namespace quilla
