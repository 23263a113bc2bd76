#include "database/procedures.h"

#include "database/resource_text.h"
#include "platform/core/text.h"
#include "platform/db/decimal.h"
#include "platform/sql/procedure_text.h"

#include <algorithm>

namespace quilla {

namespace {

using sql::ProcedureText;

/// Figures of a month by day and of a year by month are counted alike; what differs stands in braces.
struct Period {
    QStringView span;
    QStringView part;
    QStringView parameters;
    QStringView begin;
    QStringView lines; ///< but the total
};

constexpr Period Periods[] {
    {u"month", u"day", u"@tongjiData varchar(7), @monthDays int", u"@tongjiData+'-01'", u"@monthDays"},
    {u"year", u"month", u"@tongjiData varchar(4)", u"@tongjiData+'-01-01'", u"12"},
};

struct PeriodFigures {
    QStringView file;
    QStringView names[2]; ///< of the procedures, by period
    QStringView captions[2]; ///< of their first column
};

constexpr PeriodFigures Figures[] {
    {u"workload", {u"YueLiuTongTJ", u"nianLiuTongTJ"}, {u"日期", u"月份"}},
    {u"loans_by_class", {u"YueJieChuFenLeiTJ", u"NianJieChuFenLeiTJ"}, {u"第几天", u"月份"}},
};

QString definitionOf(const PeriodFigures& figures, const Period& period)
{
    const auto which = &period - Periods;
    const QString end = u"dateadd(%1,1,%2)"_s.arg(period.span, period.begin);
    const std::pair<QStringView, QStringView> texts[] {{u"{name}", figures.names[which]},
        {u"{caption}", figures.captions[which]}, {u"{part}", period.part},
        {u"{parameters}", period.parameters}, {u"{begin}", period.begin}, {u"{end}", end},
        {u"{lines}", period.lines}};
    QString definition = splitStatements(resourceText(u"procedures/%1.sql"_s.arg(figures.file))).first();
    for (const auto& [mark, text] : texts)
        definition.replace(mark.toString(), text.toString());
    return definition;
}

std::vector<ProcedureText> libraryProcedures()
{
    std::vector<ProcedureText> procedures;
    for (const QString& definition : procedureDefinitions())
        procedures.push_back(sql::readProcedure(definition));
    return procedures;
}

Error wrongArgument(const ProcedureText& procedure, const QString& what)
{
    return Error(ErrorNumber::CannotConvert, procedure.name, what);
}

/// Blanks around a whole number are passed over, and an empty text is 0.
QString wholeNumber(const ProcedureText& procedure, const QString& text)
{
    const auto number = isBlank(text) ? 0 : readWhole(text);
    if (!number || *number != qint32(*number)) throw wrongArgument(procedure, u"“%1”不是整数。"_s.arg(text));
    return QString::number(*number);
}

std::size_t placeOf(const ProcedureText& procedure, QStringView parameter)
{
    const auto found = std::ranges::find(procedure.parameters, parameter, &ProcedureText::Parameter::name);
    Q_ASSERT(found != procedure.parameters.end());
    return std::size_t(found - procedure.parameters.begin());
}

/// One literal for the whole sum, so that the engine is given a date where the text makes one, and need not
/// read it at each row.
QString literalOf(
    const ProcedureText& procedure, const ProcedureText::Sum& sum, const std::vector<Value>& arguments)
{
    QString text;
    for (const auto& [parameter, part] : sum.terms) {
        text += part;
        if (parameter.isEmpty()) continue;
        const std::size_t place = placeOf(procedure, parameter);
        const int width = procedure.parameters[place].width;
        const QString argument = arguments[place].text();
        if (!width) return wholeNumber(procedure, argument);
        text += doubled(argument.left(width));
    }
    return u'\'' + text + u'\'';
}

QString selectOf(const ProcedureText& procedure, const std::vector<Value>& arguments)
{
    const QStringView text = procedure.select;
    QString select;
    qsizetype from = 0;
    for (const ProcedureText::Sum& sum : procedure.sums) {
        select += text.sliced(from, sum.from - from);
        select += literalOf(procedure, sum, arguments);
        from = sum.end;
    }
    return select += text.sliced(from);
}

const ProcedureText& find(const std::vector<ProcedureText>& procedures, const QString& name)
{
    const auto found = std::ranges::find_if(procedures,
        [&](const ProcedureText& each) { return each.name.compare(name, Qt::CaseInsensitive) == 0; });
    if (found == procedures.end())
        throw Error(ErrorNumber::NotUnderstood, name, u"没有存储过程 %1。"_s.arg(name));
    return *found;
}

} // namespace

QStringList procedureDefinitions()
{
    QStringList definitions;
    for (const PeriodFigures& figures : Figures)
        for (const Period& period : Periods)
            definitions += definitionOf(figures, period);
    for (const QStringView file : {u"reader_loans", u"rankings", u"history"})
        definitions += splitStatements(resourceText(u"procedures/%1.sql"_s.arg(file)));
    return definitions;
}

void installProcedures(PooledFactory& factory)
{
    factory.setProcedures([procedures = libraryProcedures()](Connection& connection, const QString& name,
                              const std::vector<Value>& arguments) {
        const ProcedureText& procedure = find(procedures, name);
        if (arguments.size() != procedure.parameters.size())
            throw wrongArgument(
                procedure, u"存储过程 %1 要有 %2 个参数。"_s.arg(name).arg(procedure.parameters.size()));
        return connection.open(selectOf(procedure, arguments));
    });
}

} // namespace quilla
