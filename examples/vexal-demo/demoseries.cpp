// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include "demoseries.h"

#include <cmath>
#include <random>

DemoSeries::DemoSeries(QObject *parent)
    : Filter1D(parent)
{
}

void DemoSeries::setCount(int count)
{
    if (count == m_count || count < 0)
        return;
    m_count = count;
    std::mt19937 engine(2026); // the same picture on every run
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
    emit countChanged();
    setArea(QRectF(0, 0, count, 1));
    setData(values);
}
