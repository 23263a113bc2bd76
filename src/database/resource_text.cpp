#include "database/resource_text.h"

#include "platform/core/built_in_file.h"
#include "platform/core/text.h"

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
    QString statement;
    for (const QStringView line : QStringView(tsql).split(u'\n')) {
        if (line.trimmed().compare(u"go", Qt::CaseInsensitive) != 0) {
            statement += line;
            statement += u'\n';
            continue;
        }
        if (!statement.trimmed().isEmpty()) statements += statement;
        statement.clear();
    }
    if (!statement.trimmed().isEmpty()) statements += statement;
    return statements;
}

} // namespace quilla
