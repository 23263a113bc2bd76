#pragma once

#include "platform/db/recordset.h"

#include <QStringList>

namespace quilla {

/// The texts of a field in the rows that are left.
inline QStringList fieldTexts(Recordset& rows, QStringView field)
{
    QStringList texts;
    for (; !rows.eof(); rows.next())
        texts.append(rows.field(field).text());
    return texts;
}

} // namespace quilla
