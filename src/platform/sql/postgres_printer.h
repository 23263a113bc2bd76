#pragma once

#include "platform/sql/engine_printer.h"

namespace quilla::sql {

/// PostgreSQL, with the order of texts, the types and the functions of `postgresPreparation`.
///
/// Text columns are of the type `char` without a length and of a collation that passes over case: that type
/// passes over blanks at the end when it compares, in indexes too. A charge costs an eighth more than over
/// columns that compare bytes, a join of whole tables up to three times as much. Indexes over
/// `lower(rtrim(x))` look up as fast, but then every comparison, group and distinct row has to go through
/// those functions. The columns are domains, where a width costs next to nothing; as checks of the table the
/// widths would be read anew at each statement and add half to an update.
///
/// Every other text that is compared, sorted, grouped or made distinct is turned into that type. Every
/// parameter names its type. Bits are small integers, whole numbers never are, so that a bit in a result is
/// known by its type. Rows and indexes put nulls first, as the server does. Names are not quoted, so they
/// come back in small letters.
class PostgresPrinter final : public EnginePrinter {
public:
    PostgresPrinter();

protected:
    void query(const Query& query, bool inner) override;
    void bare(const Expr& expr) override;
    void item(const SelectItem& item, const Select& select, bool inner) override;
    void orderItem(const OrderItem& item) override;
    void indexColumn(const IndexColumn& column) override;
    void columnDefinition(const ColumnDefinition& column) override;
    void placeholder(const Expr& literal) override;
    void inlineLiteral(const Expr& literal) override;
    void like(const Expr& expr) override;
    void aggregate(const Expr& expr) override;
    void convert(const Expr& expr) override;
    void binary(const Expr& expr) override;
    void divide(const Expr& expr) override;
    void collated(const Expr& expr, Level around) override;
    void comparand(const Expr& expr, Level around) override;
    QString typeName(const TypeName& type) const override;
    QString name(const QString& name) const override;
    QString hiddenColumn(const CreateTable& table) const override;
    QString columnCheck(const ColumnDefinition& column) const override;
    void dateToText(const Expr& expr) override;
    void numberToText(const Expr& expr) override;

private:
    void negative(const Expr& expr);
    void stored(const Expr& expr, Level around);

    bool m_sorted = false; ///< the query being written has an order
    QStringView m_textType; ///< of a text parameter that is written now
};

/// The type of a column of whole numbers of one or two bytes. The server's own small type is kept for bits.
QString postgresNarrowType(int bytes);

/// The type of a text column; 0 for no width.
QString postgresTextType(int width);

} // namespace quilla::sql
