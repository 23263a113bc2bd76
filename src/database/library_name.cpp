#include "database/library_name.h"

#include "database/row_text.h"

namespace quilla {

QString libraryName(Connection& connection)
{
    const Recordset row = connection.open(u"select memo from Global where type='library' and code='name'");
    return row.eof() ? QString() : row.field(0).text();
}

void enterLibraryName(Connection& connection, const QString& name)
{
    RowText(connection, u"Global", u"type,code,memo").text(u"library").text(u"name").text(name).send();
}

} // namespace quilla
