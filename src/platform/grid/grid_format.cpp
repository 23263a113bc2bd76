#include "platform/grid/grid_format.h"

namespace quilla {

namespace {

CellAlign alignOf(QChar mark)
{
    switch (mark.unicode()) {
    case u'^':
        return CellAlign::Center;
    case u'<':
        return CellAlign::Left;
    case u'>':
        return CellAlign::Right;
    default:
        return CellAlign::Default;
    }
}

GridFormat::Column readSection(QStringView section)
{
    const CellAlign align = section.isEmpty() ? CellAlign::Default : alignOf(section.front());
    if (align != CellAlign::Default) section = section.sliced(1);
    return {section.toString(), align};
}

} // namespace

GridFormat GridFormat::parse(QStringView text)
{
    GridFormat format;
    if (text.isEmpty()) return format;
    for (QStringView section : text.split(u'|'))
        format.columns.push_back(readSection(section));
    return format;
}

bool GridFormat::hasMarker() const
{
    if (columns.empty() || !columns.front().caption.isEmpty()) return false;
    const CellAlign align = columns.front().align;
    return align == CellAlign::Default || align == CellAlign::Center;
}

} // namespace quilla
