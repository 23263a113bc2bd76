#include "quilla-db/starter_commands.h"

#include "database/opened_library.h"
#include "holdings/starter_ops.h"
#include "platform/core/text.h"

namespace quilla {

Outcome loadStarterOf(const Arguments& arguments, QTextStream& out)
{
    OpenedLibrary place(arguments.target);
    const StarterReport report = loadStarter(place.connection, arguments.file);
    out << u"已装入读者类型 "_s << report.types << u" 个、读者单位 "_s << report.units << u" 个、节假日 "_s
        << report.holidays << u" 个。\n"_s;
    if (!report.kept.isEmpty()) out << u"已经有的没有改动："_s << report.kept.join(u"、"_s) << u'\n';
    return Outcome::Done;
}

Outcome writeStarterOf(const Arguments& arguments, QTextStream& out)
{
    for (const QString& file : writeStarter(arguments.file))
        out << u"已写出："_s << file << u'\n';
    out << u"修改后用 load-starter "_s << arguments.file << u" 装入。\n"_s;
    return Outcome::Done;
}

} // namespace quilla
