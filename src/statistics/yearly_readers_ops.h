#pragma once

#include "frame/refusal.h"
#include "frame/session.h"

namespace quilla {

class ReportViewer;

/// Which readers' loans of a year are asked for.
struct YearlyReadersQuery {
    QString year;
    QString unit;
    QString type;
};

/// A year that is no whole number; nullopt when it is one, of however many digits.
std::optional<Refusal> yearRefusal(const QString& year);

/// The loans of each reader by month; nullopt after a failure, which is reported.
std::optional<Recordset> yearlyReaders(Session& session, const YearlyReadersQuery& query);
/// Asks again and opens the report.
void printYearlyReaders(Session& session, ReportViewer& reports, const YearlyReadersQuery& query);

QStringList unitsOfReaders(Session& session);
QStringList typesOfReaders(Session& session);

} // namespace quilla
