#include "readers/reader_register_ops.h"

#include "frame/sublib.h"
#include "frame/work.h"
#include "output/export_ops.h"
#include "output/print_ops.h"

namespace quilla {

namespace {

const QString Valid = u"有效"_s;
const QString Expired = u"超期"_s;

/// Other desks wait for no more than so many readers while one walks over thousands.
constexpr qsizetype ReadersAtATime = 500;

const QString ListSelect
    = u"select readercode,name,sex,readerclass,readunit,bookcount,orderbook,paperdate,term,readstatus from dzk"_s;
const QString OutputSelect = u"select readercode,name,sex,readerclass,readunit,paperdate,term from dzk"_s;

/// Shows how far a long walk is, and nothing of a short one or of one without a progress.
class ShownWalk {
public:
    ShownWalk(Progress* progress, qsizetype readers)
        : m_progress(readers >= LongWalk ? progress : nullptr)
    {
        if (!m_progress) return;
        m_progress->begin();
        m_progress->setTotal(readers);
    }
    ~ShownWalk()
    {
        if (m_progress) m_progress->end();
    }
    ShownWalk(const ShownWalk&) = delete;
    ShownWalk& operator=(const ShownWalk&) = delete;

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

/// Walks over readers, whatever fails, but waits for another desk's writing only once: then it ends. A bundle
/// of readers is flushed at once; no event is served inside a transaction, since the operator may work on in
/// another screen.
class ReaderWalk {
public:
    using Step = std::function<void(const QString& code)>;

    ReaderWalk(Session& session, ResumingWork& work, Progress* progress, const QStringList& codes)
        : m_session(session)
        , m_work(work)
        , m_progress(progress)
        , m_codes(codes)
    {
    }
    void run(const Step& step)
    {
        ShownWalk shown(m_progress, m_codes.size());
        while (m_done < m_codes.size() && !m_barred && shown.goOn(m_done))
            runBundle(step);
    }
    /// How many readers had their turn.
    qsizetype done() const { return m_done; }
    bool barred() const { return m_barred; }
    bool complete() const { return m_done == m_codes.size(); }

private:
    void runBundle(const Step& step)
    {
        m_session.error.clear();
        m_session.error.attempt([&] { m_work.connection().begin(); });
        const qsizetype end = std::min(m_done + ReadersAtATime, m_codes.size());
        while (m_done < end && !isBarred()) {
            step(m_codes[m_done]);
            if (!isBarred()) ++m_done;
        }
        m_barred = isBarred();
        m_session.error.attempt([&] { m_work.connection().commit(); });
    }
    bool isBarred() const { return m_session.error.number() == ErrorNumber::InUse; }

