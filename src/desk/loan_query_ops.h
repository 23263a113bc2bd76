#pragma once

#include "frame/session.h"

#include <QStringList>

#include <array>

namespace quilla {

class ReportViewer;

/// What the query page asks for: each part counts only when it is ticked and its text is not blank.
struct LoanQuery {
    enum Part { Reader, Unit, Class, Book };
    struct Condition {
        bool ticked = false;
        QString text;
    };
    std::array<Condition, 4> parts;
};

/// The fields of one open loan as the grid shows them.
using LoanLine = QStringList;

/// The statement of the query; empty when no part counts.
QString loanStatement(const LoanQuery& query);

/// The open loans that the statement finds. Tells the operator when there are none. A field that can't be
/// read stays empty.
std::vector<LoanLine> findLoans(Session& session, const QString& statement);

/// Sends the statement anew and hands its rows to the report. Does nothing without a statement or rows.
void printLoans(Session& session, ReportViewer& viewer, const QString& statement);

/// The units, or the types, that the register of readers knows.
QStringList readerUnits(Session& session);
QStringList readerClasses(Session& session);

} // namespace quilla
