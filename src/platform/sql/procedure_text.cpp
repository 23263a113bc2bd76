#include "platform/sql/procedure_text.h"

#include "platform/sql/parser.h"
#include "platform/sql/statement_refusal.h"

namespace quilla::sql {

namespace {

bool isParameter(const Token& token)
{
    return token.form == Token::Form::Word && token.text.startsWith(u'@');
}

ProcedureText::Term termOf(const Token& token)
{
    const QString text = token.text.toString();
    return isParameter(token) ? ProcedureText::Term {text, {}} : ProcedureText::Term {{}, text};
}

} // namespace

ProcedureText Parser::procedure()
{
    ProcedureText result;
    expectWord(u"create");
    expectWord(u"procedure");
    result.name = objectName();
    do {
        if (!isParameter(peek())) refuseHere(u"此处应为参数"_s);
        const QString parameter = next().text.toString();
        result.parameters.push_back({parameter, typeName().width});
    } while (acceptSign(u","));
    expectWord(u"as");
    const qsizetype from = peek().place;
    result.select = m_text.sliced(from).toString();
    while (peek().form != Token::Form::End)
        if (isParameter(peek()))
            result.sums.push_back(parameterSum(from));
        else
            next();
    return result;
}

/// `origin` is where the places of the sum are counted from.
ProcedureText::Sum Parser::parameterSum(qsizetype origin)
{
    ProcedureText::Sum sum {peek().place - origin, 0, {}};
    do {
        const Token token = next();
        const bool quoted = token.form == Token::Form::Quoted;
        sum.terms.push_back(termOf(token));
        sum.end = token.text.constData() - m_text.constData() + token.text.size() + (quoted ? 1 : 0) - origin;
    } while ((isParameter(peek(1)) || peek(1).form == Token::Form::Quoted) && acceptSign(u"+"));
    return sum;
}

ProcedureText readProcedure(const QString& definition)
{
    try {
        return Parser(definition).procedure();
    } catch (const Refusal& refusal) {
        throw errorOf(refusal, definition);
    }
}

} // namespace quilla::sql
