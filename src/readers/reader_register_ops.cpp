#include "readers/reader_register_ops.h"

#include "frame/sublib.h"
#include "output/print_ops.h"

namespace quilla {

namespace {

const QString Valid = u"有效"_s;
const QString Expired = u"超期"_s;

/// Other desks wait for no more than so many readers while one walks over thousands.
constexpr qsizetype ReadersAtATime = 500;

QString searchSelect(QStringView columns, const ReaderSearch& search)
{
    QString select = u"select %1 from dzk"_s.arg(columns);
    if (!search.condition.isEmpty()) select += u" where "_s + search.condition;
    if (!search.order.isEmpty()) select += u" order by "_s + search.order;
    return select;
}

void send(Session& session, Connection& conn, const QString& tsql)
{
    session.error.attempt([&] { conn.execute(tsql); });
}

/// Shows how far a long walk is, and nothing of a short one or of one without a progress.
class Walk {
public:
    Walk(Progress* progress, qsizetype readers)
        : m_progress(readers >= LongWalk ? progress : nullptr)
    {
        if (!m_progress) return;
        m_progress->begin();
        m_progress->setTotal(readers);
    }
    ~Walk()
    {
        if (m_progress) m_progress->end();
    }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;

    /// False when the operator ended it.
    bool goOn(qsizetype done)
    {
        if (!m_progress) return true;
        m_progress->setDone(done);
        return m_progress->goOn();
    }

private:
    Progress* m_progress;
};

/// Runs the step for each reader, whatever fails. A bundle of them is flushed at once; no event is served
/// inside a transaction, since the operator may work on in another screen. How many were done.
qsizetype forEachReader(Session& session, Connection& conn, Progress* progress, const QStringList& codes,
    const std::function<void(const QString& code)>& step)
{
    Walk walk(progress, codes.size());
    qsizetype done = 0;
    while (done < codes.size() && walk.goOn(done)) {
        session.error.attempt([&] { conn.begin(); });
        const qsizetype end = std::min(done + ReadersAtATime, codes.size());
        for (; done < end; ++done)
            step(codes[done]);
        session.error.attempt([&] { conn.commit(); });
    }
    return done;
}

/// The lines' last column as the list shows it: whoever is found counts as valid, and only a card that
/// reads "超期" is stored anew. The term is judged at the desk and in the editor.
void putBackExpired(Session& session, Connection& conn, GridModel& grid)
{
    QStringList expired;
    for (int row = 1; row < grid.Rows(); ++row) {
        if (sameText(grid.TextMatrix(row, ReaderState), Expired))
            expired.append(grid.TextMatrix(row, ReaderCode));
        grid.setTextMatrix(row, ReaderState, Valid);
    }
    forEachReader(session, conn, nullptr, expired, [&](const QString& code) {
        send(session, conn,
            u"update dzk set readstatus='%1' where readercode='%2'"_s.arg(Valid, SqlText(code)));
    });
}

/// Nothing when that can't be known.
std::optional<qint64> booksOut(Session& session, Connection& conn, const QString& code)
{
    const Recordset count
        = openOrEmpty(session, conn, u"select count(*) from jhsk where readercode='%1'"_s.arg(doubled(code)));
    return count.eof() ? std::nullopt : count.field(0).integer();
}

void removeCard(Session& session, Connection& conn, const QString& code)
{
    for (const QString& table : {u"dzk"_s, u"dzkx"_s})
        send(session, conn, u"delete from %1 where readercode='%2'"_s.arg(table, doubled(code)));
}

/// Whether the text can stand between two quotes as it is.
bool staysOneText(QString text)
{
    return !text.remove(u"''"_s).contains(u'\'');
}

} // namespace

std::optional<qsizetype> listReaders(Session& session, const ReaderSearch& search, GridModel& grid)
{
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return {};
    qsizetype found = 0;
    session.error.attempt([&] {
        Recordset readers = conn.open(
            searchSelect(
                u"readercode,name,sex,readerclass,readunit,bookcount,orderbook,paperdate,term,readstatus",
                search),
            CursorType::Forward);
        if (readers.eof()) return;
        const GridModel::Filling filling(grid);
        found = grid.bind(readers);
    });
    if (found > 0) {
        const GridModel::Filling filling(grid);
        putBackExpired(session, conn, grid);
    }
    CloseDbConnection(session, conn);
    return found;
}

bool deleteReader(Session& session, const QString& code)
{
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return false;
    const auto out = booksOut(session, conn, code);
    if (out > 0) {
        session.prompt.warn(u"此读者尚有借书未还，需先归还借书才能删除读者"_s, OperationTitle);
        return false;
    }
    const QString question = u"你确定要删除读者:%1 吗？(Y/N)"_s.arg(code);
    // Whose loans can't be counted is not deleted.
    if (session.prompt.ask(question, {}, Icon::Question, Answer::No) && out) removeCard(session, conn, code);
    CloseDbConnection(session, conn);
    return true;
}

bool reportCardLost(Session& session, const QString& code)
{
    const QString question = u"你确定要挂失读者证: %1 吗？(Y/N)"_s.arg(code);
    if (!session.prompt.ask(question, OperationTitle, Icon::Question, Answer::No)) return false;
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return false;
    send(session, conn, u"update dzk set readstatus='挂失' where readercode='%1'"_s.arg(doubled(code)));
    CloseDbConnection(session, conn);
    return true;
}

void deleteReaders(
    Session& session, Progress& progress, const QStringList& codes, const std::function<void()>& refresh)
{
    const QString question = u"是否确定删除当前所有读者资料？"_s;
    if (!session.prompt.ask(question, OperationTitle, Icon::Question)) return;
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return;
    bool kept = false;
    forEachReader(session, conn, &progress, codes, [&](const QString& code) {
        const auto out = booksOut(session, conn, code);
        if (out >= 1) kept = true;
        if (out == 0) removeCard(session, conn, code);
    });
    CloseDbConnection(session, conn);
    refresh();
    if (kept)
        session.prompt.warn(
            u"部分读者存在未还图书，不能删除。\n请先归还已借图书然后再删除该读者资料。"_s, OperationTitle);
}

/// Unlike elsewhere only the way to the settings ends it; without a connection every line fails.
bool changeUnits(Session& session, Progress& progress, const QStringList& codes, const QString& unit)
{
    Connection conn;
    if (OpenDbConnection(session, conn) == -1) return false;
    const qsizetype done = forEachReader(session, conn, &progress, codes, [&](const QString& code) {
        // Neither text is altered. What would end its own quotes fails, and is not even sent, since it could
        // as well be read as a statement over other readers.
        if (staysOneText(unit) && staysOneText(code))
            send(session, conn, u"update dzk set readunit='%1' where readercode='%2'"_s.arg(unit, code));
    });
    session.error.clear();
    if (done == codes.size())
        session.prompt.inform(u"读者单位修改完毕！"_s, OperationTitle);
    else
        session.prompt.inform(u"已取消，只修改了前 %1 位读者的单位。"_s.arg(done), OperationTitle);
    return true;
}

void printReaders(Session& session, ReportViewer& viewer, const ReaderSearch& search, bool anyShown)
{
    printList(session, viewer,
        {.design = u"readerPrint"_s,
            .select = anyShown ? readersForOutput(search) : QString(),
            .nothing = NothingToPrint.toString(),
            .hint = u"请将打印机设置为【A4--纵向(窄行)打印】\n设置正确后再进行打印！"_s});
}

QString readersForOutput(const ReaderSearch& search)
{
    return searchSelect(u"readercode,name,sex,readerclass,readunit,paperdate,term", search);
}

} // namespace quilla
