#pragma once

#include "platform/sql/number_range.h"
#include "platform/sql/schema.h"

#include <memory>
#include <variant>
#include <vector>

namespace quilla::sql {

/// What is known about the values of an expression.
struct Type {
    Kind kind = Kind::Unknown;
    int width = 0; ///< most characters of a text; 0 for not known
    int scale = 0; ///< digits after the point of a decimal
    bool column = false; ///< a column as it stands, which brings its collation along
    int bytes = 0; ///< of a whole number; 0 for not known
};

/// Digits after the point of a quotient and of an average.
constexpr int QuotientScale = 6;

/// A type as a statement names it: varchar(20), decimal(10,2), datetime.
struct TypeName {
    QString name; ///< lower case
    int width = 0; ///< 0 when none is given
    int scale = 0;
    bool unlimited = false; ///< varchar(max)
};

/// The kind that a type name stands for; Unknown for a type outside the dialect.
Kind kindOf(const TypeName& type);
/// The numbers that a column of this type holds.
NumberRange rangeOf(const Type& type);
/// Width and scale with the server's defaults filled in, for a column or (`cast`) for a conversion.
Type typeOf(const TypeName& type, bool cast);

enum class Op {
    Literal,
    Null,
    Column,
    Star,
    Negative,
    Multiply,
    Divide,
    Modulo,
    Add,
    Subtract,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    Not,
    And, ///< any number of parts
    Or, ///< any number of parts
    Like,
    Between,
    InList,
    InSelect,
    Exists,
    IsNull,
    Function,
    Aggregate,
    Convert,
    Case,
    Subquery
};

struct Query;
struct Expr;
using ExprPtr = std::unique_ptr<Expr>;

struct OrderItem {
    ExprPtr value;
    bool descending = false;
};

struct Expr {
    Op op = Op::Null;
    qsizetype place = 0; ///< in the statement's text
    std::vector<ExprPtr> parts;
    std::unique_ptr<Query> query; ///< of Subquery, InSelect, Exists

    QString name; ///< of a column as written; of a function in lower case
    QString qualifier; ///< of a column or star
    QString datePart; ///< first argument of datediff and its like, in its long form

    QString text; ///< of a literal, as written between the quotes
    int literal = -1; ///< its number in the statement
    bool quoted = false;
    bool whole = true;

    bool negated = false; ///< not like, not in, not between, is not null
    bool distinct = false; ///< of an aggregate
    bool simple = false; ///< a case with an operand, its first part
    bool hasElse = false; ///< a case whose last part is its else

    std::vector<OrderItem> over; ///< of rank and row_number: the order that they count in

    TypeName target; ///< of Convert
    int style = -1; ///< of Convert; -1 for none
    bool cast = false; ///< written as cast(x as t)
    bool stores = false; ///< made by `Analyser` around what goes into a number column

    bool perSpelling = false; ///< a key that may be grouped by its spellings, since they are added up later

    Type type; ///< known after `Analyser`
    int storedScale = -1; ///< of a literal that goes into a decimal column; known after `Analyser`
    NumberRange storedRange; ///< of a literal that goes into a number column; known after `Analyser`
    bool position = false; ///< an order by term that counts columns; known after `Analyser`
};

struct Source;
using SourcePtr = std::unique_ptr<Source>;

enum class JoinKind { Inner, Left, Right, Full, Cross };

/// What stands after "from": a table or view, a select in brackets, or a join of two of them.
struct Source {
    enum class Form { Table, Derived, Join };

    Form form = Form::Table;
    qsizetype place = 0;
    QString name;
    QString alias; ///< empty for none
    std::unique_ptr<Query> query;
    JoinKind join = JoinKind::Inner;
    SourcePtr left;
    SourcePtr right;
    ExprPtr on;
};

struct SelectItem {
    ExprPtr value;
    QString alias;
};

struct Select {
    ExprPtr top; ///< a literal, or nothing
    bool distinct = false;
    std::vector<SelectItem> items;
    std::vector<SourcePtr> from;
    ExprPtr where;
    std::vector<ExprPtr> groupBy;
    ExprPtr having;
    bool all = false; ///< joined to the select before it by "union all", not "union"
};

struct Query {
    std::vector<Select> arms; ///< more than one in a union
    std::vector<OrderItem> orderBy;
};

struct Insert {
    qsizetype place = 0; ///< of the table's name
    QString table;
    std::vector<QString> columns; ///< the analyser fills it in when the statement names none
    std::vector<std::vector<ExprPtr>> rows;
    std::unique_ptr<Query> query; ///< instead of rows
};

struct Assignment {
    qsizetype place = 0;
    QString column;
    ExprPtr value;
};

struct Update {
    QString table;
    std::vector<Assignment> assignments;
    ExprPtr where;
};

struct Delete {
    QString table;
    ExprPtr where;
};

struct Execute {
    QString procedure;
    std::vector<ExprPtr> arguments;
};

struct ColumnDefinition {
    qsizetype place = 0;
    QString name;
    TypeName type;
    bool identity = false;
    bool notNull = false;
    bool primaryKey = false;
    bool unique = false;
    ExprPtr fallback;
    ExprPtr check;
};

struct TableConstraint {
    bool primaryKey = false;
    std::vector<QString> columns; ///< of a key
    ExprPtr check; ///< instead of a key
};

struct CreateTable {
    QString name;
    std::vector<ColumnDefinition> columns;
    std::vector<TableConstraint> constraints;
};

struct IndexColumn {
    QString name;
    bool descending = false;
};

struct CreateIndex {
    QString name;
    QString table;
    bool unique = false;
    std::vector<IndexColumn> columns;
};

struct CreateView {
    QString name;
    Query query;
};

struct Drop {
    QString what; ///< table, view or index
    QString name;
    QString table; ///< of an index
};

using Statement
    = std::variant<Query, Insert, Update, Delete, Execute, CreateTable, CreateIndex, CreateView, Drop>;

/// Whether the statement changes the schema; its literals stay where they are.
bool isDefinition(const Statement& statement);

} // namespace quilla::sql
