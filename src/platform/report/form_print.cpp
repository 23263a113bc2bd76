#include "platform/report/form_print.h"

#include "platform/db/decimal.h"
#include "platform/report/page_output.h"
#include "platform/report/slip_pages.h"
#include "platform/ui/grid/flex_grid.h"
#include "platform/ui/look/gallery.h"

#include <QFontInfo>
#include <QHeaderView>
#include <QLabel>
#include <QPrinter>

namespace quilla {

namespace {

constexpr double Margin = 15 * TwipsPerMillimetre;
constexpr double CellPadding = 4; ///< pixels of the screen
constexpr double LeastText = 0.6;

QRectF placeOn(const QWidget& form, const QWidget& control)
{
    return QRectF(QPointF(control.mapTo(&form, QPoint())), QSizeF(control.size()));
}

Place placeOf(Qt::Alignment alignment)
{
    if (alignment & Qt::AlignRight) return Place::Right;
    return alignment & Qt::AlignHCenter ? Place::Centre : Place::Left;
}

/// Puts the parts of a form on pages, from the top down. Measures are pixels of the form until they are
/// placed.
class FormWriter {
public:
    FormWriter(QWidget& form, Paper paper, const FontBook& fonts)
        : m_form(form)
        , m_fonts(fonts)
        , m_area(QPointF(Margin, Margin),
              QPointF(paperSize(paper).width() - Margin, paperSize(paper).height() - Margin))
    {
        for (auto* candidate : form.findChildren<FlexGrid*>())
            if (candidate->isVisibleTo(&form)) m_grid = candidate;
        const QRectF grid = m_grid ? placeOn(form, *m_grid) : QRectF();
        m_gridTop = m_grid ? grid.top() : form.height();
        m_gridBottom = m_grid ? grid.bottom() : form.height();
        m_gridLeft = grid.left();
        const double width = std::max(double(form.width()), 2 * m_gridLeft + gridWidth());
        m_scale = m_area.width() / width;
        if (!m_grid) m_scale = std::min(m_scale, m_area.height() / form.height());
        m_pages.emplace_back();
    }

    std::vector<ReportPage> write()
    {
        for (const QLabel* label : labels())
            if (placeOn(m_form, *label).top() < m_gridBottom) writeLabel(*label, 0);
        const double shift = m_grid ? writeGrid() : 0;
        writeBelow(shift);
        return std::move(m_pages);
    }

private:
    QList<QLabel*> labels() const
    {
        QList<QLabel*> shown;
        for (QLabel* label : m_form.findChildren<QLabel*>())
            if (label->isVisibleTo(&m_form) && !label->text().isEmpty()) shown.append(label);
        return shown;
    }

    /// The row marker means nothing on paper.
    bool shows(int col) const { return col >= m_grid->cells().FixedCols() && !m_grid->isColumnHidden(col); }

    double gridWidth() const
    {
        double width = 0;
        for (int col = 0; m_grid && col < m_grid->Cols(); ++col)
            if (shows(col)) width += m_grid->columnWidth(col);
        return width;
    }

    Typeface typeface(const QFont& font) const
    {
        const QFontInfo info(font);
        return {info.family(), info.pixelSize() * m_scale / TwipsPerPoint, info.bold()};
    }

    QPointF onPaper(double x, double y) const { return m_area.topLeft() + QPointF(x, y) * m_scale; }

    /// Text in a box of the form; numbers are set narrower, never cut.
    void writeText(const QString& text, const Typeface& font, const QRectF& box, Place place)
    {
        const double least = readNumber(text) ? 0 : LeastText;
        const FittedLine line = fitLine(text, font, box.width() * m_scale, m_fonts, least);
        const double room = box.width() * m_scale - line.width;
        const double indent = place == Place::Right ? room : place == Place::Centre ? room / 2 : 0;
        const QPointF start = onPaper(box.left(), box.center().y()) + QPointF(indent, 0);
        m_pages.back().texts.push_back({line.text, font, start, line.squeeze});
    }

    void writeLabel(const QLabel& label, double shift)
    {
        const QRectF box = placeOn(m_form, label).translated(0, shift);
        const QStringList lines = label.text().split(u'\n');
        const double height = QFontMetricsF(label.font()).lineSpacing();
        double top = box.center().y() - height * double(lines.size()) / 2;
        for (const QString& line : lines) {
            writeText(line, typeface(label.font()), {box.left(), top, box.width(), height},
                placeOf(label.alignment()));
            top += height;
        }
    }

    /// Returns how much lower than on the form its last line ends.
    double writeGrid()
    {
        double y = m_gridTop;
        const double rowHeight = m_grid->verticalHeader()->defaultSectionSize();
        const double pageEnd = m_area.height() / m_scale;
        y = writeCaptions(y);
        double tableTop = m_gridTop;
        for (int row = 1; row < m_grid->Rows(); ++row) {
            if (y + rowHeight > pageEnd) {
                closeTable(tableTop, y);
                m_pages.emplace_back();
                tableTop = 0;
                y = writeCaptions(0);
            }
            writeLine(row, y, rowHeight);
            y += rowHeight;
            rule(y, Ink::Hairline);
        }
        closeTable(tableTop, y);
        return m_pages.size() > 1 ? y - m_gridBottom : std::max(0.0, y - m_gridBottom);
    }

