#pragma once

#include "platform/sql/ast.h"
#include "platform/sql/lexer.h"
#include "platform/sql/procedure_text.h"

namespace quilla::sql {

/// A statement with what the cache must know about it.
struct Parsed {
    Statement statement;
    std::vector<int> pinned; ///< literals that must stay where they are
};

/// Parses one statement of the dialect; a semicolon may end it. Throws `Refusal` that points to the first
/// token that does not fit.
Parsed parse(QStringView tsql);

/// Recursive descent, one function a rule. Precedence from low to high: or; and; not; comparison, like,
/// in, between, is; + -; * / %; sign.
class Parser {
public:
    explicit Parser(QStringView tsql);
    Parsed run();
    ProcedureText procedure();

private:
    // tokens
    const Token& peek(int ahead = 0) const;
    Token next();
    bool acceptWord(QStringView lower);
    bool acceptSign(QStringView sign);
    void expectWord(QStringView lower);
    void expectSign(QStringView sign);
    [[noreturn]] void refuseHere(const QString& reason) const;
    /// A column, table or alias: a bracketed name, or a word that is not reserved.
    bool atName() const;
    QString name();
    /// A table or procedure, whose owner may only be dbo.
    QString objectName();
    QString alias();
    int pinnedInteger();

    // statements
    Statement statement();
    Insert insertStatement();
    std::vector<ExprPtr> valueRow();
    Update updateStatement();
    Delete deleteStatement();
    Execute executeStatement();
    Statement createStatement();
    CreateTable createTable();
    ColumnDefinition columnDefinition();
    bool columnOption(ColumnDefinition& column);
    TableConstraint tableConstraint();
    std::vector<QString> keyColumns();
    CreateIndex createIndex(bool unique);
    CreateView createView();
    Drop dropStatement();
    ProcedureText::Sum parameterSum(qsizetype origin);

    // select
    Query query();
    void pinRepeated(const Query& query);
    Select select();
    void selectTop(Select& result);
    SelectItem selectItem();
    std::vector<OrderItem> orderBy();
    SourcePtr source();
    SourcePtr primarySource();
    std::optional<JoinKind> joinAhead();
    ExprPtr condition();

    // expressions
    ExprPtr expression();
    ExprPtr scalar();
    ExprPtr andTerm();
    ExprPtr notTerm();
    ExprPtr predicate();
    ExprPtr comparisonTail(ExprPtr left);
    ExprPtr likeTail(ExprPtr left, bool negated);
    ExprPtr betweenTail(ExprPtr left, bool negated);
    ExprPtr inTail(ExprPtr left, bool negated);
    ExprPtr isNullTail(ExprPtr left);
    ExprPtr sum();
    ExprPtr product();
    ExprPtr sign();
    ExprPtr primary();
    ExprPtr literal();
    ExprPtr bracket();
    ExprPtr column();
    ExprPtr call();
    std::vector<OrderItem> over();
    ExprPtr aggregate(ExprPtr call);
    ExprPtr convert();
    ExprPtr cast();
    ExprPtr caseExpression();
    ExprPtr exists();
    ExprPtr existsOrSubquery(Op op, qsizetype place);
    TypeName typeName();
    ExprPtr conditionChain(ExprPtr (Parser::*part)(), QStringView word, Op op);
    ExprPtr chain(ExprPtr (Parser::*part)(), std::initializer_list<std::pair<QStringView, Op>> signs);

    QStringView m_text;
    std::vector<Token> m_tokens;
    std::size_t m_at = 0;
    int m_depth = 0;
    std::vector<int> m_pinned;

    class Level; ///< counts how deep the rules stand inside one another
};

ExprPtr makeExpr(Op op, qsizetype place);
ExprPtr makeColumn(const QString& qualifier, const QString& name, qsizetype place);
ExprPtr makeStar(const QString& qualifier, qsizetype place);
/// Whether the expression is true or false, and so may not stand where a value must.
bool isCondition(const Expr& expr);

/// The recursion of the parser, bounded so that no statement can exhaust the stack.
class Parser::Level {
public:
    explicit Level(Parser& parser);
    ~Level() { --m_parser.m_depth; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

private:
    Parser& m_parser;
};

} // namespace quilla::sql
