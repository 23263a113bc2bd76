#pragma once

#include "platform/report/text_fit.h"

#include <QFont>
#include <QGlyphRun>
#include <QHash>
#include <QStringList>

#include <memory>
#include <optional>

namespace quilla {

/// The fonts of reports. A family that the designs name but the machine lacks is replaced by the nearest
/// installed Chinese one. Sizes are in twips, so a text has the same lines on the screen and on paper.
class FontBook final : public TextRuler {
public:
    FontBook();
    ~FontBook() override;

    const QFont& font(const Typeface& face) const;
    double width(QStringView text, const Typeface& face) const override;
    /// The glyphs of a text straight from the font, without the work of a shaper: Chinese and Latin texts
    /// need none, and a PDF names them as what they are. Nullopt for any other text.
    std::optional<QGlyphRun> glyphs(const QString& text, const Typeface& face) const;
    /// The usual character for each of the radicals that look the same in these fonts.
    QHash<char16_t, char16_t> charactersOfRadicals() const;
    /// From the middle of a line down to its base line.
    double drop(const Typeface& face) const;

private:
    struct Cut;
    Cut& cutOf(const Typeface& face) const;
    QString installedFor(const QString& family) const;

    QStringList m_installed;
    mutable std::vector<std::unique_ptr<Cut>> m_cuts; ///< the few that were asked for
};

} // namespace quilla
