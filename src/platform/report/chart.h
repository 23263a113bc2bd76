#pragma once

#include "platform/core/text.h"

#include <vector>

namespace quilla {

struct ChartBar {
    QString label;
    double value = 0;
    QString valueText {}; ///< as it stands over the bar
};

/// One set of bars beside each other.
struct ChartSeries {
    QString title;
    std::vector<ChartBar> bars;
};

/// Bars, a page for each series.
struct Chart {
    QString title;
    std::vector<ChartSeries> series;
};

} // namespace quilla
