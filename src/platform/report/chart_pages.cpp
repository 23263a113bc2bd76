#include "platform/report/chart_pages.h"

#include <cmath>

namespace quilla {

namespace {

constexpr double Margin = 15 * TwipsPerMillimetre;
constexpr double AxisRoom = 18 * TwipsPerMillimetre; ///< for the numbers at the left
constexpr double HeadRoom = 26 * TwipsPerMillimetre; ///< for the two titles
constexpr double FootRoom = 10 * TwipsPerMillimetre; ///< for the labels below the axis
constexpr double BarShare = 0.7; ///< of the room that each bar has
constexpr double TextGap = 2.5 * TwipsPerMillimetre;
constexpr int WantedLines = 5;

const Typeface Heading {u"宋体"_s, 18, true};
const Typeface Subheading {u"宋体"_s, 13};
const Typeface Small {u"宋体"_s, 9};

/// One series on its page.
class ChartWriter {
public:
    ChartWriter(const ChartSeries& series, const TextRuler& ruler)
        : m_series(series)
        , m_ruler(ruler)
        , m_sheet(paperSize(Paper::Wide))
        , m_plot(QPointF(Margin + AxisRoom, Margin + HeadRoom),
              QPointF(m_sheet.width() - Margin, m_sheet.height() - Margin - FootRoom))
    {
        for (const ChartBar& bar : series.bars) {
            m_highest = std::max(m_highest, bar.value);
            m_lowest = std::min(m_lowest, bar.value);
        }
        m_step = chartStep(m_highest - m_lowest);
        m_top = std::max(1.0, std::ceil(m_highest / m_step)) * m_step;
        m_bottom = std::floor(m_lowest / m_step) * m_step;
    }

    ReportPage write(const QString& title)
    {
        const double middle = m_sheet.width() / 2;
        text(title, Heading, {middle, Margin + 7 * TwipsPerMillimetre}, m_sheet.width() - 2 * Margin);
        text(m_series.title, Subheading, {middle, Margin + 17 * TwipsPerMillimetre},
            m_sheet.width() - 2 * Margin);
        writeAxis();
        for (std::size_t bar = 0; bar < m_series.bars.size(); ++bar)
            writeBar(m_series.bars[bar], double(bar));
        return std::move(m_page);
    }

private:
    double heightOf(double value) const
    {
        return m_plot.bottom() - (value - m_bottom) / (m_top - m_bottom) * m_plot.height();
    }

    /// Around `middle`, narrower where there is no room.
    void text(const QString& words, const Typeface& font, QPointF middle, double room)
    {
        const FittedLine line = fitLine(words, font, room, m_ruler);
        m_page.texts.push_back({line.text, font, middle - QPointF(line.width / 2, 0), line.squeeze});
    }

    void writeAxis()
    {
        const int lines = int(std::lround((m_top - m_bottom) / m_step));
        for (int line = 0; line <= lines; ++line) {
            const double value = m_bottom + line * m_step;
            const double y = heightOf(value);
            const bool isAxis = std::abs(value) < m_step / 2;
            m_page.rules.push_back(
                {QLineF(m_plot.left(), y, m_plot.right(), y), isAxis ? Ink::Rule : Ink::Hairline});
            const QString number = QString::number(value, 'g', 12);
            m_page.texts.push_back(
                {number, Small, {m_plot.left() - TextGap - m_ruler.width(number, Small), y}});
        }
    }

    void writeBar(const ChartBar& bar, double index)
    {
        const double room = m_plot.width() / double(m_series.bars.size());
        const double middle = m_plot.left() + (index + 0.5) * room;
        const QRectF area = QRectF(QPointF(middle - room * BarShare / 2, heightOf(bar.value)),
            QPointF(middle + room * BarShare / 2, heightOf(0)))
                                .normalized();
        if (bar.value != 0) {
            m_page.bands.push_back({area, Ink::Bar});
            const double beyond = bar.value > 0 ? area.top() - TextGap : area.bottom() + TextGap;
            text(bar.valueText, Small, {middle, beyond}, room);
        }
        text(bar.label, Small, {middle, m_plot.bottom() + 1.5 * TextGap}, room * 0.95);
    }

    const ChartSeries& m_series;
    const TextRuler& m_ruler;
    const QSizeF m_sheet;
    const QRectF m_plot;
    double m_highest = 0;
    double m_lowest = 0;
    double m_step = 1;
    double m_top = 1;
    double m_bottom = 0;
    ReportPage m_page;
};

} // namespace

double chartStep(double highest)
{
    const double rough = highest / WantedLines;
    if (rough <= 1) return 1;
    const double power = std::pow(10, std::floor(std::log10(rough)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= rough) return factor * power;
    return 10 * power;
}

ChartPages::ChartPages(const Chart& chart, const TextRuler& ruler)
    : m_title(chart.title)
{
    for (const ChartSeries& series : chart.series)
        m_pages.push_back(ChartWriter(series, ruler).write(chart.title));
}

} // namespace quilla
