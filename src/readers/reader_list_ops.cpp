#include "readers/reader_list_ops.h"

#include "frame/sublib.h"

namespace quilla {

namespace {

/// One connection whose statements go on after a failing one; its end forgets the last failure.
class Resuming {
public:
    explicit Resuming(Session& session)
        : m_session(session)
        , m_open(OpenDbConnection(session, m_conn) == GoOn)
    {
    }
    ~Resuming() { m_session.error.clear(); }
    Resuming(const Resuming&) = delete;
    Resuming& operator=(const Resuming&) = delete;

    bool isOpen() const { return m_open; }
    bool send(const QString& tsql)
    {
        return m_session.error.attempt([&] { m_conn.execute(tsql); });
    }
    Recordset select(const QString& tsql) { return openOrEmpty(m_session, m_conn, tsql); }

private:
    Session& m_session;
    Connection m_conn;
    bool m_open;
};

/// The type gets an empty row of parameters with it.
NameOutcome addType(Session& session, const QString& name, NameButton)
{
    Resuming base(session);
    if (!base.isOpen()) return NameOutcome::Stay;
    const QString type = doubled(name);
    if (!base.select(u"select readerclass from dzlx where readerclass='%1'"_s.arg(type)).eof()) {
        session.prompt.inform(u"该读者类型已经存在！不能重复添加！"_s, OperationTitle);
        return NameOutcome::Stay;
    }
    base.send(u"insert into dzlx(readerclass) Values('%1')"_s.arg(type));
    base.send(u"insert into Jycs(readerclass) Values('%1')"_s.arg(type));
    session.prompt.inform(
        u"你已经增加了一个读者类型:%1,请到流通参数功能模块修改其流通参数"_s.arg(name), HintTitle);
    return NameOutcome::Entered;
}

/// The parameters take the new name first: a type never stands without its own.
void changeType(Session& session, const ReaderListEntry& entry, const QString& name)
{
    if (name == entry.name) return;
    Resuming base(session);
    if (!base.isOpen()) return;
    const bool carried = base.send(
        u"update jycs set readerclass='%1' where readerclass='%2'"_s.arg(doubled(name), doubled(entry.name)));
    if (carried)
        base.send(u"update dzlx set readerclass='%1' where dzlxid=%2"_s.arg(doubled(name), entry.id));
}

/// Whether the type may go: it has no parameters left.
bool dropParameters(Session& session, Resuming& base, const QString& type)
{
    const Recordset count = base.select(u"select count(*) from jycs where readerclass='%1'"_s.arg(type));
    if (count.eof() || count.field(0).integer().value_or(0) <= 0) return true;
    const QString question = u"此读者类型已定义了流通参数,要删除这些流通参数吗？(Y/N"_s;
    if (!session.prompt.ask(question, OperationTitle, Icon::Question, Answer::No)) return false;
    base.send(u"delete from jycs where readerclass='%1'"_s.arg(type));
    return true;
}

void removeType(Session& session, const ReaderListEntry& entry)
{
    const QString question = u"删除读者类型，则此读者类型相关的借阅参数将同时被删除,继续删除？(Y/N)"_s;
    if (!session.prompt.ask(question, OperationTitle, Icon::Question)) return;
    Resuming base(session);
    if (base.isOpen() && dropParameters(session, base, doubled(entry.name)))
        base.send(u"delete from dzlx where dzlxid=%1"_s.arg(entry.id));
}

/// The button that leaves does not look for the same unit, so it can enter one twice.
NameOutcome addUnit(Session& session, const QString& name, NameButton button)
{
    Resuming base(session);
    if (!base.isOpen()) return NameOutcome::Stay;
    const QString unit = doubled(name);
    if (button == NameButton::SaveAndAdd
        && !base.select(u"select dzdwid,readunit from dzdw where readunit='%1'"_s.arg(unit)).eof()) {
        session.prompt.inform(u"输入的读者单位已经存在,请重新输入!"_s, OperationTitle);
        return NameOutcome::Retype;
    }
    base.send(u"insert into dzdw(readunit) Values('%1')"_s.arg(unit));
    return NameOutcome::Entered;
}

void changeUnit(Session& session, const ReaderListEntry& entry, const QString& name)
{
    Resuming base(session);
    if (base.isOpen())
        base.send(u"update dzdw set readunit='%1' where dzdwid=%2"_s.arg(doubled(name), entry.id));
}

void removeUnit(Session& session, const ReaderListEntry& entry)
{
    Resuming base(session);
    if (base.isOpen()) base.send(u"delete from dzdw where dzdwid=%1"_s.arg(entry.id));
}

} // namespace

const ReaderList& readerList(ReaderListKind kind)
{
    static const ReaderList lists[] {
        {u"读者类型"_s, u"select dzlxid,readerclass from dzlx"_s, u"MaddDzlx1Frm"_s, u"Quilla-增加读者类型"_s,
            50, addType, changeType, removeType},
        {u"读者单位"_s, u"select dzdwid,readunit from dzdw"_s, u"MadddzdwFrm"_s, u"增加读者单位"_s, 100,
            addUnit, changeUnit, removeUnit},
    };
    return lists[kind];
}

std::optional<Recordset> readList(Session& session, const ReaderList& list)
{
    Resuming base(session);
    if (!base.isOpen()) return {};
    return base.select(list.select);
}

} // namespace quilla