    double writeCaptions(double y)
    {
        const double height = m_grid->horizontalHeader()->height();
        m_pages.back().bands.push_back(
            {QRectF(onPaper(m_gridLeft, y), QSizeF(gridWidth(), height) * m_scale), Ink::Band});
        rule(y, Ink::Rule);
        writeLine(0, y, height);
        rule(y + height, Ink::Rule);
        return y + height;
    }

    void writeLine(int row, double y, double height)
    {
        Typeface font = typeface(m_grid->font());
        font.bold = row == 0;
        double x = m_gridLeft;
        for (int col = 0; col < m_grid->Cols(); ++col) {
            if (!shows(col)) continue;
            const double width = m_grid->columnWidth(col);
            const QString text = m_grid->TextMatrix(row, col).trimmed();
            if (!text.isEmpty())
                writeText(text, font, {x + CellPadding, y, width - 2 * CellPadding, height},
                    placeOf(alignment(row, col)));
            x += width;
        }
    }

    Qt::Alignment alignment(int row, int col) const
    {
        const GridModel& cells = m_grid->cells();
        const QVariant found = row == 0 ? cells.headerData(col, Qt::Horizontal, Qt::TextAlignmentRole)
                                        : cells.data(cells.index(row - 1, col), Qt::TextAlignmentRole);
        return Qt::Alignment(found.toInt());
    }

    void closeTable(double top, double bottom)
    {
        rule(bottom, Ink::Rule);
        double x = m_gridLeft;
        column(x, top, bottom);
        for (int col = 0; col < m_grid->Cols(); ++col) {
            if (!shows(col)) continue;
            x += m_grid->columnWidth(col);
            column(x, top, bottom);
        }
    }

    void column(double x, double top, double bottom)
    {
        m_pages.back().rules.push_back({QLineF(onPaper(x, top), onPaper(x, bottom)), Ink::Hairline});
    }

    void rule(double y, Ink ink)
    {
        m_pages.back().rules.push_back(
            {QLineF(onPaper(m_gridLeft, y), onPaper(m_gridLeft + gridWidth(), y)), ink});
    }

    /// What stands below the grid, together: on a page of its own when it does not fit below it.
    void writeBelow(double shift)
    {
        QList<QLabel*> below;
        double bottom = 0;
        for (QLabel* label : labels()) {
            const QRectF box = placeOn(m_form, *label);
            if (!m_grid || box.top() < m_gridBottom) continue;
            below.append(label);
            bottom = std::max(bottom, box.bottom());
        }
        if (below.isEmpty()) return;
        if ((bottom + shift) * m_scale > m_area.height()) {
            m_pages.emplace_back();
            shift = -m_gridBottom;
        }
        for (const QLabel* label : below)
            writeLabel(*label, shift);
    }

    QWidget& m_form;
    const FontBook& m_fonts;
    QRectF m_area;
    const FlexGrid* m_grid = nullptr;
    double m_gridTop;
    double m_gridBottom;
    double m_gridLeft;
    double m_scale;
    std::vector<ReportPage> m_pages;
};

} // namespace

FormPages::FormPages(QWidget& form, Paper paper, const FontBook& fonts)
    : m_title(form.windowTitle())
    , m_paper(paper)
{
    picture(form, 1); // a form that was never shown has its sizes only when it is drawn
    m_pages = FormWriter(form, paper, fonts).write();
}

DefaultPrinter::DefaultPrinter(std::function<QString()> printerName, std::function<bool()> isUpright)
    : m_printerName(std::move(printerName))
    , m_isUpright(std::move(isUpright))
{
}

void DefaultPrinter::printForm(QWidget& form, Paper paper)
{
    const FontBook fonts;
    print(FormPages(form, paper, fonts), fonts);
}

void DefaultPrinter::printSlip(const Slip& slip, const QString& pdfFile)
{
    const FontBook fonts;
    const SlipPages pages(slip, fonts);
    pdfFile.isEmpty() ? print(pages, fonts) : savePdf(pages, fonts, pdfFile);
}

void DefaultPrinter::printText(const QTextDocument& text, const QString& pdfFile)
{
    if (!pdfFile.isEmpty()) return saveTextPdf(text, FontBook(), pdfFile);
    QPrinter printer(QPrinter::HighResolution);
    choose(printer);
    quilla::printText(text, printer);
}

void DefaultPrinter::choose(QPrinter& printer) const
{
    const QString chosen = m_printerName();
    if (!chosen.isEmpty()) printer.setPrinterName(chosen);
}

void DefaultPrinter::print(const PrintedPages& pages, const FontBook& fonts) const
{
    QPrinter printer(QPrinter::HighResolution);
    choose(printer);
    setUpPrinter(printer, pages);
    printPages(pages, fonts, printer);
}

} // namespace quilla
