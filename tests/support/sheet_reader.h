#pragma once

#include "platform/grid/grid_model.h"
#include "source_dir.h"

#include <QProcess>
#include <QRegularExpression>
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

/// The filled cells of a row with their kinds, as in "s合计 n2".
inline QString sheetLine(const QStringList& sheet, int row)
{
    QStringList cells;
    for (const QString& cell : sheet.filter(QRegularExpression(QStringLiteral("^[A-Z]+%1 ").arg(row))))
        cells.append(cell.section(u' ', 1, 1) + cell.section(u' ', 2, 2).remove(u'"'));
    return cells.join(u' ');
}

/// What `sheetLine` gives for a line of a grid, whose first columns are texts.
inline QString exportedLine(const GridModel& grid, int row, int textColumns)
{
    QStringList cells;
    for (int col = 0; col < grid.Cols(); ++col) {
        const QString text = grid.TextMatrix(row, col);
        bool isNumber = false;
        const double number = QString(text).remove(u',').toDouble(&isNumber);
        if (isNumber && col >= textColumns)
            cells.append(u'n' + QString::number(number));
        else if (!text.isEmpty())
            cells.append(u's' + text);
    }
    return cells.join(u' ');
}

} // namespace quilla
