#pragma once

#include "holdings/book_fields.h"

#include <memory>

namespace quilla {

/// The records of a file, one after the other.
class BookSource {
public:
    virtual ~BookSource() = default;
    /// The next record, also one that has a fault. False at the end.
    virtual bool next(BookRecord& book) = 0;
    /// How much of the file has been read, and how much it holds, in units of its own.
    virtual qint64 done() const = 0;
    virtual qint64 total() const = 0;
    /// Headings that mean nothing to us; only a delimited file has any.
    virtual QStringList unknownHeadings() const { return {}; }
    /// Whether records are counted by lines.
    virtual bool hasLines() const { return false; }
};

/// Opens a file. A format or code page that is not named is recognised from the bytes. `fields` must outlive
/// the source. Throws `Error` when the file can't be read or holds no books.
std::unique_ptr<BookSource> openBooks(
    const QString& file, BookFormat format, CodePage codePage, const BookFields& fields);

/// The two kinds of files that `openBooks` chooses from.
std::unique_ptr<BookSource> openMarcBooks(
    const QString& file, BookFormat format, CodePage codePage, const BookFields& fields);
std::unique_ptr<BookSource> openDelimitedBooks(const QString& file);

} // namespace quilla
