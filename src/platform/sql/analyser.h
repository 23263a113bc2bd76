#pragma once

#include "platform/sql/ast.h"
#include "platform/sql/translator.h"

namespace quilla::sql {

/// Finds out the kind of every expression of a statement over the schema, gives literals the kind that
/// their place asks for, and writes the server's silent conversions into the tree.
///
/// A name that the schema does not know stays of unknown kind: the engine itself reports that it does not
/// exist. Throws `Refusal` where kinds do not go together.
class Analyser {
public:
    explicit Analyser(const Schema& schema, Engine engine = Engine::SqlServer);

    /// The columns of the statement's rows, or of the view or table it creates.
    std::vector<Column> run(Statement& statement);

private:
    struct Relation {
        QString name; ///< alias, or the table's own name
        std::vector<Column> columns;
        bool hides = false; ///< a table with an `EntryColumn`, which "*" must not show
    };
    /// The tables that names may mean, and those of the select around.
    struct Scope {
        std::vector<Relation> relations;
        const Scope* outer = nullptr;
        bool complete = true; ///< false when a table is not known
    };

    enum class Stars { Stay, Named };

    std::vector<Column> query(Query& query, const Scope* outer, Stars stars = Stars::Stay);
    std::vector<Column> select(Select& select, Scope& scope, Stars stars);
    void sourceOf(Source& source, Scope& scope);
    void unifyArms(Query& query, std::vector<Column>& columns);
    void order(Query& query, const std::vector<Column>& columns, const Scope* scope);
    void orderByPosition(Expr& term, const std::vector<Column>& columns);
    std::vector<Column> itemColumns(const SelectItem& item, const Scope& scope) const;
    static void nameColumns(Select& select, const Scope& scope);
    std::vector<Column> starColumns(const Expr& star, const Scope& scope) const;

    void insert(Insert& insert);
    void update(Update& update);
    void remove(Delete& remove);
    std::vector<Column> create(CreateTable& table);
    void assignItems(Query& query, const std::vector<Type>& targets);
    Scope scopeOf(const QString& table) const;

    void expression(ExprPtr& expr, const Scope& scope);
    void expressions(std::vector<ExprPtr>& exprs, const Scope& scope);
    void settle(ExprPtr& expr, const Scope& scope);
    void arithmetic(ExprPtr& expr);
    void addDays(ExprPtr& expr);
    void compare(Expr& expr);
    void inSelect(Expr& expr, const Scope& scope);
    void function(Expr& expr);
    void aggregate(Expr& expr);
    void convert(Expr& expr);
    void caseOf(Expr& expr);
    void subquery(Expr& expr, const Scope& scope);
    Type lookUp(const Expr& column, const Scope& scope) const;

    const Schema& m_schema;
    Engine m_engine;
};

} // namespace quilla::sql
