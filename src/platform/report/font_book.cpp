#include "platform/report/font_book.h"

#include "platform/report/report_page.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QRawFont>

namespace quilla {

namespace {

/// What may stand in for a family, the nearest first.
QStringList standInsFor(const QString& family)
{
    const QStringList song {u"宋体"_s, u"SimSun"_s, u"新宋体"_s, u"NSimSun"_s, u"Noto Serif CJK SC"_s,
        u"Source Han Serif SC"_s, u"Source Han Serif CN"_s, u"AR PL UMing CN"_s};
    const QStringList kai {
        u"楷体_GB2312"_s, u"KaiTi_GB2312"_s, u"楷体"_s, u"KaiTi"_s, u"STKaiti"_s, u"AR PL UKai CN"_s};
    if (family == kai.front()) return kai + song;
    return family == song.front() ? song : QStringList {family} + song;
}

/// Scripts whose characters stand side by side as they come.
bool needsNoShaping(char16_t c)
{
    return c < 0x300 || (c >= 0x2000 && c < 0x2c00) || (c >= 0x2e80 && c < 0xa000)
        || (c >= 0xf900 && c < 0xfb00) || (c >= 0xfe30 && c < 0xfe50) || (c >= 0xff00 && c < 0xfff0);
}

} // namespace

/// A font at one size with what is known of its characters.
struct FontBook::Cut {
    struct Known {
        float width = -1; ///< until it is asked for
        quint32 glyph = 0; ///< 0 for one that the font lacks or that needs a shaper
    };

    Cut(const Typeface& face_, const QFont& font_)
        : face(face_)
        , font(font_)
        , metrics(font_)
        , raw(QRawFont::fromFont(font_))
        , known(0x10000)
    {
    }

    const Known& of(QChar c)
    {
        Known& entry = known[c.unicode()];
        if (entry.width < 0) entry = lookUp(c);
        return entry;
    }

    Known lookUp(QChar c) const
    {
        const QList<quint32> glyphs
            = needsNoShaping(c.unicode()) ? raw.glyphIndexesForString(QString(c)) : QList<quint32>();
        if (glyphs.size() != 1 || glyphs[0] == 0) return {float(metrics.horizontalAdvance(c)), 0};
        return {float(raw.advancesForGlyphIndexes(glyphs)[0].x()), glyphs[0]};
    }

    /// The characters of the main block that have the glyph of a radical.
    void addRadicals(QHash<char16_t, char16_t>& characters) const
    {
        QHash<quint32, char16_t> radicals;
        forEach(0x2e80, 0x2f00, [&](char16_t radical, quint32 glyph) { radicals.insert(glyph, radical); });
        forEach(0x4e00, 0xa000, [&](char16_t character, quint32 glyph) {
            if (const char16_t radical = radicals.value(glyph)) characters.insert(radical, character);
        });
    }

    /// Calls `visit` with each character of a block that the font has, and its glyph.
    template <typename Visit> void forEach(char16_t first, char16_t end, Visit visit) const
    {
        QString block;
        for (char16_t c = first; c < end; ++c)
            block.append(QChar(c));
        const QList<quint32> glyphs = raw.glyphIndexesForString(block);
        for (qsizetype i = 0; i < glyphs.size(); ++i)
            if (glyphs[i]) visit(block[i].unicode(), glyphs[i]);
    }

    Typeface face;
    QFont font;
    QFontMetricsF metrics;
    QRawFont raw;
    std::vector<Known> known;
};

FontBook::FontBook()
    : m_installed(QFontDatabase::families())
{
}

FontBook::~FontBook() = default;

QString FontBook::installedFor(const QString& family) const
{
    for (const QString& name : standInsFor(family))
        if (m_installed.contains(name, Qt::CaseInsensitive)) return name;
    return QFontDatabase::families(QFontDatabase::SimplifiedChinese).value(0, family);
}

FontBook::Cut& FontBook::cutOf(const Typeface& face) const
{
    for (const auto& cut : m_cuts)
        if (cut->face == face) return *cut;
    QFont font(installedFor(face.family));
    font.setPixelSize(std::max(1, qRound(face.points * TwipsPerPoint)));
    font.setBold(face.bold);
    font.setKerning(false); // the width of a text is then the sum of its characters'
    font.setHintingPreference(QFont::PreferNoHinting);
    m_cuts.push_back(std::make_unique<Cut>(face, font));
    return *m_cuts.back();
}

const QFont& FontBook::font(const Typeface& face) const
{
    return cutOf(face).font;
}

double FontBook::width(QStringView text, const Typeface& face) const
{
    Cut& cut = cutOf(face);
    double width = 0;
    for (const QChar c : text) {
        const Cut::Known& known = cut.of(c);
        if (known.glyph == 0 && text.size() > 1) return cut.metrics.horizontalAdvance(text.toString());
        width += double(known.width);
    }
    return width;
}

std::optional<QGlyphRun> FontBook::glyphs(const QString& text, const Typeface& face) const
{
    Cut& cut = cutOf(face);
    QList<quint32> indexes;
    QList<QPointF> places;
    double x = 0;
    for (const QChar c : text) {
        const Cut::Known& known = cut.of(c);
        if (known.glyph == 0) return {};
        indexes.append(known.glyph);
        places.append(QPointF(x, 0));
        x += double(known.width);
    }
    QGlyphRun run;
    run.setRawFont(cut.raw);
    run.setGlyphIndexes(indexes);
    run.setPositions(places);
    return run;
}

QHash<char16_t, char16_t> FontBook::charactersOfRadicals() const
{
    QHash<char16_t, char16_t> characters;
    for (char16_t radical = 0x2f00; radical < 0x2fe0; ++radical) {
        const QString usual = QString(QChar(radical)).normalized(QString::NormalizationForm_KC);
        if (usual[0] != QChar(radical)) characters.insert(radical, usual[0].unicode());
    }
    QStringList done;
    for (const auto& cut : m_cuts) {
        const QString name = cut->raw.familyName() + cut->raw.styleName();
        if (!done.contains(name)) cut->addRadicals(characters);
        done.append(name);
    }
    return characters;
}

double FontBook::drop(const Typeface& face) const
{
    const QFontMetricsF& metrics = cutOf(face).metrics;
    return (metrics.ascent() - metrics.descent()) / 2;
}

} // namespace quilla
