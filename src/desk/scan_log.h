#pragma once

#include "platform/core/dates.h"
#include "platform/core/rotating_log.h"

#include <QAbstractTableModel>

#include <array>
#include <vector>

namespace quilla {

enum class ScanKind { Charge, Return, Renewal, Fine, Card };
enum class ScanOutcome {
    Done,
    Refused, ///< by a rule or by the operator
    Failed, ///< the database did not take it
    Unserved, ///< its box was not to be reached any more
};

/// One scan and what became of it.
struct ScanEntry {
    ScanKind kind;
    QString barcode; ///< of an unknown card the reader code
    Moment time {};
    QString title {};
    QString readercode {};
    QString readername {};
    ScanOutcome outcome = ScanOutcome::Done;
    QString note {}; ///< due date, sum of the fines, or why it was refused
    QString cause {}; ///< why it failed, and what to do
    bool copyIsBack = false; ///< of a renewal: the return before its new charge was made
};

/// 借, 还, 续, 罚, 证.
QString wordOf(ScanKind kind);
QString wordOf(ScanOutcome outcome);

/// The scans of a day at this desk, the newest in the first row. Lives in memory only.
class ScanLog final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Time, What, Barcode, Title, Reader, Result, ColumnCount };
    /// The outcome of a row as an int, for its colour.
    static constexpr int OutcomeRole = Qt::UserRole;

    /// The causes of failures go to `causeFile`, the last 200; empty for none.
    explicit ScanLog(const QString& causeFile = {})
        : m_causes(causeFile, 200)
    {
    }

    void logCause(const QString& line) { m_causes.append(line); }
    /// The first scan of another day begins the list anew.
    void add(const ScanEntry& entry);
    /// `row` counts from the newest.
    const ScanEntry& entry(int row) const { return m_entries[m_entries.size() - 1 - std::size_t(row)]; }
    int count(ScanOutcome outcome) const { return m_counts[std::size_t(outcome)]; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void beginDay();

    std::vector<ScanEntry> m_entries; ///< the oldest first
    std::array<int, 4> m_counts {};
    RotatingLog m_causes;
};

/// Ends the note of a scan whose cause is known.
constexpr QStringView SeeCause = u"，按 F8 看原因";

/// A line of the list in words: "10:12:05 借 B1 成功 应还 2026-03-30".
QString lineOf(const ScanEntry& entry);

} // namespace quilla
