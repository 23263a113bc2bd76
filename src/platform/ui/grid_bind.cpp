// The copy of a result set into the grid stands apart from the rest of the model, so that a program
// that fills its grids itself links no database.

#include "platform/core/dates.h"
#include "platform/db/recordset.h"
#include "platform/ui/grid_model.h"

namespace quilla {

namespace {

QString cellText(const Value& value, sql::Kind kind)
{
    if (kind != sql::Kind::Date && value.kind() != sql::Kind::Date) return value.text();
    const QDateTime moment = value.moment();
    return moment.isValid() ? isoDate(moment) : value.text();
}

} // namespace

qsizetype GridModel::bind(Recordset& records)
{
    const Filling filling(*this);
    std::fill(m_cells.begin(), m_cells.end(), QString());
    m_rowData.clear();
    if (records.eof()) {
        setRows(2);
        return 0;
    }
    takeFieldNames(records);
    return copyRows(records);
}

void GridModel::takeFieldNames(const Recordset& records)
{
    const auto fixed = std::size_t(m_fixedCols);
    const std::size_t cols = fixed + std::size_t(records.fieldCount());
    m_cells.clear();
    m_lines = 0;
    m_captions.assign(cols, {});
    m_aligns.assign(cols, CellAlign::Default);
    m_kinds.assign(cols, sql::Kind::Unknown);
    for (int i = 0; i < records.fieldCount(); ++i) {
        m_captions[fixed + std::size_t(i)] = records.fieldName(i);
        m_kinds[fixed + std::size_t(i)] = records.fieldKind(i);
    }
}

qsizetype GridModel::copyRows(Recordset& records)
{
    const int fields = records.fieldCount();
    const auto fixed = std::size_t(m_fixedCols);
    m_cells.reserve(std::size_t(std::max<qsizetype>(records.recordCount(), 1)) * m_captions.size());
    for (; !records.eof(); records.next()) {
        m_cells.resize(m_cells.size() + fixed);
        for (int i = 0; i < fields; ++i)
            m_cells.push_back(cellText(records.field(i), m_kinds[fixed + std::size_t(i)]));
        ++m_lines;
    }
    return m_lines;
}

} // namespace quilla
