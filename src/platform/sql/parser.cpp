#include "platform/sql/parser.h"

#include "platform/sql/date_parts.h"
#include "platform/sql/statement_refusal.h"

#include <algorithm>
#include <array>

namespace quilla::sql {

namespace {

constexpr int DeepestLevel = 150;

/// Words that are no names unless they stand in brackets. "type", "name", "memo", "password" and "code"
/// are columns and not among them.
constexpr auto ReservedWords = std::to_array<QStringView>(
    {u"add", u"all", u"alter", u"and", u"any", u"as", u"asc", u"begin", u"between", u"by", u"case", u"check",
        u"collate", u"commit", u"compute", u"constraint", u"convert", u"create", u"cross", u"declare",
        u"default", u"delete", u"desc", u"distinct", u"drop", u"else", u"end", u"escape", u"except", u"exec",
        u"execute", u"exists", u"for", u"foreign", u"from", u"full", u"go", u"grant", u"group", u"having",
        u"if", u"in", u"index", u"inner", u"insert", u"intersect", u"into", u"is", u"join", u"key", u"left",
        u"like", u"not", u"null", u"on", u"option", u"or", u"order", u"outer", u"percent", u"primary",
        u"proc", u"procedure", u"references", u"return", u"revoke", u"right", u"rollback", u"select", u"set",
        u"some", u"table", u"then", u"to", u"top", u"tran", u"transaction", u"truncate", u"union", u"unique",
        u"update", u"use", u"values", u"view", u"when", u"where", u"while", u"with"});

bool isReserved(QStringView word)
{
    return std::ranges::any_of(ReservedWords,
        [&](QStringView reserved) { return reserved.compare(word, Qt::CaseInsensitive) == 0; });
}

} // namespace

ExprPtr makeExpr(Op op, qsizetype place)
{
    auto expr = std::make_unique<Expr>();
    expr->op = op;
    expr->place = place;
    return expr;
}

ExprPtr makeColumn(const QString& qualifier, const QString& name, qsizetype place)
{
    ExprPtr column = makeExpr(Op::Column, place);
    column->qualifier = qualifier;
    column->name = name;
    return column;
}

ExprPtr makeStar(const QString& qualifier, qsizetype place)
{
    ExprPtr star = makeExpr(Op::Star, place);
    star->qualifier = qualifier;
    return star;
}

bool isCondition(const Expr& expr)
{
    switch (expr.op) {
    case Op::Equal:
    case Op::NotEqual:
    case Op::Less:
    case Op::LessEqual:
    case Op::Greater:
    case Op::GreaterEqual:
    case Op::Not:
    case Op::And:
    case Op::Or:
    case Op::Like:
    case Op::Between:
    case Op::InList:
    case Op::InSelect:
    case Op::Exists:
    case Op::IsNull:
        return true;
    default:
        return false;
    }
}

bool isDefinition(const Statement& statement)
{
    return std::holds_alternative<CreateTable>(statement) || std::holds_alternative<CreateIndex>(statement)
        || std::holds_alternative<CreateView>(statement) || std::holds_alternative<Drop>(statement);
}

Parsed parse(QStringView tsql)
{
    return Parser(tsql).run();
}

Parser::Level::Level(Parser& parser)
    : m_parser(parser)
{
    if (++parser.m_depth > DeepestLevel) {
        --parser.m_depth;
        parser.refuseHere(u"嵌套太深"_s);
    }
}

Parser::Parser(QStringView tsql)
    : m_text(tsql)
    , m_tokens(lex(tsql))
{
}

Parsed Parser::run()
{
    Parsed result;
    result.statement = statement();
    acceptSign(u";");
    if (peek().form != Token::Form::End) refuseHere(u"附近有语法错误"_s);
    if (isDefinition(result.statement)) {
        m_pinned.clear();
        for (const Token& token : m_tokens)
            if (token.literal >= 0) m_pinned.push_back(token.literal);
    }
    result.pinned = std::move(m_pinned);
    return result;
}

const Token& Parser::peek(int ahead) const
{
    return m_tokens[std::min(m_at + ahead, m_tokens.size() - 1)];
}

Token Parser::next()
{
    const Token token = peek();
    if (m_at + 1 < m_tokens.size()) ++m_at;
    return token;
}

bool Parser::acceptWord(QStringView lower)
{
    if (!peek().isWord(lower)) return false;
    next();
    return true;
}

bool Parser::acceptSign(QStringView sign)
{
    if (!peek().isSign(sign)) return false;
    next();
    return true;
}

void Parser::expectWord(QStringView lower)
{
    if (!acceptWord(lower)) refuseHere(u"此处应为 "_s.append(lower));
}

void Parser::expectSign(QStringView sign)
{
    if (!acceptSign(sign)) refuseHere(u"此处应为 "_s.append(sign));
}

void Parser::refuseHere(const QString& reason) const
{
    refuse(peek().place, reason);
}

bool Parser::atName() const
{
    const Token& token = peek();
    if (token.form == Token::Form::Name) return true;
    return token.form == Token::Form::Word && !token.text.startsWith(u'@') && !isReserved(token.text);
}

QString Parser::name()
{
    if (!atName()) refuseHere(u"此处应为名称"_s);
    const Token token = next();
    QString result = token.text.toString();
    if (token.form == Token::Form::Name) {
        const bool bracket = m_text[token.place] == u'[';
        result.replace(bracket ? u"]]"_s : u"\"\""_s, bracket ? u"]"_s : u"\""_s);
    }
    return result;
}

QString Parser::objectName()
{
    const qsizetype place = peek().place;
    const QString first = name();
    if (!acceptSign(u".")) return first;
    if (first.compare(u"dbo", Qt::CaseInsensitive) != 0) refuse(place, u"只有所有者 dbo 可用"_s);
    return name();
}

QString Parser::alias()
{
    if (acceptWord(u"as")) return name();
    return atName() ? name() : QString();
}

int Parser::pinnedInteger()
{
    const Token& token = peek();
    bool ok = false;
    const int value = token.text.toInt(&ok);
    if (token.form != Token::Form::Number || !ok) refuseHere(u"此处应为整数"_s);
    m_pinned.push_back(token.literal);
    next();
    return value;
}

Statement Parser::statement()
{
    if (peek().isWord(u"select")) return query();
    if (acceptWord(u"insert")) return insertStatement();
    if (acceptWord(u"update")) return updateStatement();
    if (acceptWord(u"delete")) return deleteStatement();
    if (acceptWord(u"exec") || acceptWord(u"execute")) return executeStatement();
    if (acceptWord(u"create")) return createStatement();
    if (acceptWord(u"drop")) return dropStatement();
    refuseHere(u"不认识的语句"_s);
}

} // namespace quilla::sql
