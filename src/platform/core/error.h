#pragma once

#include <QString>

#include <exception>
#include <optional>
#include <type_traits>
#include <utility>

namespace quilla {

/// What the platform throws: a failed statement, a connection that does not open, a field that is not
/// there. `number` is never 0; `text` is what an operator may be shown.
struct Error : std::exception {
    Error(int number, QString source, QString text);
    const char* what() const noexcept override;

    int number;
    QString source;
    QString text;

private:
    QByteArray m_utf8;
};

/// The numbers that the program itself gives; those of an engine are passed on as they come.
namespace ErrorNumber {
constexpr int NotOpen = 3709; ///< the connection is closed or was never opened
constexpr int NoCurrentRow = 3021; ///< the recordset stands at its end
constexpr int NoSuchField = 3265; ///< no field of that name or index
constexpr int NotUnderstood = 3001; ///< a statement outside the dialect that we speak
constexpr int CannotConvert = 241; ///< a text that is no date or no number, a number outside its column
constexpr int CannotOpen = 4060; ///< the database could not be opened
constexpr int InUse = 3218; ///< another desk writes, and waiting for it did not help
} // namespace ErrorNumber

/// An error as it is remembered; number 0 for none.
struct Failure {
    int number = 0;
    QString text {};
};

/// The last error of a run of steps that goes on after a failing one.
///
/// An operation in resume mode wraps each step in `attempt`; the error stays readable until `clear`,
/// and a later error takes the place of an earlier one. Procedures that set their own error mode
/// (`OpenDbConnection`, `GetServerDate`, `ComputeDueDate`) clear it on their way, so a test at the end
/// of an operation sees only errors since the last such call.
class LastError {
public:
    /// Runs `step`. True (or the step's value) when it did not fail; else the error is kept.
    template <typename Step> auto attempt(Step&& step)
    {
        using Result = std::invoke_result_t<Step>;
        if constexpr (std::is_void_v<Result>) {
            try {
                std::forward<Step>(step)();
                return true;
            } catch (const Error& error) {
                keep(error);
                return false;
            }
        } else {
            try {
                return std::optional<Result>(std::forward<Step>(step)());
            } catch (const Error& error) {
                keep(error);
                return std::optional<Result>();
            }
        }
    }

    void keep(const Error& error);
    void clear();

    bool isSet() const { return m_number != 0; }
    int number() const { return m_number; }
    const QString& text() const { return m_text; }

    /// The first error kept since `forgetFirst`, also after `clear`: what fails first is the cause of
    /// what fails after it.
    const Failure& first() const { return m_first; }
    void forgetFirst() { m_first = {}; }

private:
    int m_number = 0;
    QString m_text;
    Failure m_first;
};

/// Resume mode in a scope: it begins and ends without an error. The end of an inner scope forgets what an
/// outer one had kept.
class ResumeScope {
public:
    explicit ResumeScope(LastError& error)
        : m_error(error)
    {
        m_error.clear();
    }
    ~ResumeScope() { m_error.clear(); }
    ResumeScope(const ResumeScope&) = delete;
    ResumeScope& operator=(const ResumeScope&) = delete;

private:
    LastError& m_error;
};

} // namespace quilla
