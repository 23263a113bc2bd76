#include "readers/reader_list_ops.h"

#include "frame/work.h"

namespace quilla {

namespace {

/// Leaves the typed text for correction. Without a message when the opening of the connection has shown one.
Refusal stay(const QString& text = {})
{
    return {.text = text, .box = NameBox::Kept};
}

/// The type gets an empty row of parameters with it.
std::optional<Refusal> addType(Session& session, const QString& name, NameButton)
{
    ResumingWork work(session);
    if (!work) return stay();
    const QString type = doubled(name);
    if (!work.select(u"select readerclass from dzlx where readerclass='%1'"_s.arg(type)).eof())
        return stay(u"该读者类型已经存在！不能重复添加！"_s);
    work.send(u"insert into dzlx(readerclass) Values('%1')"_s.arg(type));
    work.send(u"insert into Jycs(readerclass) Values('%1')"_s.arg(type));
    work.release();
    session.prompt.inform(
        u"你已经增加了一个读者类型:%1,请到流通参数功能模块修改其流通参数"_s.arg(name), HintTitle);
    return {};
}

/// The parameters take the new name first: a type never stands without its own.
void changeType(Session& session, const ReaderListEntry& entry, const QString& name)
{
    if (name == entry.name) return;
    ResumingWork work(session);
    if (!work) return;
    const auto carried = work.send(
        u"update jycs set readerclass='%1' where readerclass='%2'"_s.arg(doubled(name), doubled(entry.name)));
    if (carried)
        work.send(u"update dzlx set readerclass='%1' where dzlxid=%2"_s.arg(doubled(name), entry.id));
}

/// Whether the type may go: it has no parameters left.
bool dropParameters(Session& session, ResumingWork& work, const QString& type)
{
    const Recordset count = work.select(u"select count(*) from jycs where readerclass='%1'"_s.arg(type));
    if (count.eof() || count.field(0).integer().value_or(0) <= 0) return true;
    // The text ends without its closing bracket, as operators know it from the suite's other programs.
    const QString question = u"此读者类型已定义了流通参数,要删除这些流通参数吗？(Y/N"_s;
    if (!session.prompt.ask(question, OperationTitle, Icon::Question, Answer::No)) return false;
    work.send(u"delete from jycs where readerclass='%1'"_s.arg(type));
    return true;
}

void removeType(Session& session, const ReaderListEntry& entry)
{
    const QString question = u"删除读者类型，则此读者类型相关的借阅参数将同时被删除,继续删除？(Y/N)"_s;
    if (!session.prompt.ask(question, OperationTitle, Icon::Question)) return;
    ResumingWork work(session);
    if (work && dropParameters(session, work, doubled(entry.name)))
        work.send(u"delete from dzlx where dzlxid=%1"_s.arg(entry.id));
}

/// The button that leaves does not look for the same unit, so it can enter one twice.
std::optional<Refusal> addUnit(Session& session, const QString& name, NameButton button)
{
    ResumingWork work(session);
    if (!work) return stay();
    const QString unit = doubled(name);
    if (button == NameButton::SaveAndAdd
        && !work.select(u"select dzdwid,readunit from dzdw where readunit='%1'"_s.arg(unit)).eof())
        return Refusal {.text = u"输入的读者单位已经存在,请重新输入!"_s, .box = NameBox::Emptied};
    work.send(u"insert into dzdw(readunit) Values('%1')"_s.arg(unit));
    return {};
}

void changeUnit(Session& session, const ReaderListEntry& entry, const QString& name)
{
    ResumingWork work(session);
    if (work) work.send(u"update dzdw set readunit='%1' where dzdwid=%2"_s.arg(doubled(name), entry.id));
}

/// Without a question: cards keep the name, and the unit can be entered again.
void removeUnit(Session& session, const ReaderListEntry& entry)
{
    ResumingWork work(session);
    if (work) work.send(u"delete from dzdw where dzdwid=%1"_s.arg(entry.id));
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
    ResumingWork work(session);
    if (!work) return {};
    return work.select(list.select);
}

} // namespace quilla
