// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/decimatoru64.h>

#include <vexal/ichartarea.h>

#include <cmath>
#include <limits>

DecimatorU64::DecimatorU64(QObject *parent)
    : Filter1D(parent)
{
    // The level depends on the units per input cell, so on the area as well.
    connect(this, &Filter1D::areaChanged, this, &DecimatorU64::updateLevel);
}

DecimatorU64::~DecimatorU64() = default;

const QList<double> &DecimatorU64::data() const
{
    return m_decimator.level(m_level);
}

IChartArea *DecimatorU64::chartArea() const
{
    return m_chartArea.data();
}

void DecimatorU64::setChartArea(IChartArea *chart)
{
    if (m_chartArea.data() == chart)
        return;
    if (IChartArea *old = m_chartArea.data())
        disconnect(old, nullptr, this, nullptr);
    m_chartArea = chart;
    if (chart)
        connectChart(chart);
    emit chartAreaChanged();
    updateLevel();
}

void DecimatorU64::connectChart(IChartArea *chart)
{
    connect(chart, &QQuickItem::widthChanged, this, &DecimatorU64::updateLevel);
    connect(chart, &IChartArea::visibleRectChanged, this, &DecimatorU64::updateLevel);
    connect(chart, &QObject::destroyed, this, &DecimatorU64::chartAreaChanged);
}

bool DecimatorU64::_filter_func(const QList<double> &input)
{
    if (!m_decimator.setData(input))
        return false;
    // A shorter input may have fewer levels than the one chosen before.
    m_level = std::min(m_level, m_decimator.levelCount() - 1);
    chooseLevel();
    return true;
}

qsizetype DecimatorU64::_filter_tail(qsizetype first, const QList<double> &tail)
{
    const int before = m_level;
    const bool regrouped = m_decimator.replaceTail(first, tail);
    m_level = std::min(m_level, m_decimator.levelCount() - 1);
    chooseLevel();
    if (m_level != before || (regrouped && m_level > 0))
        return 0;
    return first >> m_level;
}

bool DecimatorU64::_drop_front(qsizetype count)
{
    const int before = m_level;
    m_decimator.dropFront(count);
    m_level = std::min(m_level, m_decimator.levelCount() - 1);
    chooseLevel();
    // Level 0 is the input: it lost exactly its first cells.
    return before == 0 && m_level == 0;
}

void DecimatorU64::_clear_func()
{
    m_decimator = DecimatorFilter<double>();
    m_level = 0;
}

const QList<double> &DecimatorU64::inputValues() const
{
    return m_decimator.level(0);
}

std::optional<double> DecimatorU64::outputPeak() const
{
    const QList<double> &coarsest = m_decimator.level(m_decimator.levelCount() - 1);
    if (coarsest.size() > 64)
        return std::nullopt; // not reduced far enough to be cheap to read
    double peak = std::numeric_limits<double>::quiet_NaN();
    for (double v : coarsest)
        peak = std::isnan(peak) || v > peak ? v : peak;
    return peak;
}

bool DecimatorU64::chooseLevel()
{
    const IChartArea *chart = m_chartArea.data();
    if (!chart || chart->width() < 1.0 || m_decimator.level(0).isEmpty())
        return false;
    const double unitsPerPixel = chart->visibleRect().width() / chart->width();
    const int k = m_decimator.levelFor(unitsPerPixel, area());
    if (k == m_level)
        return false;
    m_level = k;
    return true;
}

void DecimatorU64::updateLevel()
{
    if (chooseLevel())
        _request_data_update();
}
