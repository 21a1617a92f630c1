// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include "demoseries.h"

#include <cmath>
#include <random>

namespace {

// [SECTION] Signals

QList<double> baseline(int count, std::mt19937 &engine)
{
    std::normal_distribution<double> noise(0.0, 4.0);
    std::uniform_real_distribution<double> chance(0.0, 1.0);
    QList<double> values(count);
    double drift = 40.0;
    for (int i = 0; i < count; ++i) {
        drift = std::clamp(drift + noise(engine) * 0.05, 10.0, 80.0);
        const double wave = 15.0 * std::sin(i * 2e-6) + 6.0 * std::sin(i * 3e-4);
        const double peak = chance(engine) < 2e-6 ? 150.0 * chance(engine) + 60.0 : 0.0;
        values[i] = std::max(0.0, drift + wave + noise(engine) + peak);
    }
    return values;
}

// An exponential chirp: its frequency rises a thousandfold along the series,
// from 3 to 3000 periods per ten million samples (about 430 periods in all),
// so that slow swings on the left turn into a dense band on the right. Under
// a slowly breathing envelope, with a little noise and a small offset above 0.
QList<double> chirp(int count, std::mt19937 &engine)
{
    constexpr double twoPi = 6.283185307179586;
    const double growth = std::pow(1000.0, 1.0 / count); // frequency factor per sample
    double frequency = twoPi * 3e-7;                      // radians per sample
    double phase = 0.0;
    std::normal_distribution<double> noise(0.0, 0.03);
    QList<double> values(count);
    for (int i = 0; i < count; ++i) {
        const double envelope = 1.0 + 0.4 * std::sin(i * 7e-7);
        values[i] = 0.1 + envelope * std::sin(phase) + noise(engine);
        phase += frequency;
        frequency *= growth;
    }
    return values;
}

} // namespace

// [SECTION] DemoSeries

DemoSeries::DemoSeries(QObject *parent)
    : Filter1D(parent)
{
}

void DemoSeries::setCount(int count)
{
    if (count == m_count || count < 0)
        return;
    m_count = count;
    emit countChanged();
    generate();
}

void DemoSeries::setShape(Shape shape)
{
    if (shape == m_shape)
        return;
    m_shape = shape;
    emit shapeChanged();
    if (m_count > 0)
        generate();
}

void DemoSeries::generate()
{
    std::mt19937 engine(2026); // the same picture on every run
    const QList<double> values = m_shape == Chirp ? chirp(m_count, engine) : baseline(m_count, engine);
    setArea(QRectF(0, 0, m_count, 1));
    setData(values);
}
