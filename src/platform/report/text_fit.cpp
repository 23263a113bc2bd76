#include "platform/report/text_fit.h"

#include "platform/report/report_page.h"

namespace quilla {

namespace {

const QString Ellipsis = u"…"_s;

bool isWide(QChar c)
{
    return c.unicode() >= 0x2e80;
}

bool opens(QChar c)
{
    return QStringView(u"（《〈「『【〔“‘([").contains(c);
}

bool closes(QChar c)
{
    return QStringView(u"，。、；：？！）》〉」』】〕”’…％,.;:?!)]%").contains(c);
}

/// The length of the character at `at` with all that belongs to it.
qsizetype lengthAt(QStringView text, qsizetype at)
{
    qsizetype end = at + (text[at].isHighSurrogate() && at + 1 < text.size() ? 2 : 1);
    while (end < text.size() && text[end].isMark())
        ++end;
    return end - at;
}

/// Whether a line may end before `at`.
bool mayBreak(QStringView text, qsizetype at)
{
    const QChar before = text[at - 1];
    const QChar after = text[at];
    if (after == u' ' || closes(after) || opens(before)) return false;
    return before == u' ' || before == u'-' || before == u'/' || isWide(before) || isWide(after);
}

class LineBreaker {
public:
    LineBreaker(QStringView text, const Typeface& font, double room, const TextRuler& ruler)
        : m_text(text)
        , m_font(font)
        , m_room(room)
        , m_ruler(ruler)
    {
    }

    bool atEnd() const { return m_at >= m_text.size(); }

    FittedLine next()
    {
        const qsizetype full = fill(m_room);
        const qsizetype end = full < m_text.size() && m_break > m_at ? m_break : full;
        const FittedLine line = lineTo(end, {});
        m_at = end;
        while (!atEnd() && m_text[m_at] == u' ')
            ++m_at;
        return line;
    }

    FittedLine rest()
    {
        if (fill(m_room) == m_text.size()) return lineTo(m_text.size(), {});
        const double room = m_room - m_ruler.width(Ellipsis, m_font);
        return lineTo(room > 0 ? fill(room) : m_at, Ellipsis);
    }

private:
    /// As far as the room reaches, but at least one character; notes the last place to break.
    qsizetype fill(double room)
    {
        double used = 0;
        m_break = m_at;
        for (qsizetype end = m_at; end < m_text.size();) {
            if (end > m_at && mayBreak(m_text, end)) m_break = end;
            const qsizetype length = lengthAt(m_text, end);
            used += m_ruler.width(m_text.sliced(end, length), m_font);
            if (used > room && end > m_at) return end;
            end += length;
        }
        return m_text.size();
    }

    FittedLine lineTo(qsizetype end, const QString& tail) const
    {
        QStringView part = m_text.sliced(m_at, end - m_at);
        while (part.endsWith(u' '))
            part.chop(1);
        const QString text = part.toString() + tail;
        const double width = m_ruler.width(text, m_font);
        // Only a single character that is wider than the whole line comes here too wide.
        return width > m_room ? FittedLine {text, m_room, m_room / width} : FittedLine {text, width, 1};
    }

    QStringView m_text;
    const Typeface& m_font;
    double m_room;
    const TextRuler& m_ruler;
    qsizetype m_at = 0;
    qsizetype m_break = 0;
};

} // namespace

FittedLine fitLine(
    const QString& text, const Typeface& font, double room, const TextRuler& ruler, double least)
{
    const double width = ruler.width(text, font);
    if (width <= room) return {text, width, 1};
    if (room >= width * least) return {text, room, room / width};
    const FittedLine cut = LineBreaker(text, font, room / least, ruler).rest();
    return {cut.text, cut.width * least, cut.squeeze * least};
}

std::vector<FittedLine> fitLines(
    const QString& text, const Typeface& font, double room, const TextRuler& ruler, int most)
{
    if (text.isEmpty()) return {};
    const double width = ruler.width(text, font);
    if (width <= room) return {{text, width, 1}};
    LineBreaker breaker(text, font, room, ruler);
    std::vector<FittedLine> lines;
    while (!breaker.atEnd() && int(lines.size()) < most - 1)
        lines.push_back(breaker.next());
    if (!breaker.atEnd()) lines.push_back(breaker.rest());
    return lines;
}

std::vector<FittedLine> fitEvenLines(
    const QString& text, const Typeface& font, double room, const TextRuler& ruler, int most)
{
    auto lines = fitLines(text, font, room, ruler, most);
    if (lines.size() < 2) return lines;
    const double even = ruler.width(text, font) / double(lines.size()) + font.points * TwipsPerPoint / 2;
    auto evenLines = fitLines(text, font, std::min(even, room), ruler, most);
    const bool isWhole = !evenLines.back().text.endsWith(Ellipsis) || text.endsWith(Ellipsis);
    return isWhole && evenLines.size() == lines.size() ? evenLines : lines;
}

} // namespace quilla
