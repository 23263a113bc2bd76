#include "readers/parameter_ops.h"

#include "frame/sublib.h"
#include "output/export_ops.h"
#include "output/print_ops.h"
#include "platform/db/decimal.h"
#include "readers/rule_numbers.h"

namespace quilla {

namespace {

std::optional<int> refuse(Session& session, const QString& text, int box)
{
    session.prompt.warn(text, OperationTitle);
    return box;
}

/// The thirteen columns with their values, in the order of the table.
std::vector<std::pair<QString, QString>> columnsOf(const Parameters& parameters)
{
    const auto number
        = [&](int box) { return Decimal::read(parameters.numbers[box]).value_or(Decimal()).text(); };
    const auto bit = [](bool on) { return on ? u"1"_s : u"0"_s; };
    return {{u"daycount"_s, number(ParameterBox::LoanDays)},
        {u"bookcount"_s, number(ParameterBox::LoanCopies)}, {u"fine"_s, number(ParameterBox::OverdueFine)},
        {u"defile"_s, number(ParameterBox::DefileFine)}, {u"lost"_s, number(ParameterBox::LostFine)},
        {u"recount"_s, number(ParameterBox::Renewals)}, {u"reday"_s, number(ParameterBox::RenewalDays)},
        {u"ifcanre"_s, bit(parameters.mayHoldOverdue)}, {u"orderday"_s, number(ParameterBox::HoldDays)},
        {u"ordercount"_s, number(ParameterBox::HoldCopies)}, {u"Acount"_s, number(ParameterBox::ArtsCopies)},
        {u"Bcount"_s, number(ParameterBox::ScienceCopies)}, {u"wuzheng"_s, bit(parameters.needsNoCard)}};
}

QString insertOf(const Parameters& parameters)
{
    QStringList names {u"readerclass"_s};
    QStringList values {u'\'' + doubled(parameters.readerclass) + u'\''};
    for (const auto& [name, value] : columnsOf(parameters)) {
        names.append(name);
        values.append(value);
    }
    return u"Insert Into jycs ("_s + names.join(u',') + u") Values ("_s + values.join(u',') + u')';
}

QString assignmentsOf(const Parameters& parameters)
{
    QStringList assignments;
    for (const auto& [name, value] : columnsOf(parameters))
        assignments.append(name + u'=' + value);
    return assignments.join(u',');
}

QString updateOf(const Parameters& parameters)
{
    return u"Update jycs Set readerclass='%1',%2 Where readerclass='%1'"_s.arg(
        doubled(parameters.readerclass), assignmentsOf(parameters));
}

/// The cards of the type take the new rules, those set by hand for one reader too, if the operator says so.
void propagate(Session& session, Connection& conn, const Parameters& parameters)
{
    const QString type = doubled(parameters.readerclass);
    if (conn.open(u"select top 1 readercode from dzk where readerclass='%1'"_s.arg(type)).eof()) return;
    const QString question = u"读者库中已经存在该种类型的读者！\n是否使其按新设置的参数进行流通？(Y/N)"_s;
    if (!session.prompt.ask(question, OperationTitle, Icon::Question)) return;
    conn.execute(u"update DZK set %1 where readerclass='%2'"_s.arg(assignmentsOf(parameters), type));
}

/// Enters the type unless it has rules already.
std::optional<int> enterType(Session& session, const QString& readerclass)
{
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return ParameterBox::Type;
    const QString type = doubled(readerclass);
    if (!conn.open(u"Select jycsid From jycs Where readerclass='%1'"_s.arg(type)).eof())
        return refuse(
            session, u"已经存在'%1'的参数设定，取消该操作。"_s.arg(readerclass), ParameterBox::Type);
    conn.execute(u"Insert dzlx (readerclass) Values ('%1')"_s.arg(type));
    return {};
}

} // namespace

std::optional<Recordset> listParameters(Session& session)
{
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return {};
    return conn.open(
        u"Select readerclass,daycount,bookcount,fine,defile,lost,recount,reday,ifcanre,wuzheng,orderday,ordercount,Acount,Bcount from jycs");
}

QStringList readerTypes(Session& session)
{
    QStringList types;
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return types;
    for (Recordset row = conn.open(u"Select distinct readerclass From dzlx"); !row.eof(); row.next())
        types.append(row.field(0).text());
    return types;
}

std::array<QString, ParameterBox::Count> readParameters(Session& session, const QString& readerclass)
{
    std::array<QString, ParameterBox::Count> numbers;
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return numbers;
    const Recordset row = conn.open(
        u"select daycount,bookcount,fine,defile,lost,recount,reday,orderday,ordercount,Acount,Bcount from  jycs where readerclass='%1'"_s
            .arg(doubled(readerclass)));
    for (int box = 0; box < ParameterBox::Count && !row.eof(); ++box) {
        const QString stored = row.field(box).text();
        const auto number = Decimal::read(stored);
        numbers[box] = number ? number->text() : stored;
    }
    return numbers;
}

bool isParameter(int box, const QString& text)
{
    const bool rate = box >= ParameterBox::OverdueFine && box <= ParameterBox::LostFine;
    return rate ? isRuleRate(text) : isRuleCount(text);
}

bool checkLeftBox(Session& session, int box, const QString& text)
{
    if (text.isEmpty() || isParameter(box, text)) return true;
    session.prompt.warn(u"无效数字格式，取消该操作。"_s, OperationTitle);
    return false;
}

std::optional<int> checkParameters(Session& session, const EditorMode& mode, const Parameters& parameters)
{
    if (parameters.readerclass.isEmpty())
        return refuse(session, u"无效读者类型，取消该操作。"_s, ParameterBox::Type);
    if (mode.isAdd())
        if (const auto refusal = enterType(session, parameters.readerclass)) return refusal;
    for (int box = 0; box < ParameterBox::Count; ++box)
        if (!isParameter(box, parameters.numbers[box]))
            return refuse(session, u"无效数字类型，取消该操作。"_s, box);
    return {};
}

bool saveParameters(Session& session, const EditorMode& mode, const Parameters& parameters)
{
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return false;
    conn.begin(OnFailure::EndTransaction);
    conn.execute(mode.isAdd() ? insertOf(parameters) : updateOf(parameters));
    propagate(session, conn, parameters);
    conn.commit();
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
