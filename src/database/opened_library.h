#pragma once

#include "database/library_schema.h"
#include "database/target.h"
#include "platform/db/pooled_factory.h"

namespace quilla {

/// The library that a command works on, with an open connection.
struct OpenedLibrary {
    explicit OpenedLibrary(const Target& target)
        : factory(schema, clock)
        , connection(factory.open(target.connectionText))
    {
    }

    const SystemClock clock;
    const sql::Schema schema = librarySchema();
    PooledFactory factory;
    Connection connection;
};

} // namespace quilla
