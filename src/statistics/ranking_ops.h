#pragma once

#include "frame/refusal.h"
#include "frame/session.h"

#include <QStringList>

namespace quilla {

/// What a ranking is asked for, as it was typed.
struct RankingQuery {
    QString group; ///< the readers' unit or type
    QString count; ///< how many places
    QString from;
    QString to;
    QString classcode {}; ///< of the titles
};

/// A ranking of the most borrowed titles or the most active readers.
struct Ranking {
    QString name; ///< of its screen
    QString title;
    QString report;
    QString format; ///< of the grid
    std::vector<int> widths {}; ///< of the columns after the marker, in fifteenths of the grid
    bool emptyDateIsSilent = false;
    bool keepsConnection = false; ///< from the opening of the screen on
    /// Throws `Error` for a count that is no number, where it must be one.
    QString (*statement)(const RankingQuery&);
};

const Ranking& titleRanking();
const Ranking& readerRanking();

/// What is wrong with a date box; nullopt when it holds a date with its full year. The refusal of an empty
/// box may be silent.
std::optional<Refusal> dateRefusal(const Ranking& ranking, const QString& date);

/// Sends the statements of a ranking's screen, on connections from the text in memory. A failing `run` is
/// reported; the other selects count as ones without rows then.
class RankingWork {
public:
    RankingWork(Session& session, const Ranking& ranking);

    /// The ranking, without rows when nothing was borrowed; nullopt after a failure. It is sent twice, as the
    /// screens have always done: once to see whether there are rows, once for the rows.
    std::optional<Recordset> run(const RankingQuery& query);

    /// The card of the one reader of that name, type and unit; empty when there is none or more than one.
    QString readerOf(const QString& name, const QString& type, const QString& unit);

    QStringList units(); ///< of the cards, the first one perhaps empty
    QStringList types(); ///< of the cards
    QStringList classes(); ///< letter and name

private:
    template <typename Steps> auto onConnection(Steps&& steps);

    Session& m_session;
    const Ranking& m_ranking;
    Connection m_kept;
};

} // namespace quilla
