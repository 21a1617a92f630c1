// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Streams arbitrary appends, replacements, clears and capacities into a filter
// tree (root -> identity child -> plotter) and checks it against a model tree
// that is given the whole kept input each time: the same outputs and plotter
// data, and for DecimatorU64 the fixed-pair levels (counted from the first
// value held, dropped ones included) once values were appended or dropped.
#include "filterkinds.h"
#include "fuzzapplication.h"
#include "fuzzinput.h"
#include "samevalues.h"

#include <vexal/barplotter.h>
#include "core/numeric_p.h"

#include <memory>

namespace {

constexpr int MaxValues = 300;
constexpr int MaxSteps = 48;

struct Tree
{
    std::unique_ptr<Filter1D> root; // the filter under test
    Filter1D child;                 // an identity filter below it
    BarPlotter plotter;             // the child's plotter

    explicit Tree(Kind kind) : root(makeFilter(kind))
    {
        root->addFilter(&child);
        child.addPlotter(&plotter);
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput in(data, size);
    const auto kind = Kind(in.pick(KindCount));
    Tree streamed(kind);
    const bool pairs = kind == FixedDecimatorPairs || kind == MinimalWidth;
    QList<double> all;     // the whole input kept so far
    bool appended = false; // values were appended or dropped since the last replacement
    qsizetype dropped = 0; // values dropped since the decimator began grouping fixed pairs
    // A moving average's depth applies from the next change of its input on.
    const auto depthNow = [&] {
        return kind == MovingAverage ? static_cast<MovingAverageU64 &>(*streamed.root).depth() : 0;
    };
    int depthUsed = depthNow(); // the depth of the last change
    // What the root's capacity leaves of an append or a lower capacity.
    const auto keepNewest = [&] {
        const qsizetype capacity = streamed.root->capacity();
        if (capacity == 0 || all.size() <= capacity)
            return;
        const qsizetype count = all.size() - capacity;
        all.remove(0, count);
        dropped = appended ? dropped + count : 0; // a first drop regroups from the values kept
        appended = true;
        depthUsed = depthNow();
    };
    in.runSteps(MaxSteps, {
        [&] {
            const QList<double> values = in.values(MaxValues);
            streamed.root->appendData(values);
            all += values;
            if (!values.isEmpty()) {
                appended = true;
                depthUsed = depthNow();
            }
            keepNewest();
        },
        [&] {
            // Lists that a filter ignores (empty, or without a whole pair for
            // the pair filters) keep its old output: not modelled here.
            const QList<double> values = in.values(MaxValues);
            const qsizetype capacity = streamed.root->capacity();
            if (values.size() < (pairs ? 2 : 1) || (capacity > 0 && capacity < (pairs ? 2 : 1)))
                return;
            streamed.root->setData(values);
            const QList<double> kept = capacity > 0 ? values.last(std::min(capacity, values.size())) : values;
            // The very values held already leave the decimator's grouping as it was.
            if (kind != Decimator || !Vexal::sameData(kept, all)) {
                appended = false;
                dropped = 0;
            }
            all = kept;
            depthUsed = depthNow();
        },
        [&] {
            streamed.root->clear();
            all.clear();
            appended = false;
            dropped = 0;
        },
        [&] {
            // Even for the pair filters, so that their windows hold whole pairs.
            streamed.root->setCapacity(pairs ? 2 * int(in.pick(100)) : int(in.pick(200)));
            keepNewest();
        },
        [&] {
            if (kind == MovingAverage)
                static_cast<MovingAverageU64 &>(*streamed.root).setDepth(1 + in.pick(40));
        },
    });
    // Down the tree: what the root hands down arrives unchanged.
    FUZZ_CHECK(VexalTest::sameValues(streamed.child.data(), streamed.root->data()));
    FUZZ_CHECK(VexalTest::sameValues(streamed.plotter.data(), streamed.child.data()));
    // The fixed decimator keeps cells that a shorter input no longer reaches:
    // its output depends on more than the whole input, so no model has it.
    if (all.isEmpty() || kind == FixedDecimator)
        return 0;
    if (kind == Decimator) {
        const QList<QList<double>> &levels = static_cast<DecimatorU64 &>(*streamed.root).decimator().levels();
        FUZZ_CHECK(VexalTest::sameValues(levels.first(), all));
        if (appended) {
            const QList<QList<double>> expected = VexalTest::fixedPairLevels(all, dropped);
            FUZZ_CHECK(levels.size() == expected.size());
            for (qsizetype k = 0; k < levels.size(); ++k)
                FUZZ_CHECK(VexalTest::sameValues(levels[k], expected[k]));
        }
    }
    Tree model(kind);
    if (kind == MovingAverage)
        static_cast<MovingAverageU64 &>(*model.root).setDepth(depthUsed);
    model.root->setArea(streamed.root->area());
    model.root->setData(all);
    if (kind != Decimator || !appended)
        FUZZ_CHECK(VexalTest::sameValues(streamed.root->data(), model.root->data()));
    return 0;
}
