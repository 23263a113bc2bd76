#pragma once

#include "platform/report/report_design.h"

namespace quilla {

/// Tells how wide texts are, in twips.
class TextRuler {
public:
    virtual ~TextRuler() = default;
    virtual double width(QStringView text, const Typeface& font) const = 0;
};

/// A text as it stands on one line.
struct FittedLine {
    QString text;
    double width = 0; ///< squeezed
    double squeeze = 1;
};

/// Sets a text on one line no wider than `room`: squeezed down to `least` of its width, then cut with "…".
FittedLine fitLine(
    const QString& text, const Typeface& font, double room, const TextRuler& ruler, double least = 0.6);

/// Breaks a text into lines no wider than `room`: at blanks and between Chinese characters, never before a
/// closing or after an opening mark, inside a word only when the word alone is too wide. What is left after
/// `most` lines is cut with "…".
std::vector<FittedLine> fitLines(
    const QString& text, const Typeface& font, double room, const TextRuler& ruler, int most);
/// The same, with lines of much the same length, as captions are set.
std::vector<FittedLine> fitEvenLines(
    const QString& text, const Typeface& font, double room, const TextRuler& ruler, int most);

} // namespace quilla
