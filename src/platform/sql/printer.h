#pragma once

#include "platform/sql/ast.h"
#include "platform/sql/translator.h"

namespace quilla::sql {

/// Writes a statement as T-SQL again. The base of the printers of the other dialects, which say only what
/// they write differently. They need a statement that went through the `Analyser`; this one does not.
class Printer {
public:
    virtual ~Printer() = default;

    QString print(const Statement& statement);
    QString printExpression(const Expr& expr);

protected:
    /// How tightly an operator binds; a part that binds less gets brackets.
    enum Level {
        Lowest,
        OrLevel,
        AndLevel,
        NotLevel,
        CompareLevel,
        SumLevel,
        ProductLevel,
        SignLevel,
        Highest
    };
    static Level levelOf(const Expr& expr);

    // statements
    virtual void insert(const Insert& insert);
    virtual void update(const Update& update);
    virtual void remove(const Delete& remove);
    virtual void execute(const Execute& call);
    virtual void createTable(const CreateTable& table);
    virtual void createIndex(const CreateIndex& index);
    virtual void createView(const CreateView& view);
    virtual void drop(const Drop& drop);
    virtual void columnDefinition(const ColumnDefinition& column);
    void columnOptions(const ColumnDefinition& column);
    virtual void indexColumn(const IndexColumn& column);
    void constraint(const TableConstraint& constraint);

    // select
    /// `inner`: its rows go into something else, such as a view, a join or a comparison.
    virtual void query(const Query& query, bool inner);
    void select(const Select& select, bool inner);
    virtual void top(const Select& select);
    virtual void limit(const Query& query);
    virtual void item(const SelectItem& item, const Select& select, bool inner);
    void source(const Source& source);
    void join(const Source& source);
    virtual void orderItem(const OrderItem& item);

    // expressions
    void expression(const Expr& expr, Level around = Lowest);
    virtual void bare(const Expr& expr);
    virtual void literal(const Expr& expr);
    virtual void binary(const Expr& expr);
    virtual void compare(const Expr& expr);
    virtual void chain(const Expr& expr);
    virtual void like(const Expr& expr);
    virtual void function(const Expr& expr);
    virtual void aggregate(const Expr& expr);
    virtual void convert(const Expr& expr);
    virtual void caseOf(const Expr& expr);
    /// An expression whose texts are compared, sorted or grouped here.
    virtual void collated(const Expr& expr, Level around);
    /// What a collated expression is compared with.
    virtual void comparand(const Expr& expr, Level around);

    virtual QString typeName(const TypeName& type) const;
    virtual QString name(const QString& name) const;
    QString names(const std::vector<QString>& list) const;

    void write(QStringView text) { m_out += text; }
    void write(const QString& text) { m_out += text; }
    template <typename Items, typename Write> void list(const Items& items, Write writeItem)
    {
        bool first = true;
        for (const auto& each : items) {
            if (!first) write(u", ");
            first = false;
            writeItem(each);
        }
    }
    void expressions(const std::vector<ExprPtr>& exprs);
    /// Writes a text as in `FunctionRule`.
    void fill(QStringView text, const Expr& call);
    QStringView signOf(Op op) const;

    QString m_out;
};

} // namespace quilla::sql
