#include "reservations/reader_pair_ops.h"

#include "frame/sublib.h"
#include "frame/work.h"

namespace quilla {

std::optional<QString> findReaderName(Session& session, const QString& readercode)
{
    const auto tell = [&](const Error& error) { session.prompt.inform(error.text, OperationTitle); };
    return handled(
        session, Opened::Directly,
        [&](StrictWork& work) {
            const Recordset reader = work.open(
                u"select readercode,name from dzk where readercode='%1'"_s.arg(SqlText(readercode)));
            return reader.eof() ? QString() : reader.field(u"name").text();
        },
        tell);
}

} // namespace quilla
