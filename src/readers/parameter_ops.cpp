#include "readers/parameter_ops.h"

#include "frame/work.h"
#include "output/export_ops.h"
#include "output/print_ops.h"
#include "readers/rule_numbers.h"

namespace quilla {

namespace {

Refusal warning(const QString& text, int box)
{
    return {.text = text, .icon = Icon::Warning, .box = box};
}

/// Whether the text is a number that its column holds: a failing statement would end the program here.
bool fitsRule(int box, const QString& text)
{
    const RuleKind kind = numberRules<QString>()[std::size_t(box)].kind;
    return kind == RuleKind::Rate ? isRuleRate(text) : isRuleCount(text);
}

QString insertOf(const Parameters& parameters)
{
    ColumnValues columns {{u"readerclass"_s, u'\'' + doubled(parameters.readerclass) + u'\''}};
    std::ranges::move(ruleValues(parameters.rules), std::back_inserter(columns));
    return u"Insert Into jycs ("_s + namesAndValues(columns, u") Values (") + u')';
}

QString updateOf(const Parameters& parameters)
{
    return u"Update jycs Set readerclass='%1',%2 Where readerclass='%1'"_s.arg(
        doubled(parameters.readerclass), assignments(ruleValues(parameters.rules)));
}

/// The cards of the type take the new rules, those set by hand for one reader too, if the operator says so.
void propagate(Session& session, StrictWork& work, const Parameters& parameters)
{
    const QString type = doubled(parameters.readerclass);
    if (work.open(u"select top 1 readercode from dzk where readerclass='%1'"_s.arg(type)).eof()) return;
    const QString question = u"读者库中已经存在该种类型的读者！\n是否使其按新设置的参数进行流通？(Y/N)"_s;
    if (!session.prompt.ask(question, OperationTitle, Icon::Question)) return;
    work.execute(
        u"update DZK set %1 where readerclass='%2'"_s.arg(assignments(ruleValues(parameters.rules)), type));
}

/// Enters the type unless it has rules already.
std::optional<Refusal> enterType(Session& session, const QString& readerclass)
{
    StrictWork work(session);
    if (!work) return Refusal {.box = ParameterBox::Type};
    const QString type = doubled(readerclass);
    if (!work.open(u"Select jycsid From jycs Where readerclass='%1'"_s.arg(type)).eof())
        return warning(u"已经存在'%1'的参数设定，取消该操作。"_s.arg(readerclass), ParameterBox::Type);
    work.execute(u"Insert dzlx (readerclass) Values ('%1')"_s.arg(type));
    return {};
}

} // namespace

std::optional<Recordset> listParameters(Session& session)
{
    StrictWork work(session);
    if (!work) return {};
    return work.open(u"Select "
                     u"readerclass,daycount,bookcount,fine,defile,lost,recount,reday,ifcanre,wuzheng,"
                     u"orderday,ordercount,Acount,Bcount from jycs");
}

QStringList readerTypes(Session& session)
{
    QStringList types;
    StrictWork work(session);
    if (!work) return types;
    for (Recordset row = work.open(u"Select distinct readerclass From dzlx"); !row.eof(); row.next())
        types.append(row.field(0).text());
    return types;
}

RuleTexts readParameters(Session& session, const QString& readerclass)
{
    StrictWork work(session);
    if (!work) return {};
    const Recordset row = work.open(
        u"select daycount,bookcount,fine,defile,lost,recount,reday,orderday,ordercount,Acount,Bcount from  jycs where readerclass='%1'"_s
            .arg(doubled(readerclass)));
    return row.eof() ? RuleTexts() : readRuleNumbers(row);
}

std::optional<Refusal> leftBoxRefusal(int box, const QString& text)
{
    if (text.isEmpty() || fitsRule(box, text)) return {};
    return warning(u"无效数字格式，取消该操作。"_s, box);
}

std::optional<Refusal> checkParameters(Session& session, const EditorMode& mode, const Parameters& parameters)
{
    if (isBlank(parameters.readerclass)) return warning(u"无效读者类型，取消该操作。"_s, ParameterBox::Type);
    if (mode.isAdd())
        if (auto refusal = enterType(session, parameters.readerclass)) return refusal;
    const auto numbers = numberRules<QString>();
    for (int box = 0; box < NumberRules; ++box)
        if (!fitsRule(box, parameters.rules.*numbers[std::size_t(box)].number))
            return warning(u"无效数字类型，取消该操作。"_s, box);
    return {};
}

bool saveParameters(Session& session, const EditorMode& mode, const Parameters& parameters)
{
    StrictWork work(session);
    if (!work) return false;
    work.transact([&] {
        work.execute(mode.isAdd() ? insertOf(parameters) : updateOf(parameters));
        propagate(session, work, parameters);
    });
    return true;
}

RecordRemoval parameterRemoval()
{
    return {u"是否确定删除所选的读者类型的参数？"_s, u"Delete From jycs Where readerclass='%1'"_s};
}

void printParameters(Session& session, ReportViewer& viewer, const QString& first)
{
    const QString rules
        = u"Select readerclass,daycount,bookcount,fine,defile,lost,recount,reday,case ifcanre when 0 then '否' when 1 then '是' end as chaoqixujie,case wuzheng when 0 then '否' when 1 then '是' end as wuzhengjie,orderday,ordercount from jycs"_s;
    printList(session, viewer,
        {.design = u"ltcsPrint"_s,
            .select = first.isEmpty() ? QString() : rules,
            .nothing = NothingToPrint.toString(),
            .hint = u"请将打印机设置为【A4--横向(宽行)打印】\n设置正确后再进行打印！"_s,
            .errors = PrintErrors::Strict});
}

} // namespace quilla
