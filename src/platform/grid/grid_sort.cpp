#include "platform/core/text_order.h"
#include "platform/grid/grid_model.h"

#include <numeric>

namespace quilla {

namespace {

/// The ranks of one column's cells: equal cells have equal ranks, so that comparing lines is comparing
/// numbers.
using Ranks = std::vector<int>;

std::vector<int> zeroTo(std::size_t count)
{
    std::vector<int> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

template <typename Key> Ranks ranked(std::vector<Key> keys)
{
    std::vector<int> order = zeroTo(keys.size());
    std::sort(order.begin(), order.end(),
        [&](int l, int r) { return keys[std::size_t(l)] < keys[std::size_t(r)]; });
    Ranks ranks(keys.size());
    int rank = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (i > 0 && keys[std::size_t(order[i - 1])] < keys[std::size_t(order[i])]) ++rank;
        ranks[std::size_t(order[i])] = rank;
    }
    return ranks;
}

/// nullopt when one of the texts is neither empty nor a number. An empty cell comes before all numbers.
std::optional<std::vector<double>> asNumbers(const std::vector<QString>& texts)
{
    std::vector<double> numbers;
    numbers.reserve(texts.size());
    for (const QString& text : texts) {
        bool isNumber = true;
        numbers.push_back(
            text.isEmpty() ? -std::numeric_limits<double>::infinity() : text.toDouble(&isNumber));
        if (!isNumber || std::isnan(numbers.back())) return {};
    }
    return numbers;
}

std::vector<QByteArray> asOrderKeys(const std::vector<QString>& texts)
{
    std::vector<QByteArray> keys;
    keys.reserve(texts.size());
    for (const QString& text : texts)
        keys.push_back(orderKey(text));
    return keys;
}

/// Latin letters and digits alone, as codes are: their keys are they themselves, without case, since the
/// order of the library is the same for them.
std::optional<std::vector<QString>> asCodes(const std::vector<QString>& texts)
{
    std::vector<QString> codes;
    codes.reserve(texts.size());
    for (const QString& text : texts) {
        const bool plain = std::all_of(
            text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80 && c.isLetterOrNumber(); });
        if (!plain) return {};
        codes.push_back(text.toLower());
    }
    return codes;
}

Ranks ranksOfDistinct(const std::vector<QString>& texts)
{
    if (auto numbers = asNumbers(texts)) return ranked(std::move(*numbers));
    if (auto codes = asCodes(texts)) return ranked(std::move(*codes));
    return ranked(asOrderKeys(texts));
}

/// Most columns of a long list repeat a few texts: only different ones are compared.
Ranks ranksOf(const std::vector<QString>& texts)
{
    std::vector<QString> distinct;
    QHash<QString, int> places;
    Ranks ranks;
    ranks.reserve(texts.size());
    for (const QString& text : texts) {
        int& place = places[text];
        if (places.size() > qsizetype(distinct.size())) {
            place = int(distinct.size());
            distinct.push_back(text);
        }
        ranks.push_back(place);
    }
    const Ranks ofDistinct = ranksOfDistinct(distinct);
    for (int& rank : ranks)
        rank = ofDistinct[std::size_t(rank)];
    return ranks;
}

/// Orders ties of `coarse` by `fine`.
Ranks refined(const Ranks& coarse, const Ranks& fine)
{
    std::vector<std::pair<int, int>> keys;
    keys.reserve(coarse.size());
    for (std::size_t line = 0; line < coarse.size(); ++line)
        keys.emplace_back(coarse[line], fine[line]);
    return ranked(std::move(keys));
}

bool hasTies(const Ranks& ranks)
{
    return std::size_t(*std::max_element(ranks.begin(), ranks.end())) + 1 < ranks.size();
}

} // namespace

void GridModel::sortRows(int first, int last, Qt::SortOrder direction)
{
    if (m_lines == 0) return;
    if (first > last) std::swap(first, last);
    Ranks ranks(std::size_t(m_lines), 0);
    for (int col = std::max(first, 0); col <= std::min(last, Cols() - 1) && hasTies(ranks); ++col) {
        std::vector<QString> texts;
        for (int row = 1; row <= m_lines; ++row)
            texts.push_back(m_cells[cell(row, col)]);
        ranks = refined(ranks, ranksOf(texts));
    }
    if (direction == Qt::DescendingOrder)
        for (int& rank : ranks)
            rank = -rank;
    std::vector<int> order = zeroTo(ranks.size());
    std::stable_sort(order.begin(), order.end(),
        [&](int l, int r) { return ranks[std::size_t(l)] < ranks[std::size_t(r)]; });
    takeOrder(order);
}

void GridModel::takeOrder(const std::vector<int>& order)
{
    if (m_filling == 0) Q_EMIT layoutAboutToBeChanged();
    std::vector<QString> cells(m_cells.size());
    std::vector<qint64> rowData(m_rowData.empty() ? 0 : order.size());
    for (std::size_t line = 0; line < order.size(); ++line) {
        const int from = order[line] + 1;
        std::move(m_cells.begin() + cell(from, 0), m_cells.begin() + cell(from + 1, 0),
            cells.begin() + cell(int(line) + 1, 0));
        if (!rowData.empty()) rowData[line] = RowData(from);
    }
    m_cells = std::move(cells);
    m_rowData = std::move(rowData);
    if (m_filling == 0) Q_EMIT layoutChanged();
}

} // namespace quilla
