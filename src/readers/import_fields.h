#pragma once

#include "platform/core/text.h"
#include "platform/sql/schema.h"

#include <QStringList>

#include <array>

namespace quilla {

/// What a file of readers can hold. The numbers and the two bits stand as in `jycs`, from where they come
/// when the file does not say.
namespace ImportField {
enum {
    Code,
    Name,
    Sex,
    Type,
    Unit,
    Issued,
    Term,
    State,
    Photo,
    Memo,
    LoanCopies,
    LoanDays,
    Fine,
    Defile,
    Lost,
    Renewals,
    RenewalDays,
    MayHoldOverdue,
    HoldDays,
    HoldCopies,
    ArtsCopies,
    ScienceCopies,
    NeedsNoCard,
    PaperKind,
    PaperNumber,
    Address,
    Birthday,
    Email,
    Count
};
}

inline constexpr int FirstParameter = ImportField::LoanCopies;
inline constexpr int FirstDetail = ImportField::PaperKind; ///< from here on columns of `dzkx`

/// The values of one reader as texts, empty for none.
using ImportValues = std::array<QString, ImportField::Count>;

/// A field's column, and the captions under which a file may bring it besides the column's name.
struct ImportFieldInfo {
    QString column;
    QStringList captions;
};
const ImportFieldInfo& importField(int field);

/// The column of the library's tables that a field goes to.
const sql::Column& importColumn(const sql::Schema& schema, int field);

/// Stands for a date that a reader has not; an empty one is left open.
inline constexpr QStringView NoDate = u"无";

/// Over the reasons in a file of refused lines; a file that is imported again may still have it.
inline constexpr QStringView ReasonCaption = u"原因";

/// A text that quotes the file, no longer than one reads on a screen.
QString shortened(const QString& text);

/// A column of the file that is not imported.
inline constexpr int NoField = -1;

/// What the columns of a file hold: a field each, `NoField` for the reasons and for what is unknown. Throws
/// `Error` that names a heading that comes twice or is missing. Where readers are changed the code is enough.
std::vector<int> fieldsOfHeadings(const QStringList& headings, bool codeIsEnough = false);
/// The headings that mean nothing to us, as they stand in the file.
QStringList unknownHeadings(const QStringList& headings);

} // namespace quilla
