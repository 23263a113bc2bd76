#include "platform/sql/parser.h"
#include "platform/sql/statement_refusal.h"

namespace quilla::sql {

Insert Parser::insertStatement()
{
    Insert result;
    acceptWord(u"into");
    result.place = peek().place;
    result.table = objectName();
    if (acceptSign(u"(")) {
        do {
            result.columns.push_back(name());
        } while (acceptSign(u","));
        expectSign(u")");
    }
    if (peek().isWord(u"select")) {
        result.query = std::make_unique<Query>(query());
        return result;
    }
    expectWord(u"values");
    do {
        result.rows.push_back(valueRow());
    } while (acceptSign(u","));
    return result;
}

std::vector<ExprPtr> Parser::valueRow()
{
    std::vector<ExprPtr> values;
    expectSign(u"(");
    do {
        values.push_back(scalar());
    } while (acceptSign(u","));
    expectSign(u")");
    return values;
}

Update Parser::updateStatement()
{
    Update result;
    result.table = objectName();
    expectWord(u"set");
    do {
        Assignment assignment;
        assignment.place = peek().place;
        assignment.column = name();
        expectSign(u"=");
        assignment.value = scalar();
        result.assignments.push_back(std::move(assignment));
    } while (acceptSign(u","));
    if (acceptWord(u"where")) result.where = condition();
    return result;
}

Delete Parser::deleteStatement()
{
    Delete result;
    acceptWord(u"from");
    result.table = objectName();
    if (acceptWord(u"where")) result.where = condition();
    return result;
}

Execute Parser::executeStatement()
{
    Execute result;
    result.procedure = objectName();
    if (peek().form == Token::Form::End || peek().isSign(u";")) return result;
    do {
        const Token& token = peek();
        const bool literalAhead = token.form == Token::Form::Quoted || token.form == Token::Form::Number;
        if (!literalAhead) refuseHere(u"过程的参数只能是文字或数字"_s);
        result.arguments.push_back(literal());
    } while (acceptSign(u","));
    return result;
}

} // namespace quilla::sql
