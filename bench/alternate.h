#pragma once

#include <QElapsedTimer>

#include <algorithm>
#include <vector>

/// The medians, in microseconds, of two ways to do the same thing.
struct Medians {
    double ours = 0;
    double bare = 0;
    double ratio() const { return ours / bare; }
};

inline double medianOf(std::vector<double> values)
{
    std::nth_element(values.begin(), values.begin() + std::ptrdiff_t(values.size() / 2), values.end());
    return values[values.size() / 2];
}

/// Runs the two in blocks by turns, so that a noisy machine hits them alike. Each is given the round.
template <typename Ours, typename Bare> Medians alternate(int rounds, Ours ours, Bare bare)
{
    const int block = std::clamp(rounds / 4, 1, 50);
    std::vector<double> times[2];
    QElapsedTimer timer;
    for (int round = 0; round < rounds; ++round) {
        const bool isOurs = round / block % 2 == 0;
        timer.start();
        if (isOurs)
            ours(round);
        else
            bare(round);
        times[isOurs ? 0 : 1].push_back(double(timer.nsecsElapsed()) / 1000);
    }
    return {medianOf(times[0]), medianOf(times[1])};
}
