#pragma once

#include "database/row_text.h"
#include "holdings/holdings_lists_ops.h"

namespace quilla {

/// Writes checked records into `zsk` and `sck`. Its caller has opened a transaction, and lets the titles
/// bring their own numbers (`Connection::withOwnNumbers`).
class HoldingsWriter {
public:
    /// `lastTitle` is the highest `zskid` that was ever given. `lists` takes up the new titles.
    HoldingsWriter(Connection& connection, HoldingsLists& lists, qint64 lastTitle);

    void write(const BookRecord& book);
    /// What can only be done when all records are known: the running numbers of those that came without
    /// one, past the highest of their class, and the copies that joined a title.
    void finish();

    int titles() const { return m_titles; } ///< new ones
    int copies() const { return m_copies; }
    int joined() const { return m_joined; } ///< records whose copies went to a title that was there
    int numbered() const { return int(m_unnumbered.size()); } ///< titles that were given a running number

private:
    qint64 writeTitle(const BookRecord& book);
    void noteNumber(qint64 zskid, const TitleValues& title);
    void writeCopy(qint64 zskid, const CopyValues& copy);

    struct Unnumbered {
        qint64 zskid;
        QString classcode;
    };

    Connection& m_connection;
    HoldingsLists& m_lists;
    RowText m_title;
    RowText m_copy;
    qint64 m_lastTitle;
    std::vector<Unnumbered> m_unnumbered;
    QHash<qint64, int> m_moreCopies; ///< by `zskid`
    int m_titles = 0;
    int m_copies = 0;
    int m_joined = 0;
};

} // namespace quilla
