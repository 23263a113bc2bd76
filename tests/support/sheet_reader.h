#pragma once

#include "source_dir.h"

#include <QProcess>
#include <QStringList>

namespace quilla {

/// What a spreadsheet file holds, a sheet or a cell a line, as another program reads it.
inline QStringList readBack(const QString& file)
{
    QProcess reader;
    reader.start(QStringLiteral("/usr/bin/python3"),
        {QStringLiteral(QUILLA_SOURCE_DIR "/tests/output/read_sheets.py"), file});
    reader.waitForFinished(-1);
    const QString errors = QString::fromUtf8(reader.readAllStandardError());
    return (errors + QString::fromUtf8(reader.readAllStandardOutput())).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace quilla
