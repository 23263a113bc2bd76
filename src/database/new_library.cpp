#include "database/new_library.h"

#include "database/library_schema.h"
#include "platform/db/embedded.h"
#include "platform/db/pooled_factory.h"

namespace quilla {

namespace {

void fillOpened(const Target& target, const sql::Schema& schema, const LibraryFill& fill)
{
    const SystemClock clock;
    PooledFactory factory(schema, clock);
    Connection connection = factory.open(target.connectionText);
    connection.begin(OnFailure::EndTransaction);
    fill(connection);
    connection.commit();
    connection.gatherStatistics();
}

} // namespace

void makeNew(const Target& target, const sql::Schema& schema, const LibraryFill& fill)
{
    if (target.file)
        createEmbedded(*target.file, schema, SystemClock(), fill, target.group);
    else
        fillOpened(target, schema, fill);
}

void makeLibrary(const Target& target, const QString& operatorName, const LibraryFill& fill)
{
    makeNew(target, librarySchema(), [&](Connection& connection) {
        createLibrary(connection);
        insertInitialRows(connection, operatorName);
        if (fill) fill(connection);
    });
}

void loadLibrary(const Target& target, const QString& operatorName, const LibraryFill& fill)
{
    if (target.file && !target.exists())
        makeLibrary(target, operatorName, fill);
    else
        fillOpened(target, librarySchema(), fill);
}

} // namespace quilla
