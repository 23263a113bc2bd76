#pragma once

#include "holdings/book_record.h"
#include "platform/core/new_file.h"

#include <QFile>

namespace quilla {

/// Keeps the records that an import refused: those that could be read as a delimited file with the reasons,
/// to be mended and imported again; of those that could not the reasons there, which an import passes over,
/// and the bytes in a second file beside it.
class RefusedBooks {
public:
    /// Begins both files; throws `Error` when they can't be written or are there already.
    explicit RefusedBooks(const QString& file);

    void add(const BookRecord& book, const QString& reason);
    /// Puts those files that have records under their names, and says which.
    QStringList finish();

private:
    static void write(QFile& file, const QByteArray& bytes);

    QString m_names[2];
    NewFile m_files[2];
    QFile m_lines;
    QFile m_damaged;
};

} // namespace quilla
