#pragma once

#include "platform/sql/schema.h"

#include <QByteArray>
#include <QStringList>

#include <array>
#include <optional>
#include <vector>

namespace quilla {

/// The forms in which books come and go.
enum class BookFormat { Unknown, Cnmarc, Marc21, Csv, Tsv };
enum class CodePage { Unknown, Utf8, Gb18030, Marc8 };

/// What is known of a title, in the order in which it is exported.
namespace TitleField {
enum {
    Name,
    Author,
    Isbn,
    Class,
    Number,
    Mark,
    Publisher,
    Place,
    Date,
    Edition,
    Pages,
    Size,
    Series,
    SeriesAuthor,
    Terms,
    Language,
    Kind,
    AuthorCode,
    Notes,
    Cataloguer,
    Catalogued,
    Count
};
}

/// What is known of a copy.
namespace CopyField {
enum { Barcode, Volume, Location, Price, State, Count };
}

/// Texts by field. A null text was not mentioned; an empty one was left empty.
using TitleValues = std::array<QString, TitleField::Count>;
using CopyValues = std::array<QString, CopyField::Count>;

/// A title with copies, as it was read or before it is written to a file.
struct BookRecord {
    int number = 0; ///< of the record or the line in its file, from 1
    bool isLine = false; ///< it is counted by lines
    TitleValues title;
    std::vector<CopyValues> copies;
    QString fault; ///< why it could not be read; empty when it was
    QByteArray raw; ///< the bytes of one that could not be read
    bool repaired = false; ///< its lengths were wrong and were set right

    /// "第 3 行", as a refusal names it.
    QString place() const;
};

/// A field's column, and the captions under which a file may bring it besides the column's name.
struct BookFieldInfo {
    QString column;
    QStringList captions;
};
const BookFieldInfo& titleField(int field);
const BookFieldInfo& copyField(int field);

/// The field of that caption or column; nullopt for any other.
std::optional<int> findTitleField(const QString& caption);
std::optional<int> findCopyField(const QString& caption);

} // namespace quilla
