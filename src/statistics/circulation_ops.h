#pragma once

#include "frame/search.h"
#include "output/export_layouts.h"
#include "platform/core/dates.h"
#include "statistics/query_ops.h"

namespace quilla {

class GridModel;

/// The dates that a statistic is limited to, as they were typed.
struct DateLimits {
    QString from;
    QString to;
};

/// One kind of rows that the circulation statistics list.
struct CirculationMode {
    QString name;
    QString caption; ///< of its option
    QString format; ///< of the grid
    QString select;
    QString joint = u" where "_s; ///< between the select and a condition
    QString dateField; ///< that the dates limit
    QueryTriple triple;
    QStringList cells; ///< the fields in the order of the columns; `OverdueDays` for the days
    QString report;
    QString paperHint {}; ///< a message before the report, empty for none
    ListExport sheet;
};

/// Stands among the cells for the days since the due date.
inline const QString OverdueDays = u"cqday"_s;

/// In the order of the options.
const std::vector<CirculationMode>& circulationModes();

/// The search of a mode. Neither the dates nor the condition get brackets: a condition with an OR at its top
/// binds weaker than the dates.
ListSearch circulationSearch(const CirculationMode& mode, const std::optional<DateLimits>& dates,
    const QString& condition, const QString& order);

/// Fills the grid line by line and returns how many rows there are; the grid stays as it is without any.
/// nullopt when no connection can be had and when the select fails.
std::optional<qsizetype> listCirculation(
    Session& session, const CirculationMode& mode, const QString& statement, GridModel& cells);

/// The days from the due date to a moment, with the fraction of the day; negative while it lies ahead.
QString daysOverdue(const Moment& now, const Moment& due);

} // namespace quilla
