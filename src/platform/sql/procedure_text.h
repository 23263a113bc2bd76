#pragma once

#include <QString>

#include <vector>

namespace quilla::sql {

/// A stored procedure that is one select, as "create procedure" states it.
struct ProcedureText {
    struct Parameter {
        QString name; ///< with its "@"
        int width = 0; ///< of a text; 0 for a whole number
    };
    struct Term {
        QString parameter; ///< empty for a text
        QString text; ///< between its quotes, still doubled
    };
    /// A parameter in the select, or a text that begins with one and is put together with "+".
    struct Sum {
        qsizetype from = 0; ///< in the select
        qsizetype end = 0;
        std::vector<Term> terms;
    };

    QString name; ///< without owner
    std::vector<Parameter> parameters;
    QString select;
    std::vector<Sum> sums;
};

/// Throws `Error` (NotUnderstood) that names the word and its place.
ProcedureText readProcedure(const QString& definition);

} // namespace quilla::sql
