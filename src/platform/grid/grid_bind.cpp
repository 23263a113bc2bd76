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
    explicit CellTexts(sql::Kind kind)
        : m_kind(kind)
    {
    }

    QString of(const Value& value)
    {
        const auto date = dateOf(value);
        const auto text = [&] { return date ? isoDate(*date) : value.text(); };
        if (++m_cells <= ShortList) return text();
        if (date) return shared(date->toJulianDay(), text);
        if (value.kind() == sql::Kind::Integer) return shared(*value.integer(), text);
        return sharedText(text());
    }

private:
    static constexpr int ShortList = 50;
    static constexpr std::size_t Slots = 512;
    struct Slot {
        qint64 key = 0;
        QString text;
    };

    /// A text in a date column counts too when it is a date.
    std::optional<QDate> dateOf(const Value& value) const
    {
        if (m_kind != sql::Kind::Date && value.kind() != sql::Kind::Date) return {};
        const auto moment = value.moment();
        return moment ? std::optional(moment->date) : std::nullopt;
    }

    template <typename Make> QString shared(qint64 key, Make make)
    {
        if (m_keyed.empty()) m_keyed.resize(Slots);
        Slot& slot = m_keyed[std::size_t(key) % Slots];
        if (slot.key != key || slot.text.isNull()) slot = {key, make()};
        return slot.text;
    }

    QString sharedText(const QString& text)
    {
        if (m_texts.empty()) m_texts.resize(Slots);
        QString& slot = m_texts[qHash(text) % Slots];
        if (slot != text) slot = text;
        return slot;
    }

    sql::Kind m_kind;
    int m_cells = 0;
    std::vector<Slot> m_keyed; ///< of dates and whole numbers
    std::vector<QString> m_texts;
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
    std::vector<CellTexts> texts(m_kinds.begin() + std::ptrdiff_t(fixed), m_kinds.end());
    m_cells.reserve(std::size_t(std::max<qsizetype>(records.recordCount(), 1)) * m_captions.size());
    for (; !records.eof(); records.next()) {
        m_cells.resize(m_cells.size() + fixed);
        for (int i = 0; i < fields; ++i)
            m_cells.push_back(texts[std::size_t(i)].of(records.field(i)));
        ++m_lines;
    }
    return m_lines;
}

} // namespace quilla
