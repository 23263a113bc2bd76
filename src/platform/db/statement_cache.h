#pragma once

#include "platform/sql/translator.h"

#include <memory>
#include <vector>

namespace quilla {

/// Whether a prepared statement stays for the next time.
enum class StatementLife { Kept, OneUse };

/// What the cache wants to know of a prepared statement; the engines' statements derive from it.
struct CachedStatement {
    explicit CachedStatement(StatementLife life_)
        : life(life_)
    {
    }
    const StatementLife life;
    bool lent = false;
    bool spent = false; ///< must not be used again; the next one is prepared anew
};

/// Ends one execution: a kept statement becomes ready for the next one.
template <typename Statement> struct ReturnStatement {
    void operator()(Statement* statement) const noexcept
    {
        if (statement->life == StatementLife::OneUse) {
            delete statement;
            return;
        }
        statement->reset();
        statement->lent = false;
    }
};
template <typename Statement> using StatementLoan = std::unique_ptr<Statement, ReturnStatement<Statement>>;

/// The prepared statements of one connection, by the number of their translation. `Statement` is made from
/// the connection's handle, the text and its life.
template <typename Statement, typename Handle> class StatementCache {
public:
    explicit StatementCache(const Handle& handle)
        : m_handle(handle)
    {
    }

    /// A statement for one execution; a second one of its own while the kept one is still being read.
    StatementLoan<Statement> lend(const sql::Translation& translation)
    {
        const auto id = std::size_t(translation.id);
        if (id >= m_kept.size()) m_kept.resize(id + 1);
        auto& kept = m_kept[id];
        if (kept && kept->lent)
            return StatementLoan<Statement>(new Statement(m_handle, translation.text, StatementLife::OneUse));
        if (kept && kept->spent) forget(kept);
        if (!kept) keep(kept, translation);
        kept->lent = true;
        return StatementLoan<Statement>(kept.get());
    }

private:
    using Kept = std::unique_ptr<Statement>;

    void keep(Kept& place, const sql::Translation& translation)
    {
        // More shapes than a desk ever sends: the query dialog combines them freely, so not all are kept.
        constexpr int most = 500;
        if (m_count >= most) forgetIdle();
        place = std::make_unique<Statement>(m_handle, translation.text, StatementLife::Kept);
        ++m_count;
    }
    void forget(Kept& place)
    {
        place.reset();
        --m_count;
    }
    void forgetIdle()
    {
        for (Kept& statement : m_kept)
            if (statement && !statement->lent) forget(statement);
    }

    const Handle& m_handle;
    std::vector<Kept> m_kept;
    int m_count = 0;
};

} // namespace quilla
