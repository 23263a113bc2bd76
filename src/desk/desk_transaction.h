#pragma once

#include "frame/session.h"

namespace quilla {

/// Runs the writes of a desk operation in one transaction in resume mode. `steps` returns the number of
/// copy rows that changed. Committed, and true, when no error stands and a copy row changed; else rolled
/// back. A transaction that does not begin writes nothing, and one whose commit fails is none. Leaves no
/// error behind.
template <typename Steps> bool inTransaction(Session& session, Connection& conn, Steps&& steps)
{
    LastError& error = session.error;
    error.clear();
    bool written = error.attempt([&] { conn.begin(); });
    if (written) {
        const int changed = steps();
        written = !error.isSet() && changed > 0 && error.attempt([&] { conn.commit(); });
        if (!written) error.attempt([&] { conn.rollback(); });
    }
    error.clear();
    return written;
}

} // namespace quilla
