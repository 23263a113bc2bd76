#pragma once

#include "platform/core/dates.h"
#include "platform/db/procedure_runner.h"
#include "platform/sql/schema.h"

namespace quilla {

/// The factory of the program: chooses the driver from the text, keeps a pool of physical connections a
/// text, lends clean ones. What it lends must not outlive it. Not thread safe.
class PooledFactory final : public ConnectionFactory {
public:
    /// `schema` and `clock` must outlive the factory. The clock is what the embedded database answers to
    /// `getdate()`; a server has its own.
    PooledFactory(const sql::Schema& schema, const Clock& clock);
    ~PooledFactory() override;

    Connection open(const QString& connectionText) override;

    void setHook(StatementHook hook);
    /// What answers `exec` on the embedded database.
    void setProcedures(ProcedureRunner procedures);
    /// Closes the connections that are not lent.
    void drain();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace quilla
