#pragma once

#include "platform/db/value.h"

#include <memory>

namespace quilla {

/// Keyset counts its rows and may be walked again; forward is read once, row by row, without holding
/// the whole result in memory (a forward recordset has no count until its end).
enum class CursorType { Keyset, Forward };

/// The rows of a select. Stands on its first row after opening. Keeps nothing of its connection when
/// it is a keyset; a forward one must not outlive it.
class Recordset {
public:
    class Source; ///< what a driver gives

    Recordset();
    explicit Recordset(std::unique_ptr<Source> source);
    ~Recordset();
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;

    /// -1 for a forward recordset.
    qsizetype recordCount() const;
    bool eof() const;
    void next();
    void first(); ///< keyset only

    int fieldCount() const;
    QString fieldName(int index) const;
    sql::Kind fieldKind(int index) const;

    /// Of the current row. Throws `NoCurrentRow` at the end, `NoSuchField` for an unknown field. Names
    /// compare without case; of two fields of the same name the first. What is returned holds until the
    /// recordset moves.
    const Value& field(int index) const;
    const Value& field(QStringView name) const;

private:
    std::unique_ptr<Source> m_source;
};

} // namespace quilla
