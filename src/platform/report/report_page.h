#pragma once

#include "platform/report/report_design.h"

#include <QLineF>
#include <QRectF>
#include <QStringList>

#include <optional>

namespace quilla {

/// The measure of pages: twenty to a point.
constexpr double TwipsPerPoint = 20;
constexpr double TwipsPerInch = 1440;
constexpr double TwipsPerMillimetre = TwipsPerInch / 25.4;

QSizeF paperSize(Paper paper);

/// One line of text. `squeeze` below 1 sets it narrower than its font.
struct PlacedText {
    QString text;
    Typeface font;
    QPointF place; ///< its left end, half way up
    double squeeze = 1;
};

enum class Ink { Text, Muted, Rule, Hairline, Band, Bar };

struct PlacedRule {
    QLineF line;
    Ink ink;
};

struct PlacedBand {
    QRectF area;
    Ink ink;
};

/// What is on a page, in twips from the corner of the paper.
struct ReportPage {
    std::vector<PlacedBand> bands;
    std::vector<PlacedRule> rules;
    std::vector<PlacedText> texts;
};

class ReportData;

/// What the pages of a report list, for those who want the rows and not the pages.
struct ReportTable {
    QString title;
    QStringList captions;
    const ReportDesign& design;
    const ReportData& data;
};

/// Pages that can be shown, printed and saved.
class PrintedPages {
public:
    virtual ~PrintedPages() = default;
    virtual QString title() const = 0;
    virtual Paper paper() const = 0;
    /// The size of every page, in twips.
    virtual QSizeF size() const { return paperSize(paper()); }
    virtual int pageCount() const = 0;
    /// `index` from 0.
    virtual ReportPage page(int index) const = 0;
    /// nullopt where the pages are no list. Holds as long as the pages do.
    virtual std::optional<ReportTable> table() const { return {}; }
};

} // namespace quilla
