// The copy of a result set into the grid stands apart from the rest of the model, so that a program
// that fills its grids itself links no database.

#include "platform/core/dates.h"
#include "platform/db/recordset.h"
#include "platform/grid/grid_model.h"

namespace quilla {

namespace {

/// Turns the values of one column into the texts of its cells. Most columns of a long list repeat a few
/// texts; these are shared, since to make and keep one for every cell costs more than to read the rows.
class CellTexts {
public:
    CellTexts(sql::Kind kind, int field)
        : m_kind(kind)
        , m_field(field)
    {
    }

    /// Of the current row.
    QString of(const Recordset& records)
    {
        if (++m_cells <= ShortList || !repeats()) return madeOf(records);
        const Cell cell = records.cell(m_field);
        const auto make = [&] { return madeOf(records); };
        if (cell.form == Cell::Form::Date) return shared(cell.number / MillisecondsPerDay, make);
        if (cell.form == Cell::Form::Integer) return shared(cell.number, make);
        if (cell.form == Cell::Form::Text) return sharedText(cell.text, make);
        return make();
    }

private:
    static constexpr int ShortList = 50;
    static constexpr std::size_t Slots = 512;
    struct Slot {
        qint64 key = 0;
        QString text;
    };
    struct TextSlot {
        std::string bytes;
        QString text;
    };

    /// Codes and names are all different, and to look for them among the shared texts is lost time.
    bool repeats() const { return m_made < ShortList || m_made < m_cells / 2; }

    /// A text in a date column counts too when it is a date.
    QString madeOf(const Recordset& records) const
    {
        const Value& value = records.field(m_field);
        if (m_kind != sql::Kind::Date && value.kind() != sql::Kind::Date) return value.text();
        const auto moment = value.moment();
        return moment ? isoDate(moment->date) : value.text();
    }

    template <typename Make> QString shared(qint64 key, Make make)
    {
        if (m_keyed.empty()) m_keyed.resize(Slots);
        Slot& slot = m_keyed[std::size_t(key) % Slots];
        if (slot.key == key && !slot.text.isNull()) return slot.text;
        ++m_made;
        slot = {key, make()};
        return slot.text;
    }

    template <typename Make> QString sharedText(std::string_view bytes, Make make)
    {
        if (m_texts.empty()) m_texts.resize(Slots);
        TextSlot& slot = m_texts[std::hash<std::string_view>()(bytes) % Slots];
        if (slot.bytes == bytes && !slot.text.isNull()) return slot.text;
        ++m_made;
        slot.bytes = bytes;
        slot.text = make();
        return slot.text;
    }

    sql::Kind m_kind;
    int m_field;
    int m_cells = 0;
    int m_made = 0; ///< texts that were not among the shared ones
    std::vector<Slot> m_keyed; ///< of dates and whole numbers
    std::vector<TextSlot> m_texts;
};

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
    std::vector<CellTexts> texts;
    for (int i = 0; i < fields; ++i)
        texts.emplace_back(m_kinds[fixed + std::size_t(i)], i);
    m_cells.reserve(std::size_t(std::max<qsizetype>(records.recordCount(), 1)) * m_captions.size());
    for (; !records.eof(); records.next()) {
        m_cells.resize(m_cells.size() + fixed);
        for (CellTexts& column : texts)
            m_cells.push_back(column.of(records));
        ++m_lines;
    }
    return m_lines;
}

} // namespace quilla
