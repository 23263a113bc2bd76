#pragma once

#include "platform/sql/engine_printer.h"

namespace quilla::sql {

/// SQLite, with the functions and the collation of functions.h.
///
/// Texts keep their collation only as columns; every other text that is compared, sorted, grouped or made
/// distinct gets it written out, and so does a text that a view or a select in brackets makes a column of.
/// Dates are canonical texts in columns of text affinity. A decimal column holds 3.00 as the integer 3, so
/// a division is written in a form that never drops the fraction.
class SqlitePrinter final : public EnginePrinter {
public:
    SqlitePrinter();

protected:
    void columnDefinition(const ColumnDefinition& column) override;
    void update(const Update& update) override;
    void remove(const Delete& remove) override;
    void limit(const Query& query) override;
    void item(const SelectItem& item, const Select& select, bool inner) override;
    void compare(const Expr& expr) override;
    void chain(const Expr& expr) override;
    void like(const Expr& expr) override;
    void binary(const Expr& expr) override;
    void aggregate(const Expr& expr) override;
    void convert(const Expr& expr) override;
    void divide(const Expr& expr) override;
    void remainder(const Expr& expr);
    void collated(const Expr& expr, Level around) override;
    QString typeName(const TypeName& type) const override;
    QString name(const QString& name) const override;
    QString columnCheck(const ColumnDefinition& column) const override;
    void dateToText(const Expr& expr) override;
    void numberToText(const Expr& expr) override;

private:
    void endRounding(int scale);
    void part(const Expr& chain, std::size_t from, std::size_t to);
    void store(const Expr& expr);
    void call(QStringView function, const QString& first, const Expr& second);

    bool m_changesRows = false; ///< while an update or a delete is written
};

} // namespace quilla::sql
