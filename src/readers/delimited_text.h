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

/// The same, record by record: of a large file nobody needs them all at once. The text must outlive it.
class DelimitedReader {
public:
    explicit DelimitedReader(QStringView text);

    QChar delimiter() const { return m_delimiter; }
    /// The next record that is not blank. False at the end. Throws as `readDelimited` does.
    bool next(TextRecord& record);
    /// How many characters have been read.
    qsizetype position() const { return m_at; }

private:
    bool atEnd() const { return m_at >= m_text.size(); }
    TextRecord record();
    QString field();
    QString quotedPart();
    void lineBreak();

    QStringView m_text;
    QChar m_delimiter;
    qsizetype m_at = 0;
    int m_line = 1;
};

/// The fields as one line that `readDelimited` reads back, with its line break.
QString delimitedLine(const QStringList& fields, QChar delimiter);

} // namespace quilla
