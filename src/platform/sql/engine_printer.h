#pragma once

#include "platform/sql/function_rules.h"
#include "platform/sql/printer.h"

#include <span>

namespace quilla::sql {

/// What the printers of the engines have in common: literals become parameters, `top` becomes a limit at
/// the end, functions are written as `FunctionRule` has them.
class EnginePrinter : public Printer {
public:
    /// Writes the statement; the literals in `pinned` stay where they are.
    QString print(const Statement& statement, const std::vector<int>& pinned);
    const std::vector<Parameter>& parameters() const { return m_parameters; }

protected:
    /// `functionText`: how this engine writes a function.
    EnginePrinter(QStringView FunctionRule::*functionText, std::span<const QStringView> keywords);

    void execute(const Execute& call) override;
    void literal(const Expr& expr) override;
    void top(const Select& select) override;
    void limit(const Query& query) override;
    void function(const Expr& expr) override;
    void binary(const Expr& expr) override;
    void createTable(const CreateTable& table) override;
    void drop(const Drop& drop) override;

    /// How a parameter of this literal is written.
    virtual void placeholder(const Expr& literal);
    virtual void inlineLiteral(const Expr& literal);
    /// Whether the literal stays in the text.
    bool isPinned(const Expr& literal) const;
    virtual void divide(const Expr& expr) = 0;
    /// A conversion to text.
    void toText(const Expr& expr);
    virtual void dateToText(const Expr& expr) = 0;
    virtual void numberToText(const Expr& expr) = 0;
    /// Whether the name needs no quotes: ordinary letters, and no keyword of the engine.
    bool isPlainName(const QString& name) const;
    static QString quotedName(QString name);

    /// A column of the engine's own, after a comma; empty for none.
    virtual QString hiddenColumn(const CreateTable& table) const;
    /// The check that keeps out what the column's type would not hold; empty for none.
    virtual QString columnCheck(const ColumnDefinition& column) const = 0;

private:
    QStringView FunctionRule::*m_functionText;
    std::span<const QStringView> m_keywords;
    std::vector<int> m_pinned;
    std::vector<Parameter> m_parameters;
};

/// The printer of an engine; null for one whose text is not written by a printer.
std::unique_ptr<EnginePrinter> makePrinter(Engine engine);

/// A style of `convert`: the one among those that look the same which the engines' function knows, and how
/// many characters its text has.
struct DateStyle {
    int style;
    int as;
    int width;
};
/// For the styles that the analyser lets pass.
DateStyle dateStyle(int style);

/// A date literal in the form in which date columns hold it. Refuses a text that is no date.
QString canonicalDate(const Expr& literal);

} // namespace quilla::sql
