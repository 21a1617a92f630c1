// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Feeds every filter arbitrary series and parameters through a small tree
// (root -> filter under test -> child), checking that lookups stay inside the
// output and that maxima are never negative.
#include "filterkinds.h"
#include "fuzzapplication.h"
#include "fuzzinput.h"

#include <vexal/chartarea.h>

#include <memory>

namespace {

constexpr int MaxValues = 512;
constexpr int MaxSteps = 64;

// The chart that steers the decimator; one for the whole run, since every
// chart starts a settling task of its own.
ChartArea &chart()
{
    static ChartArea instance;
    return instance;
}

void setParameter(Filter1D &filter, Kind kind, FuzzInput &in)
{
    switch (kind) {
    case Decimator: {
        auto &decimator = static_cast<DecimatorU64 &>(filter);
        decimator.setChartArea(in.flag() ? &chart() : nullptr);
        chart().setWidth(in.pick(4096));
        chart().setZoomRect(in.rect());
        break;
    }
    case MovingAverage:
        static_cast<MovingAverageU64 &>(filter).setDepth(in.anyInt());
        break;
    case FixedDecimator:
    case FixedDecimatorPairs:
        static_cast<FixedPointFilter &>(filter).setNumPoint(in.anyInt());
        break;
    case MinimalWidth: {
        auto &merge = static_cast<MinimalWidth2D &>(filter);
        if (in.flag())
            merge.setPercMargin(in.anyDouble());
        else
            merge.setMergeWidth(in.anyDouble());
        break;
    }
    default:
        filter.setDataID(QString::number(in.anyInt()));
        break;
    }
}

void query(const Filter1D &filter, FuzzInput &in)
{
    const double x = in.anyDouble();
    const int index = filter.index_at(x);
    FUZZ_CHECK(index >= -1 && index < filter.data().size());
    (void)filter.value_at(x);
    (void)filter.area_at(in.point());
    const double maximum = filter.max_in(in.rect());
    FUZZ_CHECK(maximum >= 0.0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput in(data, size);
    const auto kind = Kind(in.pick(KindCount));
    Filter1D root;
    std::unique_ptr<Filter1D> filter = makeFilter(kind);
    Filter1D child;
    root.addFilter(filter.get());
    filter->addFilter(&child);
    in.runSteps(MaxSteps, {
        [&] { root.setData(in.values(MaxValues)); },
        [&] { filter->setData(in.values(MaxValues)); },
        [&] { root.setArea(in.rect()); },
        [&] { setParameter(*filter, kind, in); },
        [&] { query(*filter, in); },
        [&] {
            root.removeFilter(filter.get());
            if (in.flag())
                root.addFilter(filter.get());
        },
    });
    query(child, in);
    return 0;
}
