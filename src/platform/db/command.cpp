#include "platform/db/command.h"

#include "platform/core/text.h"

namespace quilla {

Command::Command(Connection& connection, const QString& procedure)
    : m_connection(connection)
    , m_call(u"exec "_s + procedure + u' ')
{
}

void Command::append(QStringView, const QString& value, int width)
{
    m_arguments += u'\'' + doubled(value.left(width)) + u'\'';
}

void Command::append(QStringView, int value)
{
    m_arguments += QString::number(value);
}

Recordset Command::execute()
{
    return m_connection.open(m_call + m_arguments.join(u','));
}

} // namespace quilla
