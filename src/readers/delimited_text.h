#pragma once

#include <QStringList>

#include <vector>

namespace quilla {

/// One record of a delimited file.
struct TextRecord {
    int line; ///< of the file, from 1, where the record begins
    QStringList fields;
};

struct DelimitedText {
    QChar delimiter;
    std::vector<TextRecord> records; ///< blank lines left out
};

/// The text of a file as spreadsheets save it: UTF-8 or UTF-16 by its mark, else UTF-8 where the bytes are
/// that, else GB18030. Throws `Error` when they are neither, with a word of its own for a workbook.
QString decodedText(const QByteArray& bytes);

/// Takes a text apart by comma, semicolon or tab, whichever its first line has most of. A field may stand in
/// quotes, and hold delimiters, line breaks and doubled quotes then. Throws `Error` with the line of a quote
/// that is never closed.
DelimitedText readDelimited(QStringView text);

/// The fields as one line that `readDelimited` reads back, with its line break.
QString delimitedLine(const QStringList& fields, QChar delimiter);

} // namespace quilla
