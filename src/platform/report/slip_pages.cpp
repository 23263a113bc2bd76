#include "platform/report/slip_pages.h"

namespace quilla {

namespace {

const Typeface Heading {u"黑体"_s, 12, true};
const Typeface Plain {u"宋体"_s, 9};
constexpr double Gap = 4 * TwipsPerPoint; ///< between two parts
constexpr int MostLines = 3; ///< of one text

/// What a thermal printer can't reach is left white at both sides.
struct SheetForm {
    double width; ///< millimetres, as the height and the margin
    double height; ///< 0: as long as it gets
    double margin;
};

SheetForm formOf(SlipPaper paper)
{
    switch (paper) {
    case SlipPaper::Roll58:
        return {58, 0, 5};
    case SlipPaper::Roll80:
        return {80, 0, 5};
    case SlipPaper::A6:
        break;
    }
    return {105, 148, 8};
}

double heightOf(const Typeface& font)
{
    return font.points * 1.35 * TwipsPerPoint;
}

/// Writes the parts from the top down.
class SlipWriter {
public:
    SlipWriter(const SheetForm& form, const TextRuler& ruler)
        : m_ruler(ruler)
        , m_margin(form.margin * TwipsPerMillimetre)
        , m_width(form.width * TwipsPerMillimetre)
        , m_height(form.height * TwipsPerMillimetre)
        , m_y(m_margin)
    {
        m_pages.emplace_back();
    }

    void heading(const QString& text)
    {
        for (const FittedLine& line : fitLines(text, Heading, room(), m_ruler, MostLines))
            put(line, Heading, m_margin + (room() - line.width) / 2);
        m_y += Gap;
    }

    void lines(const QStringList& texts)
    {
        for (const QString& text : texts)
            left(text);
    }

    /// An item is not torn between two sheets.
    void item(const Slip::Item& item)
    {
        const auto lines = fitLines(item.text, Plain, room(), m_ruler, MostLines);
        need(double(lines.size() + 1) * heightOf(Plain));
        for (const FittedLine& line : lines)
            put(line, Plain, m_margin);
        left(item.detail);
        m_y += Gap / 2;
    }

    void rule()
    {
        need(2 * Gap);
        m_y += Gap;
        m_pages.back().rules.push_back({QLineF(m_margin, m_y, m_width - m_margin, m_y), Ink::Rule});
        m_y += Gap;
    }

    QSizeF size() const { return {m_width, m_height > 0 ? m_height : m_y + m_margin}; }
    std::vector<ReportPage> takePages() { return std::move(m_pages); }

private:
    double room() const { return m_width - 2 * m_margin; }

    void left(const QString& text)
    {
        for (const FittedLine& line : fitLines(text, Plain, room(), m_ruler, MostLines))
            put(line, Plain, m_margin);
    }

    void need(double height)
    {
        if (m_height == 0 || m_y + height <= m_height - m_margin) return;
        m_pages.emplace_back();
        m_y = m_margin;
    }

    void put(const FittedLine& line, const Typeface& font, double x)
    {
        need(heightOf(font));
        m_pages.back().texts.push_back({line.text, font, {x, m_y + heightOf(font) / 2}, line.squeeze});
        m_y += heightOf(font);
    }

    const TextRuler& m_ruler;
    double m_margin;
    double m_width;
    double m_height;
    double m_y;
    std::vector<ReportPage> m_pages;
};

} // namespace

SlipPages::SlipPages(const Slip& slip, const TextRuler& ruler)
    : m_title(slip.title)
{
    SlipWriter writer(formOf(slip.paper), ruler);
    writer.heading(slip.title);
    writer.lines(slip.head);
    writer.rule();
    for (const Slip::Item& item : slip.items)
        writer.item(item);
    writer.rule();
    writer.lines(slip.foot);
    m_size = writer.size();
    m_pages = writer.takePages();
}

} // namespace quilla
