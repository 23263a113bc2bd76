// Lets sqlite3 and other programs read a library: the order of its texts and the functions of its views.
//   sqlite3 -readonly -cmd '.load /usr/lib/quilla/order' quilla.db "select * from JhskV"

#include "platform/core/text_order.h"
#include "platform/db/sqlite/sqlite_functions.h"
#include "platform/sql/functions.h"

#include <string>

SQLITE_EXTENSION_INIT1

using namespace quilla;

namespace {

const SystemClock theClock;
StatementTime theTime(theClock);

/// The clock that the desk uses would stand still here, since nothing resets it when a statement begins.
void now(sqlite3_context* context, int, sqlite3_value**)
{
    const CanonicalMoment moment(theClock.now());
    const std::string_view text = moment.view();
    sqlite3_result_text(context, text.data(), int(text.size()), SQLITE_TRANSIENT);
}

/// Empty where the open file is no library.
std::string orderOfLibrary(sqlite3* database)
{
    std::string version;
    const auto take = [](void* found, int, char** fields, char**) {
        *static_cast<std::string*>(found) = fields[0];
        return 0;
    };
    sqlite3_exec(database, "select version from qj_order", take, &version, nullptr);
    return version;
}

/// What sorts differently would find nothing by the indexes, and spoil them when it writes.
bool sortsDifferently(sqlite3* database)
{
    const std::string version = orderOfLibrary(database);
    return !version.empty() && version != orderVersion().toStdString();
}

} // namespace

extern "C" Q_DECL_EXPORT int sqlite3_extension_init(
    sqlite3* database, char** words, const sqlite3_api_routines* api)
{
    SQLITE_EXTENSION_INIT2(api)
    if (sortsDifferently(database)) {
        *words = sqlite3_mprintf("this library was sorted with another ICU; open it with quilla first");
        return SQLITE_ERROR;
    }
    if (const int code = registerFunctions(database, theTime)) return code;
    return sqlite3_create_function(database, sql::Function::Now.toUtf8().constData(), 0,
        SQLITE_UTF8 | SQLITE_INNOCUOUS, nullptr, now, nullptr, nullptr);
}
