#pragma once

#include "holdings/book_record.h"
#include "holdings/marc_record.h"

#include <memory>

namespace quilla {

/// Reads records of ISO 2709, in the code page that is named or in the one that their bytes show.
class MarcParser {
public:
    explicit MarcParser(CodePage codePage);
    ~MarcParser();

    /// One record with its end mark. Nullopt when it can't be read; `fault` says why then. A record whose
    /// lengths are wrong is put right where its end marks allow that.
    std::optional<MarcRecord> read(const QByteArray& bytes);
    const QString& fault() const;
    bool repaired() const; ///< the record read last

private:
    struct Private;
    std::unique_ptr<Private> d;
};

/// CNMARC keeps its title in field 200, MARC 21 in 245. Unknown when the record has neither.
BookFormat formatOf(const MarcRecord& record);

/// The longest record and field that the lengths of the format can tell, in bytes.
inline constexpr qsizetype LongestMarcRecord = 99999;
inline constexpr qsizetype LongestMarcField = 9999;

inline constexpr char RecordEnd = 0x1d;
inline constexpr char FieldEnd = 0x1e;
inline constexpr char SubfieldMark = 0x1f;

/// A field's tag and its bytes without the end mark.
using RawMarcField = std::pair<QByteArray, QByteArray>;
/// A whole record with fresh lengths; empty when a field or the record is too long for the format.
QByteArray marcBytes(QByteArray leader, const std::vector<RawMarcField>& fields);

} // namespace quilla
