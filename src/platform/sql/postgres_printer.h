#pragma once

#include "platform/sql/engine_printer.h"

namespace quilla::sql {

/// PostgreSQL, with the order of texts, the types and the functions of `postgresPreparation`.
///
/// Text columns are of the type `char` without a length and of a collation that passes over case: that type
/// passes over blanks at the end when it compares, in indexes too, and both together cost an index look-up
/// less than a tenth more than bytes do. An index over `lower(rtrim(x))` would cost the same, but then every
/// comparison, group and distinct row has to be written through those functions. Where the columns are
/// domains, a width costs nothing; as a check of the table it would be read anew at each statement and
/// double the price of an update.
///
/// Every other text that is compared, sorted, grouped or made distinct is turned into that type. Every
/// parameter tells its type. Bits are small integers, whole numbers are never small: so the type alone tells
/// a bit in a result. Rows and indexes put nulls first, as the server does.
class PostgresPrinter final : public EnginePrinter {
public:
    PostgresPrinter();

protected:
    void query(const Query& query, bool inner) override;
    void item(const SelectItem& item, const Select& select, bool inner) override;
    void orderItem(const OrderItem& item) override;
    void indexColumn(const IndexColumn& column) override;
    void columnDefinition(const ColumnDefinition& column) override;
    void placeholder(const Expr& literal) override;
    void inlineLiteral(const Expr& literal) override;
    void like(const Expr& expr) override;
    void function(const Expr& expr) override;
    void aggregate(const Expr& expr) override;
    void convert(const Expr& expr) override;
    void divide(const Expr& expr) override;
    void collated(const Expr& expr, Level around) override;
    void comparand(const Expr& expr, Level around) override;
    QString typeName(const TypeName& type) const override;
    QString name(const QString& name) const override;
    QString columnCheck(const ColumnDefinition& column) const override;

private:
    void toText(const Expr& expr);
    void dateToText(const Expr& expr);
    void numberToText(const Expr& expr);

    bool m_sorted = false; ///< the query being written has an order
    QStringView m_textType; ///< of a text parameter that is written now
};

/// What brings the order of texts, the types and the functions into an empty database; `schema` tells the
/// widths of texts that are needed.
std::vector<QString> postgresPreparation(const Schema& schema);

/// The type of a text column; 0 for no width.
QString postgresTextType(int width);

} // namespace quilla::sql
