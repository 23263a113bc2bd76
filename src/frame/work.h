#pragma once

#include "frame/sublib.h"

namespace quilla {

/// How the connection of an operation is opened.
enum class Opened {
    Asking, ///< by `OpenDbConnection`: the settings are read anew, and the operator may be asked
    Directly, ///< from `ConnectionText` as it stands: nothing is read and nothing is asked
    Shaped, ///< as directly, for results in groups; one that does not open fails at its first statement
};

/// The connection of one operation, lent for as long as the object lives. Its class names the error mode of
/// the operation; leaving the scope rolls back what is not committed and gives the connection back.
class Work {
public:
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;

    /// Whether the operation may go on. False only after an asking that sent the operator to the settings,
    /// or found none. After a failed opening and the answer No it is true, and each statement fails.
    explicit operator bool() const { return m_opening == GoOn; }
    /// Whether the operator was sent to the settings: the one outcome that ends a work which otherwise goes
    /// on without a connection.
    bool sentToSettings() const { return m_opening == -1; }
    Session& session() const { return m_session; }
    Connection& connection() { return m_conn; }
    /// Rolls back what is not committed and gives the connection back. For before a message box: other desks
    /// must not wait for this one to be read.
    void release() { m_conn.close(); }

protected:
    explicit Work(Session& session)
        : m_session(session)
    {
    }
    ~Work() = default;
    /// Throws `Error` only when it opens directly.
    void open(Opened opened);

    Session& m_session;
    Connection m_conn;

private:
    int m_opening = GoOn; ///< the result of `OpenDbConnection`
};

/// Strict mode: nothing is caught. A failing statement throws `Error`, which ends in the run-time error box
/// unless `handled` catches it.
class StrictWork : public Work {
public:
    /// Throws `Error` when it opens directly and the database does not open.
    explicit StrictWork(Session& session, Opened opened = Opened::Asking);

    /// The number of rows affected.
    int execute(QStringView tsql) { return m_conn.execute(tsql); }
    Recordset open(QStringView tsql, CursorType cursor = CursorType::Keyset)
    {
        return m_conn.open(tsql, cursor);
    }
    /// Runs `steps` in one transaction. Nothing of it stands when one of them fails.
    template <typename Steps> void transact(Steps&& steps)
    {
        m_conn.begin(OnFailure::EndTransaction);
        steps();
        m_conn.commit();
    }
};

/// Resume mode: a failing statement leaves its error behind and the next one runs. The end of the work
/// forgets the error.
class ResumingWork : public Work {
public:
    /// A database that does not open directly leaves its error behind, and each statement fails.
    explicit ResumingWork(Session& session, Opened opened = Opened::Asking);

    /// Runs a step that may fail; see `LastError::attempt`.
    template <typename Step> auto attempt(Step&& step)
    {
        return m_session.error.attempt(std::forward<Step>(step));
    }
    /// Sends a statement that brings no rows. The number of rows affected, nullopt when it failed.
    std::optional<int> send(QStringView tsql);
    /// A select that fails counts as one without rows.
    Recordset select(QStringView tsql, CursorType cursor = CursorType::Keyset);
    /// Whether an error stands since the work began or since an inner operation (`GetServerDate`,
    /// `ComputeDueDate`) forgot it.
    bool failed() const { return m_session.error.isSet(); }

    /// Runs `steps` in one transaction; they return whether their writes may stand. Committed, and true, when
    /// they may and no error stands; else rolled back. A transaction that does not begin runs no steps, and
    /// one whose commit fails is none. Begins and ends without an error.
    template <typename Steps> bool transact(Steps&& steps)
    {
        const ResumeScope resume(m_session.error);
        if (!attempt([&] { m_conn.begin(); })) return false;
        const bool written = steps() && !failed() && attempt([&] { m_conn.commit(); });
        if (!written) attempt([&] { m_conn.rollback(); });
        return written;
    }
    /// Inside `transact`: what fails from here on is never committed. Before it, a failure that something
    /// forgets (as `GetServerDate` does) is not held against the transaction.
    void endTransactionOnFailure() { m_conn.endTransactionOnFailure(); }

private:
    ResumeScope m_resume;
};

/// Handler mode: the first error ends the work. `steps` gets a `StrictWork`; what it returns is returned.
/// After an error what is not committed has been rolled back and the connection given back before `tell`
/// shows the screen's own message, and the result is nullopt (false for steps without a result). Asking that
/// may not go on ends the same way without a message.
template <typename Steps, typename Tell>
auto handled(Session& session, Opened opened, Steps&& steps, Tell&& tell)
{
    using Result = std::invoke_result_t<Steps, StrictWork&>;
    constexpr bool bare = std::is_void_v<Result>;
    using Outcome = std::conditional_t<bare, bool, std::optional<std::conditional_t<bare, bool, Result>>>;
    std::optional<Error> failure;
    try {
        StrictWork work(session, opened);
        if (!work) return Outcome();
        if constexpr (bare) {
            steps(work);
            return Outcome(true);
        } else {
            return Outcome(steps(work));
        }
    } catch (const Error& error) {
        failure = error;
    }
    tell(*failure);
    return Outcome();
}

} // namespace quilla
