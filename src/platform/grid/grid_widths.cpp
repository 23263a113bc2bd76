#include "platform/grid/grid_widths.h"

#include <QtGlobal>

#include <algorithm>
#include <numeric>

namespace quilla {

namespace {

constexpr int LeastRest = 1200;

int widthOf(const ColumnShare& share, int unit, int rest)
{
    const int width = share.units * unit + share.twips;
    return share.takesRest ? std::max(width + rest, LeastRest) : std::max(width, 0);
}

int sum(const std::vector<int>& numbers)
{
    return std::accumulate(numbers.begin(), numbers.end(), 0);
}

/// Changes each width by its part of `amount`, in proportion to `weights`, to the last pixel.
void share(std::vector<int>& widths, std::vector<int> weights, int amount)
{
    int weightLeft = sum(weights);
    for (std::size_t i = 0; i < widths.size() && weightLeft > 0; ++i) {
        const int part = int(qint64(amount) * weights[i] / weightLeft);
        widths[i] += part;
        amount -= part;
        weightLeft -= weights[i];
    }
}

} // namespace

bool needsScrollBar(const GridExtent& extent)
{
    const int lines = extent.rows - 1;
    // multiplied out instead of divided, so that a half visible line still counts as a half
    return extent.height - CaptionHeight <= lines * extent.rowHeight;
}

std::vector<int> gridFix(const WidthRule& rule, const GridExtent& extent)
{
    const int free = extent.width - (needsScrollBar(extent) ? rule.spareLarge : rule.spareSmall);
    const int unit = rule.parts ? std::max(free, 0) / rule.parts : 0;
    std::vector<int> widths;
    for (const ColumnShare& share : rule.columns)
        widths.insert(widths.end(), share.last - share.first + 1, widthOf(share, unit, free));
    return widths;
}

std::vector<int> layColumns(const std::vector<int>& wanted, const std::vector<int>& least, int available)
{
    std::vector<int> widths = wanted;
    std::vector<int> slack(wanted.size(), 0);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (wanted[i] <= 0) continue;
        widths[i] = std::max(wanted[i], least[i]);
        slack[i] = widths[i] - least[i];
    }
    const int missing = available - sum(widths);
    if (missing > 0) share(widths, widths, missing);
    if (missing < 0 && sum(wanted) <= available) share(widths, slack, std::max(missing, -sum(slack)));
    return widths;
}

} // namespace quilla
