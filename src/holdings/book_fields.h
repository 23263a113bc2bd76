#pragma once

#include "holdings/book_record.h"
#include "holdings/marc_record.h"

#include <QHash>

namespace quilla {

/// From which fields of a MARC record a title and its copies come: read from a commented text that a library
/// can change (see fields.txt).
class BookFields {
public:
    /// Empty; see `builtIn`.
    BookFields() = default;
    /// Throws `Error` with the line that can't be understood.
    explicit BookFields(const QString& text);
    static BookFields builtIn();

    /// Fills title and copies. `format` is CNMARC or MARC21.
    void apply(const MarcRecord& record, BookFormat format, BookRecord& book) const;

    /// The code of a language that has one, else the name itself.
    QString languageCode(const QString& name) const;

    /// One place in a record.
    struct Source {
        QString tag;
        QString codes;
        int from = -1; ///< the part of a control field, both ends included
        int to = -1;
        bool all = false; ///< every field of that tag, not only the first
        QString joiner = QStringLiteral(" "); ///< between subfields
        QString between = QStringLiteral("；"); ///< between fields
    };
    /// The first alternative that has anything is taken; its sources are joined.
    using Rule = std::vector<std::vector<Source>>;

private:
    struct Rules {
        std::array<Rule, TitleField::Count> title;
        std::array<Rule, CopyField::Count> copy;
    };
    void readLine(const QString& line, const QString& section);
    QString value(const MarcRecord& record, const Rule& rule, int field) const;
    void takeCopies(const MarcRecord& record, const Rules& rules, BookRecord& book) const;
    bool takeCopiesOf(
        const MarcRecord& record, const Rules& rules, const Source& barcodes, BookRecord& book) const;

    Rules m_cnmarc;
    Rules m_marc21;
    QHash<QString, QString> m_languages; ///< names by code
};

} // namespace quilla