    Session& m_session;
    ResumingWork& m_work;
    Progress* m_progress;
    const QStringList& m_codes;
    qsizetype m_done = 0;
    bool m_barred = false;
};

const QString InUse = u"数据库正被其他工作站占用，%1请稍后再试。"_s;

/// The lines' last column as the list shows it: whoever is found counts as valid, and only a card that
/// reads "超期" is stored anew. The term is judged at the desk and in the editor.
QStringList showAllValid(GridModel& grid)
{
    const GridModel::Filling filling(grid);
    QStringList expired;
    for (int row = 1; row < grid.Rows(); ++row) {
        if (sameText(grid.TextMatrix(row, ReaderState), Expired))
            expired.append(grid.TextMatrix(row, ReaderCode));
        grid.setTextMatrix(row, ReaderState, Valid);
    }
    return expired;
}

/// How many could not be put back, as another desk was writing.
qsizetype putBackExpired(Session& session, ResumingWork& work, const QStringList& expired)
{
    ReaderWalk walk(session, work, nullptr, expired);
    walk.run([&](const QString& code) {
        work.send(u"update dzk set readstatus='%1' where readercode='%2'"_s.arg(Valid, SqlText(code)));
    });
    return expired.size() - walk.done();
}

/// Nullopt when that can't be known.
std::optional<qint64> booksOut(ResumingWork& work, const QString& code)
{
    const Recordset count
        = work.select(u"select count(*) from jhsk where readercode='%1'"_s.arg(doubled(code)));
    return count.eof() ? std::nullopt : count.field(0).integer();
}

/// The papers go even if the card stays, but not while another desk writes: one wait is enough.
void removeCard(Session& session, ResumingWork& work, const QString& code)
{
    for (const QString& table : {u"dzk"_s, u"dzkx"_s})
        if (session.error.number() != ErrorNumber::InUse)
            work.send(u"delete from %1 where readercode='%2'"_s.arg(table, doubled(code)));
}

/// Whether the text can stand between two quotes as it is.
bool staysOneText(QString text)
{
    return !text.remove(u"''"_s).contains(u'\'');
}

/// What became of the readers who were to be deleted.
struct Deletion {
    bool kept = false; ///< some have books out
    qsizetype unknown = 0; ///< whose loans could not be counted; they stay
    qsizetype notReached = 0; ///< when another desk wrote
};

/// Nullopt when no connection can be had.
std::optional<Deletion> deleteThese(Session& session, Progress& progress, const QStringList& codes)
{
    ResumingWork work(session);
    if (!work) return {};
    Deletion outcome;
    ReaderWalk walk(session, work, &progress, codes);
    walk.run([&](const QString& code) {
        const auto out = booksOut(work, code);
        if (!out && session.error.number() != ErrorNumber::InUse) ++outcome.unknown;
        if (out >= 1) outcome.kept = true;
        if (out == 0) removeCard(session, work, code);
    });
    if (walk.barred()) outcome.notReached = codes.size() - walk.done();
    return outcome;
}

void deleteCard(Session& session, const QString& code)
{
    bool inUse = false;
    {
        ResumingWork work(session);
        if (!work) return;
        removeCard(session, work, code);
        inUse = session.error.number() == ErrorNumber::InUse;
    }
    if (inUse) session.prompt.inform(InUse.arg(u"该读者没有删除，"_s), OperationTitle);
}

} // namespace

std::optional<ListedReaders> listReaders(Session& session, const ListSearch& search, GridModel& grid)
{
    ResumingWork work(session);
    if (!work) return {};
    qsizetype found = 0;
    session.error.attempt([&] {
        Recordset readers = work.connection().open(search.of(ListSelect).statement(), CursorType::Forward);
        if (readers.eof()) return;
        const GridModel::Filling filling(grid);
        found = grid.bind(readers);
    });
    if (found == 0) return ListedReaders {};
    const qsizetype left = putBackExpired(session, work, showAllValid(grid));
    ListedReaders listed {.found = found};
    if (left > 0) listed.toTell = InUse.arg(u"%1 位读者的“超期”状态没有改回“有效”，"_s.arg(left));
    return listed;
}

bool deleteReader(Session& session, const QString& code)
{
    ResumingWork work(session);
    if (!work) return false;
    const auto out = booksOut(work, code);
    work.release();
    if (!out) {
        session.prompt.inform(u"无法得知该读者是否还有未还图书，没有删除，请稍后再试。"_s, OperationTitle);
        return false;
    }
    if (*out > 0) {
        session.prompt.warn(u"此读者尚有借书未还，需先归还借书才能删除读者"_s, OperationTitle);
        return false;
    }
    const QString question = u"你确定要删除读者:%1 吗？(Y/N)"_s.arg(code);
    if (session.prompt.ask(question, OperationTitle, Icon::Question, Answer::No)) deleteCard(session, code);
    return true;
}

bool reportCardLost(Session& session, const QString& code)
{
    const QString question = u"你确定要挂失读者证: %1 吗？(Y/N)"_s.arg(code);
    if (!session.prompt.ask(question, OperationTitle, Icon::Question, Answer::No)) return false;
    ResumingWork work(session);
    if (!work) return false;
    work.send(u"update dzk set readstatus='挂失' where readercode='%1'"_s.arg(doubled(code)));
    return true;
}

void deleteReaders(
    Session& session, Progress& progress, const QStringList& codes, const std::function<void()>& refresh)
{
    const QString question = u"是否确定删除当前所有读者资料？"_s;
    if (!session.prompt.ask(question, OperationTitle, Icon::Question)) return;
    const std::optional<Deletion> outcome = deleteThese(session, progress, codes);
    if (!outcome) return;
    refresh();
    if (outcome->kept)
        session.prompt.warn(
            u"部分读者存在未还图书，不能删除。\n请先归还已借图书然后再删除该读者资料。"_s, OperationTitle);
    if (outcome->notReached > 0)
        session.prompt.inform(
            InUse.arg(u"最后 %1 位读者没有处理，"_s.arg(outcome->notReached)), OperationTitle);
    if (outcome->unknown > 0)
        session.prompt.inform(
            u"无法得知其中 %1 位读者是否还有未还图书，没有删除，请稍后再试。"_s.arg(outcome->unknown),
            OperationTitle);
}

/// Unlike elsewhere only the way to the settings ends it: without a connection every line fails, and the
/// change is said to be done, as after any failure but another desk's writing.
bool changeUnits(Session& session, Progress& progress, const QStringList& codes, const QString& unit)
{
    ResumingWork work(session);
    if (work.sentToSettings()) return false;
    ReaderWalk walk(session, work, &progress, codes);
    walk.run([&](const QString& code) {
        // Neither text is altered. What would end its own quotes fails, and is not even sent, since it could
        // as well be read as a statement over other readers.
        if (staysOneText(unit) && staysOneText(code))
            work.send(u"update dzk set readunit='%1' where readercode='%2'"_s.arg(unit, code));
    });
    work.release();
    const QString partly = u"只修改了前 %1 位读者的单位"_s.arg(walk.done());
    if (walk.complete())
        session.prompt.inform(u"读者单位修改完毕！"_s, OperationTitle);
    else if (walk.barred())
        session.prompt.inform(InUse.arg(partly + u'，'), OperationTitle);
    else
        session.prompt.inform(u"已取消，%1。"_s.arg(partly), OperationTitle);
    return true;
}

void printReaders(Session& session, ReportViewer& viewer, const ListSearch& search, bool anyShown)
{
    printList(session, viewer,
        {.design = u"readerPrint"_s,
            .select = anyShown ? readersForOutput(search) : QString(),
            .nothing = NothingToPrint.toString(),
            .hint = u"请将打印机设置为【A4--纵向(窄行)打印】\n设置正确后再进行打印！"_s});
}

QString readersForOutput(const ListSearch& search)
{
    return search.of(OutputSelect).statement();
}

} // namespace quilla
