// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Times the decimator's pyramid build and the line plotter's pyramid build for
// long series against a plain memcpy of the same bytes and prints their ratios, then the moving average and the
// minimal-width merge on 1e7 values.
#include <vexal/barplotter.h>
#include <vexal/decimatorfilter.h>
#include <vexal/decimatoru64.h>
#include <vexal/lineplotter.h>
#include <vexal/minimalwidth2d.h>
#include <vexal/movingaverageu64.h>
#include "plotters/linepyramid_p.h"

#include <benchmark/benchmark.h>

#include <QtCore/QHash>
#include <QtCore/QList>

#include <cstdio>
#include <cmath>
#include <cstring>
#include <map>
#include <utility>
#include <random>

namespace {

// [SECTION] Inputs

// Deterministic noise, so that every run times the same work.
QList<double> noise(qsizetype n, unsigned seed)
{
    QList<double> values(n);
    std::mt19937_64 engine(seed);
    std::uniform_real_distribution<double> uniform(0.0, 100.0);
    for (double &v : values)
        v = uniform(engine);
    return values;
}

// Pairs of widths in (0, 0.5] and values, so that several merge into one item.
QList<double> pairs(qsizetype count)
{
    QList<double> values = noise(2 * count, 7);
    for (qsizetype k = 0; k < count; ++k)
        values[2 * k] = values[2 * k] / 200.0 + 1e-3;
    return values;
}

// [SECTION] Pyramid against memcpy

// Two inputs that differ in their first value, used in turn: the build never
// takes the "equal to level 0" shortcut.
struct PyramidInputs
{
    QList<double> first;  // the noise
    QList<double> second; // the noise with another first value
};

const PyramidInputs &pyramidInputs(qsizetype n)
{
    static QHash<qsizetype, PyramidInputs> cache;
    auto it = cache.find(n);
    if (it == cache.end()) {
        cache.clear(); // one size at a time: 1e8 values take 800 MB each
        PyramidInputs inputs{noise(n, 1), {}};
        inputs.second = inputs.first;
        inputs.second[0] += 1.0;
        it = cache.insert(n, inputs);
    }
    return *it;
}

// Rebuilds over and over, as a stream of equally long inputs does: the levels
// reuse their storage, so this is the cost of the reduction itself.
void pyramidBuild(benchmark::State &state)
{
    const PyramidInputs &inputs = pyramidInputs(qsizetype(state.range(0)));
    DecimatorFilter<double> pyramid;
    pyramid.setData(inputs.second);
    bool useSecond = false;
    for (auto _ : state) {
        pyramid.setData(useSecond ? inputs.second : inputs.first);
        useSecond = !useSecond;
        benchmark::DoNotOptimize(pyramid.levels().constData());
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * state.range(0) * int64_t(sizeof(double)));
}

// A first build into a new pyramid: includes allocating and faulting in the
// levels' memory.
void pyramidFirstBuild(benchmark::State &state)
{
    const PyramidInputs &inputs = pyramidInputs(qsizetype(state.range(0)));
    for (auto _ : state) {
        DecimatorFilter<double> pyramid;
        pyramid.setData(inputs.first);
        benchmark::DoNotOptimize(pyramid.levels().constData());
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * state.range(0) * int64_t(sizeof(double)));
}

// The line plotter's first/min/max/last pyramid, rebuilt for an equally long
// input as each data change does.
void linePyramidBuild(benchmark::State &state)
{
    const PyramidInputs &inputs = pyramidInputs(qsizetype(state.range(0)));
    Vexal::LinePyramid pyramid;
    pyramid.build(inputs.second);
    bool useSecond = false;
    for (auto _ : state) {
        pyramid.build(useSecond ? inputs.second : inputs.first);
        useSecond = !useSecond;
        benchmark::DoNotOptimize(pyramid.levelCount());
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * state.range(0) * int64_t(sizeof(double)));
}

void plainMemcpy(benchmark::State &state)
{
    const QList<double> &source = pyramidInputs(qsizetype(state.range(0))).first;
    const size_t bytes = size_t(source.size()) * sizeof(double);
    // The destination is allocated and touched once: only the copy is timed.
    QList<double> target(source.size());
    for (auto _ : state) {
        std::memcpy(target.data(), source.constData(), bytes);
        benchmark::DoNotOptimize(target.constData());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(bytes));
}

// [SECTION] Filters on 1e7 values

constexpr qsizetype FilterValues = 10'000'000;

void movingAverage(benchmark::State &state)
{
    const QList<double> input = noise(FilterValues, 3);
    MovingAverageU64 filter;
    for (auto _ : state) {
        filter.setData(input);
        benchmark::DoNotOptimize(filter.data().constData());
    }
    state.SetItemsProcessed(int64_t(state.iterations()) * FilterValues);
}

void minimalWidth(benchmark::State &state)
{
    const QList<double> input = pairs(FilterValues / 2);
    MinimalWidth2D filter;
    for (auto _ : state) {
        filter.setData(input);
        benchmark::DoNotOptimize(filter.data().constData());
    }
    state.SetItemsProcessed(int64_t(state.iterations()) * FilterValues);
}

// [SECTION] Streaming

// 1 000 values appended to a series of state.range(0) values, through a
// DecimatorU64 into a BarPlotter and straight into a LinePlotter: the time
// the module spends on one append (no chart, so no frame is drawn).
void streamingAppend(benchmark::State &state)
{
    DecimatorU64 decimator;
    BarPlotter bars;
    LinePlotter line;
    decimator.addPlotter(&bars);
    decimator.setArea(QRectF(0, 0, 1, 1));
    const QList<double> start = noise(state.range(0), 9);
    decimator.setData(start);
    line.setData(start);
    const QList<double> chunk = noise(1000, 10);
    decimator.appendData(chunk); // the first append copies the shared input once
    line.appendData(chunk);
    for (auto _ : state) {
        decimator.appendData(chunk);
        line.appendData(chunk);
    }
    state.SetItemsProcessed(int64_t(state.iterations()) * chunk.size());
}

// [SECTION] Reporting

// Prints the usual table and keeps each run's real time per iteration.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs)
            m_seconds[run.benchmark_name()] = run.GetAdjustedRealTime();
    }

    void printRatios(const std::vector<int64_t> &sizes) const
    {
        std::printf("\npyramid build / memcpy of the same bytes (goal: 3 or less)\n");
        for (int64_t n : sizes) {
            const std::string suffix = "/" + std::to_string(n) + "/real_time";
            const double copy = seconds("plainMemcpy" + suffix);
            std::printf("  %11lld values: rebuild %.2f, first build %.2f, line pyramid rebuild %.2f\n",
                        static_cast<long long>(n), seconds("pyramidBuild" + suffix) / copy,
                        seconds("pyramidFirstBuild" + suffix) / copy, seconds("linePyramidBuild" + suffix) / copy);
        }
    }

