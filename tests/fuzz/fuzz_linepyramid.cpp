// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Feeds the line pyramid arbitrary series, drops at their front (a sliding
// window) and index ranges, checking that its answers equal a plain scan of
// the samples.
#include "fuzzapplication.h"
#include "fuzzinput.h"

#include "plotters/linepyramid_p.h"

#include <cmath>

namespace {

constexpr int MaxValues = 4096;

bool scan(const QList<double> &values, qsizetype start, qsizetype end, double &min, double &max)
{
    bool found = false;
    for (qsizetype i = std::max<qsizetype>(start, 0); i < std::min(end, values.size()); ++i) {
        if (!std::isfinite(values[i]))
            continue;
        min = found ? std::min(min, values[i]) : values[i];
        max = found ? std::max(max, values[i]) : values[i];
        found = true;
    }
    return found;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput in(data, size);
    QList<double> values = in.values(MaxValues);
    Vexal::LinePyramid pyramid;
    pyramid.build(values);
    for (int drops = in.pick(4); drops > 0; --drops) {
        const qsizetype count = std::min<qsizetype>(in.pick(MaxValues), values.size());
        values.remove(0, count);
        pyramid.dropFront(values, count);
    }
    for (int k = 1; k <= pyramid.levelCount(); ++k)
        FUZZ_CHECK(pyramid.level(k).size() * Vexal::LinePyramid::groupSize(k) >= values.size() + pyramid.leadIn(k));
    while (!in.exhausted()) {
        const qsizetype start = in.anyInt() % (MaxValues + 1);
        const qsizetype end = in.anyInt() % (MaxValues + 1);
        double min = 0.0, max = 0.0, scanMin = 0.0, scanMax = 0.0;
        const bool found = pyramid.range(values, start, end, min, max);
        FUZZ_CHECK(found == scan(values, start, end, scanMin, scanMax));
        FUZZ_CHECK(!found || (min == scanMin && max == scanMax));
        pyramid.levelFor(in.anyDouble());
    }
    return 0;
}
