#pragma once

#include <QtGlobal>

#include <algorithm>
#include <vector>

namespace quilla::demo {

/// A small generator (splitmix64) with its own distributions: the same seed gives the same numbers with
/// every compiler and library, which the distributions of the standard library do not promise.
class Random {
public:
    explicit Random(quint64 seed)
        : m_state(seed)
    {
    }

    /// 0 to `limit` - 1; `limit` is above 0.
    int below(int limit) { return int((next() >> 32) * quint64(limit) >> 32); }
    int between(int least, int most) { return least + below(most - least + 1); }
    /// True in `perMille` of 1000 cases.
    bool chance(int perMille) { return below(1000) < perMille; }

    /// 1 or more, small numbers far more often than large ones; at most 1 + `first` * `second`.
    int skewed(int first, int second)
    {
        const int factor = below(first + 1);
        return 1 + factor * below(second + 1);
    }

    template <typename List> const typename List::value_type& pick(const List& list)
    {
        return list[typename List::size_type(below(int(list.size())))];
    }

    template <typename List> void shuffle(List& list)
    {
        for (int last = int(list.size()) - 1; last > 0; --last)
            std::swap(list[typename List::size_type(last)], list[typename List::size_type(below(last + 1))]);
    }

private:
    quint64 next()
    {
        quint64 z = (m_state += 0x9e3779b97f4a7c15ULL);
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
        return z ^ (z >> 31);
    }

    quint64 m_state;
};

/// Picks an index as often as its weight says.
class Weighted {
public:
    void add(int weight) { m_upTo.push_back((m_upTo.empty() ? 0 : m_upTo.back()) + weight); }
    bool isEmpty() const { return m_upTo.empty(); }

    std::size_t pick(Random& random) const
    {
        const int at = random.below(m_upTo.back());
        return std::size_t(std::upper_bound(m_upTo.begin(), m_upTo.end(), at) - m_upTo.begin());
    }

private:
    std::vector<int> m_upTo;
};

} // namespace quilla::demo
