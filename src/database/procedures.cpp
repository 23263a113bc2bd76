#include "database/procedures.h"

#include "database/resource_text.h"
#include "platform/core/text.h"
#include "platform/db/decimal.h"

#include <QRegularExpression>

namespace quilla {

namespace {

struct Parameter {
    QString name; ///< with its "@"
    int width = 0; ///< of a text; 0 for a whole number
};

struct Procedure {
    QString name;
    std::vector<Parameter> parameters;
    QString select;
};

std::vector<Parameter> parametersOf(const QString& declarations)
{
    static const QRegularExpression declaration(u"(@\\w+) (?:int|varchar\\((\\d+)\\))"_s);
    std::vector<Parameter> parameters;
    for (auto each = declaration.globalMatch(declarations); each.hasNext();) {
        const QRegularExpressionMatch found = each.next();
        parameters.push_back({found.captured(1), found.captured(2).toInt()});
    }
    return parameters;
}

Procedure procedureOf(const QString& definition)
{
    static const QRegularExpression parts(
        u"create procedure dbo\\.(\\w+) (.*?)\\nas\\n(.*)"_s, QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch found = parts.match(definition);
    Q_ASSERT(found.hasMatch());
    return {found.captured(1), parametersOf(found.captured(2)), found.captured(3)};
}

std::vector<Procedure> libraryProcedures()
{
    std::vector<Procedure> procedures;
    for (const QString& definition : procedureDefinitions())
        procedures.push_back(procedureOf(definition));
    return procedures;
}

Error wrongArgument(const Procedure& procedure, const QString& what)
{
    return Error(ErrorNumber::CannotConvert, procedure.name, what);
}

/// Blanks around a whole number are passed over, and an empty text is 0.
QString wholeNumber(const Procedure& procedure, const QString& text)
{
    const auto number = isBlank(text) ? 0 : readWhole(text);
    if (!number || *number != qint32(*number)) throw wrongArgument(procedure, u"“%1”不是整数。"_s.arg(text));
    return QString::number(*number);
}

std::size_t placeOf(const Procedure& procedure, QStringView parameter)
{
    const auto found = std::ranges::find(procedure.parameters, parameter, &Parameter::name);
    Q_ASSERT(found != procedure.parameters.end());
    return std::size_t(found - procedure.parameters.begin());
}

/// A parameter, or a text that begins with one and is put together with "+": one literal, so that the engine
/// is given a date where the text makes one, and need not read it at each row.
QString literalOf(const Procedure& procedure, const QString& sum, const std::vector<Value>& arguments)
{
    static const QRegularExpression term(u"(@\\w+)|'([^']*)'"_s);
    QString text;
    for (auto each = term.globalMatch(sum); each.hasNext();) {
        const QRegularExpressionMatch found = each.next();
        text += found.captured(2);
        if (!found.hasCaptured(1)) continue;
        const std::size_t place = placeOf(procedure, found.capturedView(1));
        const int width = procedure.parameters[place].width;
        const QString argument = arguments[place].text();
        if (!width) return wholeNumber(procedure, argument);
        text += doubled(argument.left(width));
    }
    return u'\'' + text + u'\'';
}

/// In one pass, so that nothing in an argument is taken for a parameter.
QString selectOf(const Procedure& procedure, const std::vector<Value>& arguments)
{
    static const QRegularExpression sum(u"@\\w+(?:\\+(?:@\\w+|'[^']*'))*"_s);
    QString select;
    qsizetype from = 0;
    for (auto each = sum.globalMatch(procedure.select); each.hasNext();) {
        const QRegularExpressionMatch found = each.next();
        select += QStringView(procedure.select).sliced(from, found.capturedStart() - from);
        select += literalOf(procedure, found.captured(), arguments);
        from = found.capturedEnd();
    }
    return select += QStringView(procedure.select).sliced(from);
}

const Procedure& find(const std::vector<Procedure>& procedures, const QString& name)
{
    const auto found = std::ranges::find_if(
        procedures, [&](const Procedure& each) { return each.name.compare(name, Qt::CaseInsensitive) == 0; });
    if (found == procedures.end())
        throw Error(ErrorNumber::NotUnderstood, name, u"没有存储过程 %1。"_s.arg(name));
    return *found;
}

} // namespace

QStringList procedureDefinitions()
{
    QStringList definitions;
    for (const QStringView file : {u"workload", u"loans_by_class", u"reader_loans", u"rankings", u"history"})
        definitions += splitStatements(resourceText(u"procedures/%1.sql"_s.arg(file)));
    return definitions;
}

void installProcedures(PooledFactory& factory)
{
    factory.setProcedures([procedures = libraryProcedures()](Connection& connection, const QString& name,
                              const std::vector<Value>& arguments) {
        const Procedure& procedure = find(procedures, name);
        if (arguments.size() != procedure.parameters.size())
            throw wrongArgument(
                procedure, u"存储过程 %1 要有 %2 个参数。"_s.arg(name).arg(procedure.parameters.size()));
        return connection.open(selectOf(procedure, arguments));
    });
}

} // namespace quilla
