#include "database/resource_text.h"

#include "platform/core/built_in_file.h"
#include "platform/core/text.h"
#include "platform/sql/schema.h"

// A static library's resources are not linked unless something asks for them by name.
static void linkResources()
{
    Q_INIT_RESOURCE(library);
}

namespace quilla {

QString resourceText(const QString& name)
{
    linkResources();
    return QString::fromUtf8(builtInFile(u":/database/"_s + name));
}

QStringList splitStatements(const QString& tsql)
{
    QStringList statements;
    for (const sql::ScriptPart& part : sql::splitScript(tsql))
        statements += part.text;
    return statements;
}

} // namespace quilla
