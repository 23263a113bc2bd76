// The widths of the grid: captions with their blanks, set widths, and what the operator dragged.

#include "platform/core/settings.h"
#include "platform/grid/grid_widths.h"
#include "platform/ui/grid/flex_grid.h"
#include "platform/ui/look/theme.h"

#include <QCryptographicHash>
#include <QHeaderView>
#include <QScrollBar>

namespace quilla {

namespace {

constexpr int WideCharacter = 180; // twips: the text of the design is 12 pixels high
constexpr int NarrowCharacter = 90;
constexpr int CellPadding = 120;
constexpr int MarkerWidth = 300;
constexpr int CaptionMargin = 13; // pixels: what the style leaves beside a caption, and the line

/// A caption's width as its designer saw it, where a blank is half as wide as a Chinese character. Today's
/// fonts have narrower blanks, which would take back the room that the captions were given.
int captionTwips(const QString& caption)
{
    int width = CellPadding;
    for (QChar c : caption)
        width += c.unicode() > 0x2e7f ? WideCharacter : NarrowCharacter;
    return width;
}

const QString Application = u"青简文库"_s;
const QString Section = u"Columns"_s;

QString written(const std::vector<int>& widths)
{
    QStringList texts;
    for (int width : widths)
        texts << QString::number(width);
    return texts.join(u',');
}

std::vector<int> readWidths(const QString& text)
{
    std::vector<int> widths;
    for (const QString& part : text.split(u',', Qt::SkipEmptyParts))
        widths.push_back(part.toInt());
    return widths;
}

} // namespace

int FlexGrid::ColWidth(int col) const
{
    if (col < 0 || col >= Cols()) return 0;
    if (std::size_t(col) < m_colWidths.size() && m_colWidths[std::size_t(col)] >= 0)
        return m_colWidths[std::size_t(col)];
    return col < m_model.FixedCols() ? MarkerWidth : captionTwips(TextMatrix(0, col));
}

void FlexGrid::setColWidth(int col, int twips)
{
    if (col < 0) return;
    if (m_colWidths.size() <= std::size_t(col)) m_colWidths.resize(std::size_t(col) + 1, -1);
    m_colWidths[std::size_t(col)] = twips;
    layOutColumns();
}

void FlexGrid::setColWidths(const std::vector<int>& twips)
{
    m_colWidths = twips;
    layOutColumns();
}

int FlexGrid::contentTwips(int col) const
{
    return twipsOf(sizeHintForColumn(col) + 1, *this);
}

void FlexGrid::setCaptionHeight(int twips)
{
    m_captionHeight = twips;
    measureLines();
}

void FlexGrid::measureLines()
{
    verticalHeader()->setMinimumSectionSize(0);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setFixedHeight(
        std::max(pixelsOf(m_captionHeight, *this), fontMetrics().height() + 6));
}

int FlexGrid::captionPixels(int col) const
{
    if (col < m_model.FixedCols()) return 0;
    return fontMetrics().horizontalAdvance(trimBlanks(TextMatrix(0, col))) + CaptionMargin;
}

std::vector<int> FlexGrid::wantedPixels() const
{
    std::vector<int> wanted;
    const bool dragged = m_dragged.size() == std::size_t(Cols());
    for (int col = 0; col < Cols(); ++col)
        wanted.push_back(pixelsOf(dragged ? m_dragged[std::size_t(col)] : ColWidth(col), *this));
    return wanted;
}

void FlexGrid::layOutColumns()
{
    if (m_layingOut || Cols() == 0 || horizontalHeader()->count() != Cols()) return;
    std::vector<int> least;
    for (int col = 0; col < Cols(); ++col)
        least.push_back(captionPixels(col));
    std::vector<int> widths = wantedPixels();
    if (m_dragged.size() != widths.size()) widths = layColumns(widths, least, viewport()->width());
    m_layingOut = true;
    for (int col = 0; col < Cols(); ++col) {
        setColumnHidden(col, widths[std::size_t(col)] <= 0);
        if (widths[std::size_t(col)] > 0) setColumnWidth(col, widths[std::size_t(col)]);
    }
    m_layingOut = false;
}

void FlexGrid::rememberWidths(SettingsStore& settings, const QString& name)
{
    m_settings = &settings;
    m_name = name;
    takeRememberedWidths();
    layOutColumns();
}

/// One set of widths for each set of captions that the grid shows in turn.
QString FlexGrid::widthsKey() const
{
    QByteArray captions;
    for (int col = 0; col < Cols(); ++col)
        captions += TextMatrix(0, col).toUtf8() + '|';
    const QByteArray hash = QCryptographicHash::hash(captions, QCryptographicHash::Md5).toHex().left(8);
    return m_name + u'.' + QString::fromLatin1(hash);
}

void FlexGrid::takeRememberedWidths()
{
    m_dragged.clear();
    if (!m_settings || Cols() == 0) return;
    std::vector<int> widths = readWidths(m_settings->get(Application, Section, widthsKey(), {}));
    if (widths.size() == std::size_t(Cols())) m_dragged = std::move(widths);
}

void FlexGrid::storeDraggedWidths()
{
    m_dragged.clear();
    for (int col = 0; col < Cols(); ++col)
        m_dragged.push_back(isColumnHidden(col) ? 0 : twipsOf(columnWidth(col), *this));
    if (m_settings) m_settings->set(Application, Section, widthsKey(), written(m_dragged));
}

void FlexGrid::forgetWidths()
{
    m_dragged.clear();
    if (m_settings) m_settings->set(Application, Section, widthsKey(), {});
    layOutColumns();
}

/// The header tells of each pixel of a drag; the widths are stored once, when the mouse lets go.
bool FlexGrid::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress) m_dragging = false;
    if (event->type() != QEvent::MouseButtonRelease) return QTableView::eventFilter(watched, event);
    const bool consumed = QTableView::eventFilter(watched, event);
    if (m_dragging) storeDraggedWidths();
    m_dragging = false;
    return consumed;
}

} // namespace quilla
