#include "database/resource_text.h"

#include "platform/core/error.h"
#include "platform/core/text.h"

#include <QFile>

// A static library's resources are not linked unless something asks for them by name.
static void linkResources()
{
    Q_INIT_RESOURCE(library);
}

namespace quilla {

QString resourceText(const QString& name)
{
    linkResources();
    QFile file(u":/database/"_s + name);
    if (!file.open(QIODevice::ReadOnly)) throw Error(53, u"database"_s, u"程序内缺少文件：%1"_s.arg(name));
    return QString::fromUtf8(file.readAll());
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
