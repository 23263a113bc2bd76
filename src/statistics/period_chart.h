#pragma once

#include "platform/report/chart.h"

namespace quilla {

class GridModel;

/// The workload, a series for each of its figures by day or month.
Chart workloadChart(const QString& title, const GridModel& cells);
/// The classes of the whole period, then all classes by day or month.
Chart classesChart(const QString& title, const GridModel& cells);
/// The types of readers, then all types by day.
Chart readerTypesChart(const QString& title, const GridModel& cells);

} // namespace quilla
