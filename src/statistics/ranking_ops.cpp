#include "statistics/ranking_ops.h"

#include "frame/sublib.h"
#include "platform/core/date_box.h"
#include "platform/db/decimal.h"

namespace quilla {

namespace {

constexpr qsizetype DateLength = 10;

QString quoted(const QString& text)
{
    return doubled(trimBlanks(text));
}

/// The number of titles is one of 16 bits, written anew.
QString wholeNumber(const QString& text)
{
    const std::optional<qint64> number = readWhole(text);
    if (!number || *number != qint16(*number))
        throw Error(ErrorNumber::CannotConvert, u"Ranking"_s, u"数量不是整数，或者太大"_s);
    return QString::number(*number);
}

QString titleStatement(const RankingQuery& query)
{
    return u"exec procjhphb '%1','%2','%3','%4','%5' "_s.arg(quoted(query.group), wholeNumber(query.count),
        quoted(query.from), quoted(query.to), quoted(query.classcode.toUpper()));
}

QString readerStatement(const RankingQuery& query)
{
    return u"exec procdzjyphb  '%1','%2','%3','%4'"_s.arg(
        quoted(query.group), quoted(query.count), quoted(query.from), quoted(query.to));
}

QString blanks(int count)
{
    return QString(count, u' ');
}

/// The rows of a select, each as one line of text. In resume mode.
QStringList lines(
    Session& session, Connection& conn, const QString& select, QString (*line)(const Recordset&))
{
    const ResumeScope resume(session.error);
    QStringList found;
    for (Recordset row = openOrEmpty(session, conn, select); !row.eof(); row.next())
        found.append(line(row));
    return found;
}

QString firstField(const Recordset& row)
{
    return row.field(0).text();
}

QString letterAndName(const Recordset& row)
{
    return trimBlanks(row.field(0).text()) + u' ' + trimBlanks(row.field(1).text());
}

} // namespace

const Ranking& titleRanking()
{
    static const Ranking ranking {
        .name = u"frmtsjh"_s,
        .title = u"图书借阅排行榜"_s,
        .report = u"JhphbDataReport"_s,
        .format = u"^|^榜次|^读者单位|^索书号"_s + blanks(17) + u"|^正题名"_s + blanks(27) + u"|^责任说明"_s
            + blanks(16) + u"|^借阅次数"_s + blanks(15),
        .widths = {1, 2, 3, 3, 3, 2},
        .emptyDateIsSilent = true,
        .keepsConnection = true,
        .statement = titleStatement,
    };
    return ranking;
}

const Ranking& readerRanking()
{
    static const Ranking ranking {
        .name = u"dzjyphbFrm"_s,
        .title = u"读者借阅排行榜"_s,
        .report = u"dzjyphbRpt"_s,
        .format = u"^|^榜次|^姓名"_s + blanks(8) + u"|^读者类型"_s + blanks(16) + u"|^所属单位"_s + blanks(26)
            + u"|^借阅次数"_s,
        .statement = readerStatement,
    };
    return ranking;
}

std::optional<Refusal> dateRefusal(const Ranking& ranking, const QString& date)
{
    if (date.isEmpty() && ranking.emptyDateIsSilent) return Refusal {};
    if (date.size() != DateLength || !startsWithFullYear(date))
        return Refusal {u"请输入完整的日期格式!例如:2003-01-01"_s};
    if (!platformDate(date)) return Refusal {u"请输入正确的日期格式!例如:2003-01-01"_s};
    return {};
}

RankingWork::RankingWork(Session& session, const Ranking& ranking)
    : m_session(session)
    , m_ranking(ranking)
{
    if (!ranking.keepsConnection) return;
    const ResumeScope resume(session.error);
    session.error.attempt([&] { m_kept = session.connections.open(session.ConnectionText); });
}

/// Gives the steps the connection that is kept, or one for them alone.
template <typename Steps> auto RankingWork::onConnection(Steps&& steps)
{
    if (m_ranking.keepsConnection) return steps(m_kept);
    Connection own;
    m_session.error.attempt([&] { own = m_session.connections.open(m_session.ConnectionText); });
    return steps(own);
}

std::optional<Recordset> RankingWork::run(const RankingQuery& query)
{
    const ResumeScope resume(m_session.error);
    auto rows = onConnection([&](Connection& conn) {
        return m_session.error.attempt([&] {
            const QString statement = m_ranking.statement(query);
            Recordset first = conn.open(statement);
            return first.eof() ? std::move(first) : conn.open(statement);
        });
    });
    if (!rows)
        m_session.prompt.inform(
            u"[%1]\n请检查输入、存储过程或数据库？"_s.arg(m_session.error.text()), OperationTitle);
    return rows;
}

QString RankingWork::readerOf(const QString& name, const QString& type, const QString& unit)
{
    const QString select
        = u"select readercode from dzk where name='%1' and readerclass='%2' and readunit='%3'"_s.arg(
            doubled(name), doubled(type), doubled(unit));
    const QStringList found
        = onConnection([&](Connection& conn) { return lines(m_session, conn, select, firstField); });
    return found.size() == 1 ? found.front() : QString();
}

QStringList RankingWork::units()
{
    return onConnection([&](Connection& conn) {
        return lines(m_session, conn, u"select distinct readunit from dzk "_s, firstField);
    });
}

QStringList RankingWork::types()
{
    return onConnection([&](Connection& conn) {
        return lines(m_session, conn, u"select distinct readerclass from dzk"_s, firstField);
    });
}

QStringList RankingWork::classes()
{
    return onConnection([&](Connection& conn) {
        return lines(m_session, conn, u"select leibie,mingcheng from ztfdl"_s, letterAndName);
    });
}

} // namespace quilla