private:
    double seconds(const std::string &name) const
    {
        const auto it = m_seconds.find(name);
        return it == m_seconds.end() ? std::nan("") : it->second;
    }

    std::map<std::string, double> m_seconds; // real time per iteration, by run name
};

} // namespace

int main(int argc, char **argv)
{
    // The odd size takes the general grouping path instead of plain pairs.
    const std::vector<int64_t> sizes{1'000'000, 10'000'000, 100'000'000, 10'000'001};
    for (int64_t n : sizes) {
        // Grouped per size, so that each group runs on the same cached input.
        for (auto [name, function] : {std::pair{"pyramidBuild", &pyramidBuild},
                                      std::pair{"pyramidFirstBuild", &pyramidFirstBuild},
                                      std::pair{"linePyramidBuild", &linePyramidBuild},
                                      std::pair{"plainMemcpy", &plainMemcpy}})
            benchmark::RegisterBenchmark(name, function)->Arg(n)->UseRealTime()->Unit(benchmark::kMillisecond);
    }
    benchmark::RegisterBenchmark("movingAverage/1e7", movingAverage)->UseRealTime()->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("minimalWidth/1e7", minimalWidth)->UseRealTime()->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("streamingAppend", streamingAppend)
        ->Arg(1'000'000)
        ->Arg(10'000'000)
        ->Arg(100'000'000)
        ->Iterations(2000)
        ->UseRealTime()
        ->Unit(benchmark::kMicrosecond);

    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios(sizes);
    benchmark::Shutdown();
    return 0;
}
