#include "quilla-db/operator_commands.h"

#include "database/opened_library.h"
#include "holdings/operators_ops.h"
#include "platform/core/text.h"
#include "quilla-db/asked_password.h"

namespace quilla {

Outcome listOperatorsOf(const Arguments& arguments, QTextStream& out)
{
    OpenedLibrary place(arguments.target);
    for (const LibraryOperator& listed : listOperators(place.connection))
        out << listed.name << (listed.mayBorrow ? QString() : u"\t不能使用流通台"_s)
            << (listed.hasPassword ? QString() : u"\t没有密码"_s) << u'\n';
    return Outcome::Done;
}

Outcome addOperatorOf(const Arguments& arguments, QTextStream& out)
{
    OpenedLibrary place(arguments.target);
    addOperator(place.connection, arguments.file, askedPassword());
    out << u"已增加操作员："_s << arguments.file << u'\n';
    return Outcome::Done;
}

Outcome setPasswordOf(const Arguments& arguments, QTextStream& out)
{
    OpenedLibrary place(arguments.target);
    setPassword(place.connection, arguments.file, askedPassword());
    out << u"已设置操作员 "_s << arguments.file << u" 的密码。\n"_s;
    return Outcome::Done;
}

Outcome removeOperatorOf(const Arguments& arguments, QTextStream& out)
{
    OpenedLibrary place(arguments.target);
    removeOperator(place.connection, arguments.file);
    out << u"已删除操作员："_s << arguments.file << u'\n';
    return Outcome::Done;
}

} // namespace quilla
