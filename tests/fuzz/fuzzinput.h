// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QPointF>
#include <QtCore/QRectF>

#include <fuzzer/FuzzedDataProvider.h>

#include <cstring>
#include <functional>
#include <initializer_list>
#include <limits>

// Turns the fuzzer's bytes into the values the module is fed: doubles of every
// kind (raw bit patterns reach NaN, infinities, denormals and huge values),
// lists of them, rectangles, points and parameters of the full int range.
class FuzzInput
{
public:
    FuzzInput(const uint8_t *data, size_t size) : m_bytes(data, size) {}

    bool exhausted() { return m_bytes.remaining_bytes() == 0; }
    int pick(int count) { return m_bytes.ConsumeIntegralInRange(0, count - 1); }
    int anyInt() { return m_bytes.ConsumeIntegral<int>(); }
    bool flag() { return m_bytes.ConsumeBool(); }

    double anyDouble()
    {
        switch (pick(4)) {
        case 0: {
            const auto bits = m_bytes.ConsumeIntegral<quint64>();
            double v;
            std::memcpy(&v, &bits, sizeof v);
            return v;
        }
        case 1:
            return specialDouble();
        case 2:
            return double(m_bytes.ConsumeIntegralInRange(-100, 100));
        default:
            return m_bytes.ConsumeFloatingPoint<double>();
        }
    }

    QList<double> values(int maxCount)
    {
        QList<double> list(m_bytes.ConsumeIntegralInRange(0, maxCount));
        for (double &v : list)
            v = anyDouble();
        return list;
    }

    QRectF rect() { return QRectF(anyDouble(), anyDouble(), anyDouble(), anyDouble()); }

    // Runs up to maxSteps of the actions, each one chosen by the input, until
    // the input is used up.
    void runSteps(int maxSteps, std::initializer_list<std::function<void()>> actions)
    {
        const int count = int(actions.size());
        for (int step = 0; step < maxSteps && !exhausted(); ++step)
            actions.begin()[pick(count)]();
    }
    QPointF point() { return QPointF(anyDouble(), anyDouble()); }

private:
    double specialDouble()
    {
        using Limits = std::numeric_limits<double>;
        static const double specials[] = {
            0.0, -0.0, 1.0, -1.0, 0.5, 1e-300, 1e300, -1e300,
            Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(),
            Limits::denorm_min(), Limits::min(), Limits::max(), Limits::lowest(), Limits::epsilon(),
            2147483647.0, -2147483648.0, 4294967296.0, 16777217.0, 1e7 + 0.25, 9.375e-12};
        return specials[pick(int(std::size(specials)))];
    }

    FuzzedDataProvider m_bytes;
};
