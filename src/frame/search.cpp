#include "frame/search.h"

#include "frame/work.h"

namespace quilla {

QString ListSearch::statement() const
{
    QString text = select;
    if (!condition.isEmpty()) text += joint + condition;
    if (!order.isEmpty()) text += u" order by "_s + order;
    return text;
}

std::optional<Recordset> rowsFound(Session& session, const ListSearch& search)
{
    ResumingWork work(session);
    if (!work) return {};
    return work.select(search.statement());
}

QStringList firstColumn(Session& session, const QString& select)
{
    QStringList texts;
    if (auto rows = rowsFound(session, {.select = select}))
        for (; !rows->eof(); rows->next())
            texts.append(rows->field(0).text());
    return texts;
}

} // namespace quilla
