#pragma once

#include "platform/core/text.h"

#include <vector>

namespace quilla {

/// A4.
enum class Paper { Upright, Wide };

/// What a column holds; it decides how wide the column is and where its texts stand.
enum class Content {
    Text, ///< shares the width that the others leave, left, in up to three lines
    Code, ///< barcodes, card numbers, call numbers
    Name, ///< of a person or a type
    Word, ///< a word or a rank, centred
    Date,
    Count, ///< a number, right
    Money, ///< with two digits after the point, right
};

enum class Place { Left, Centre, Right };

/// A font by the name that the design knows; an installed one stands in for it.
struct Typeface {
    QString family = u"宋体"_s;
    double points = 10;
    bool bold = false;

    friend bool operator==(const Typeface&, const Typeface&) = default;
};

/// A text that stands in a band. Its caption may hold placeholders: "%i" the report's title, "%D" the date,
/// "%p" the page, "%P" the number of pages. A screen may write another caption by the label's name.
struct ReportLabel {
    QString name;
    QString caption;
    Typeface font {};
    Place place = Place::Left;
    double lead = 4; ///< points of room before it, in a run
};

/// Labels beside each other: each in an equal part of the width, or set as one run in the middle.
struct ReportLine {
    std::vector<ReportLabel> labels {};
    bool isRun = false;
    QString field {}; ///< of the group, shown in place of labels
    double gap = 0; ///< points of room below
};

/// A text box of the detail, bound to a field, with the caption above it.
struct ReportColumn {
    QString caption; ///< may hold "%i"
    QString field;
    Content content = Content::Text;
    double share = 1; ///< of a text in the width that is left; for other contents times their usual width
};

/// A sum over a field of all rows. It stands under the column of that field, or of `under`; a field that
/// the rows lack leaves it blank.
struct ReportTotal {
    QString name;
    QString field;
    QString under {};
};

/// The groups of a report with a shaped result. Their footer, `Section7`, holds nothing.
struct ReportGroup {
    QString rows; ///< name of the rows of a group
    std::vector<ReportLine> Section6; ///< group header: these lines, then the captions
};

/// The layout of a report, as data. Its sections keep the names by which the designs know them.
struct ReportDesign {
    QString name;
    QString title; ///< until a screen sets another one
    Paper paper = Paper::Upright;
    std::vector<ReportLine> Section4 {}; ///< report header, on the first page
    std::vector<ReportColumn> Section1 {}; ///< detail; the captions make `Section2`, the page header
    ReportLine Section3 {}; ///< page footer
    QString totalCaption {};
    std::vector<ReportTotal> Section5 {}; ///< report footer
    std::vector<ReportGroup> group {}; ///< none or one; a group begins a page and has the captions above it
    double points = 10; ///< size of the text in the table
    bool isSilent = false; ///< says nothing about its errors
};

/// The designs of a program.
using ReportCatalog = std::vector<ReportDesign>;

// The vocabulary of designs.

/// The title over the table; `caption` in large letters in the middle.
ReportLine heading(const QString& caption, const QString& name = u"labTitle"_s);
/// A line of labels under the title, in the middle, one after the other.
ReportLine run(std::vector<ReportLabel> labels);
/// A label at the left and one at the right.
ReportLine ends(const ReportLabel& left, const ReportLabel& right);
/// The heading of a group, a field of it.
ReportLine groupHeading(const QString& field);
/// The foot of a page: a date and the page numbers.
ReportLine dateAndPages(const ReportLabel& date = {u"labDate"_s, u"报表日期：%D"_s});

} // namespace quilla
