#pragma once

#include "bench/recording.h"

#include <libpq-fe.h>

struct sqlite3;
struct sqlite3_stmt;

namespace quilla {

/// The yardstick of the benchmarks: what an operation sent, sent again on nothing but the engine's own
/// library, each statement prepared once, on one connection, every field of every row read as a text.
class BareDriver {
public:
    virtual ~BareDriver() = default;

    void prepare(Recording& recording)
    {
        for (Step& step : recording)
            step.prepared = prepare(step.text, step.isBegin() || step.isCommit());
    }
    void replay(const Recording& recording, const DeskTask& work)
    {
        for (const Step& step : recording)
            run(step, work);
    }

protected:
    virtual int prepare(const QByteArray& text, bool isTransaction) = 0;
    virtual void run(const Step& step, const DeskTask& work) = 0;

    static const QByteArray& textOf(const Argument& argument, const DeskTask& work)
    {
        return argument.part < 0 ? argument.text : work.texts[std::size_t(argument.part)];
    }
};

/// The same pragmas as the program's; texts compare as its columns do, as far as the data needs it.
class BareSqlite final : public BareDriver {
public:
    explicit BareSqlite(const QString& file);
    ~BareSqlite() override;
    Q_DISABLE_COPY_MOVE(BareSqlite)

private:
    int prepare(const QByteArray& text, bool isTransaction) override;
    void run(const Step& step, const DeskTask& work) override;
    void check(int code) const;

    sqlite3* m_database = nullptr;
    std::vector<sqlite3_stmt*> m_statements;
};

/// Without savepoints.
class BarePostgres final : public BareDriver {
public:
    /// The connection must outlive it.
    explicit BarePostgres(PGconn* connection)
        : m_connection(connection)
    {
    }

private:
    int prepare(const QByteArray& text, bool isTransaction) override;
    void run(const Step& step, const DeskTask& work) override;
    void check(PGresult* result) const;

    PGconn* m_connection;
    std::vector<QByteArray> m_names;
};

} // namespace quilla
