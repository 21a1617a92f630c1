// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

// A reproducible signed test signal shared by the line tests.
#include <QtCore/QList>

#include <random>

namespace PlotterTest {

// n steps of a walk with standard normal steps, starting at 0.
inline QList<double> randomWalk(qsizetype n, unsigned seed)
{
    std::mt19937 generator(seed);
    std::normal_distribution<double> step;
    QList<double> values(n);
    double v = 0.0;
    for (double &x : values)
        x = v += step(generator);
    return values;
}

} // namespace PlotterTest
