#include "platform/ui/grid/grid_columns.h"

#include "platform/core/settings.h"
#include "platform/core/text.h"
#include "platform/grid/grid_model.h"
#include "platform/grid/grid_widths.h"
#include "platform/ui/look/theme.h"

#include <QCryptographicHash>
#include <QEvent>
#include <QHeaderView>
#include <QMenu>
#include <QTableView>

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

GridColumns::GridColumns(QTableView& view, const GridModel& model)
    : m_view(view)
    , m_model(model)
{
    QHeaderView* header = view.horizontalHeader();
    header->setMinimumSectionSize(0);
    header->viewport()->installEventFilter(this);
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QHeaderView::customContextMenuRequested, this, &GridColumns::offerToForget);
    connect(header, &QHeaderView::sectionResized, this, [this] { m_dragging |= !m_layingOut; });
}

int GridColumns::width(int col) const
{
    if (col < 0 || col >= m_model.Cols()) return 0;
    if (std::size_t(col) < m_widths.size() && m_widths[std::size_t(col)] >= 0)
        return m_widths[std::size_t(col)];
    return col < m_model.FixedCols() ? MarkerWidth : captionTwips(m_model.TextMatrix(0, col));
}

void GridColumns::setWidth(int col, int twips)
{
    if (col < 0) return;
    if (m_widths.size() <= std::size_t(col)) m_widths.resize(std::size_t(col) + 1, -1);
    m_widths[std::size_t(col)] = twips;
    layOut();
}

void GridColumns::setWidths(const std::vector<int>& twips)
{
    m_widths = twips;
    layOut();
}

int GridColumns::captionPixels(int col) const
{
    if (col < m_model.FixedCols()) return 0;
    return m_view.fontMetrics().horizontalAdvance(trimBlanks(m_model.TextMatrix(0, col))) + CaptionMargin;
}

std::vector<int> GridColumns::wantedPixels() const
{
    std::vector<int> wanted;
    const bool dragged = m_dragged.size() == std::size_t(m_model.Cols());
    for (int col = 0; col < m_model.Cols(); ++col)
        wanted.push_back(pixelsOf(dragged ? m_dragged[std::size_t(col)] : width(col), m_view));
    return wanted;
}

void GridColumns::layOut()
{
    const int cols = m_model.Cols();
    if (m_layingOut || cols == 0 || m_view.horizontalHeader()->count() != cols) return;
    std::vector<int> least;
    for (int col = 0; col < cols; ++col)
        least.push_back(captionPixels(col));
    std::vector<int> widths = wantedPixels();
    if (m_dragged.size() != widths.size()) widths = layColumns(widths, least, m_view.viewport()->width());
    m_layingOut = true;
    for (int col = 0; col < cols; ++col) {
        m_view.setColumnHidden(col, widths[std::size_t(col)] <= 0);
        if (widths[std::size_t(col)] > 0) m_view.setColumnWidth(col, widths[std::size_t(col)]);
    }
    m_layingOut = false;
}

void GridColumns::remember(SettingsStore& settings, const QString& name)
{
    m_settings = &settings;
    m_name = name;
    takeRemembered();
    layOut();
}

QString GridColumns::settingsKey() const
{
    QByteArray captions;
    for (int col = 0; col < m_model.Cols(); ++col)
        captions += m_model.TextMatrix(0, col).toUtf8() + '|';
    const QByteArray hash = QCryptographicHash::hash(captions, QCryptographicHash::Md5).toHex().left(8);
    return m_name + u'.' + QString::fromLatin1(hash);
}

void GridColumns::takeRemembered()
{
    m_dragged.clear();
    if (!m_settings || m_model.Cols() == 0) return;
    std::vector<int> widths = readWidths(m_settings->get(Application, Section, settingsKey(), {}));
    if (widths.size() == std::size_t(m_model.Cols())) m_dragged = std::move(widths);
}

void GridColumns::storeDragged()
{
    m_dragged.clear();
    for (int col = 0; col < m_model.Cols(); ++col)
        m_dragged.push_back(m_view.isColumnHidden(col) ? 0 : twipsOf(m_view.columnWidth(col), m_view));
    if (m_settings) m_settings->set(Application, Section, settingsKey(), written(m_dragged));
}

void GridColumns::offerToForget(const QPoint& at)
{
    QMenu menu(&m_view);
    menu.addAction(u"恢复默认列宽"_s, this, &GridColumns::forget)->setEnabled(!m_dragged.empty());
    menu.exec(m_view.horizontalHeader()->viewport()->mapToGlobal(at));
}

void GridColumns::forget()
{
    m_dragged.clear();
    if (m_settings) m_settings->set(Application, Section, settingsKey(), {});
    layOut();
}

/// The header signals every pixel of a drag; the widths are stored once, when the mouse button is released.
bool GridColumns::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress) m_dragging = false;
    if (event->type() == QEvent::MouseButtonRelease) {
        if (m_dragging) storeDragged();
        m_dragging = false;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace quilla
