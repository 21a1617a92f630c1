// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Streams arbitrary appends, replacements and clears into a filter tree (root
// -> identity child -> plotter) and checks it against a model tree that is
// given the whole input each time: the same outputs and plotter data, and for
// DecimatorU64 the fixed-pair levels once values were appended.
#include "filterkinds.h"
#include "fuzzapplication.h"
#include "fuzzinput.h"
#include "samevalues.h"

#include <vexal/barplotter.h>

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
    QList<double> all;     // the whole input so far
    bool appended = false; // values were appended since the last replacement
    // A moving average's depth applies from the next change of its input on.
    const auto depthNow = [&] {
        return kind == MovingAverage ? static_cast<MovingAverageU64 &>(*streamed.root).depth() : 0;
    };
    int depthUsed = depthNow(); // the depth of the last change
    in.runSteps(MaxSteps, {
        [&] {
            const QList<double> values = in.values(MaxValues);
            streamed.root->appendData(values);
            all += values;
            if (!values.isEmpty()) {
                appended = true;
                depthUsed = depthNow();
            }
        },
        [&] {
            // Lists that a filter ignores (empty, or without a whole pair for
            // the pair filters) keep its old output: not modelled here.
            const QList<double> values = in.values(MaxValues);
            const bool pairs = kind == FixedDecimatorPairs || kind == MinimalWidth;
            if (values.size() < (pairs ? 2 : 1))
                return;
            streamed.root->setData(values);
            all = values;
            appended = false;
            depthUsed = depthNow();
        },
        [&] {
            streamed.root->clear();
            all.clear();
            appended = false;
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
            const QList<QList<double>> expected = VexalTest::fixedPairLevels(all);
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
