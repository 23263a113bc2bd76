#pragma once

#include "platform/db/recordset.h"
#include "platform/report/report_design.h"

#include <QStringList>

namespace quilla {

/// The rows of a report as the texts that will stand on the paper.
class ReportData {
public:
    struct Group {
        QStringList heads; ///< of the group's lines that show a field
        qsizetype first = 0;
        qsizetype count = 0;
    };

    /// Reads `rows` from the first one to the end (one that can only be read forward from where it stands).
    /// Throws `Error` (NoSuchField) with the name of a field that they lack; a total over such a field is
    /// blank instead. Null is an empty text; dates are yyyy-mm-dd; sums are exact.
    ReportData(const ReportDesign& design, Recordset& rows);

    qsizetype rows() const { return m_columns ? qsizetype(m_cells.size()) / m_columns : 0; }
    const QString& cell(qsizetype row, int column) const
    {
        return m_cells[std::size_t(row * m_columns + column)];
    }
    const std::vector<Group>& groups() const { return m_groups; }
    const QStringList& totals() const { return m_totals; }

private:
    class Sums;
    void readRows(const ReportDesign& design, Recordset& rows, Sums& sums);
    void readGroups(const ReportDesign& design, Recordset& groups, Sums& sums);

    qsizetype m_columns;
    std::vector<QString> m_cells;
    std::vector<Group> m_groups;
    QStringList m_totals;
};

} // namespace quilla
