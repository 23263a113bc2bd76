#pragma once

#include "platform/db/connection.h"

namespace quilla {

/// Runs `work` in one transaction, which is taken back when it throws: its caller may go on with the
/// connection.
template <typename Work> void inTransaction(Connection& connection, Work&& work)
{
    connection.begin(OnFailure::EndTransaction);
    try {
        work();
    } catch (...) {
        connection.rollback();
        throw;
    }
    connection.commit();
}

} // namespace quilla
