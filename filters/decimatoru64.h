// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/decimatorfilter.h>
#include <vexal/filter1d.h>

class IChartArea;
Q_MOC_INCLUDE(<vexal/ichartarea.h>)

// Hands down the level of a maximum pyramid whose cells are about one pixel
// wide on the chart that shows it, so that a long series costs its plotters
// only as many cells as there are pixels. The level follows the chart's pixel
// width and, on a zoomable chart, its zoom.
class VEXAL_EXPORT DecimatorU64 : public Filter1D
{
    Q_OBJECT
    Q_PROPERTY(IChartArea *chartArea READ chartArea WRITE setChartArea NOTIFY chartAreaChanged)

public:
    explicit DecimatorU64(QObject *parent = nullptr);
    ~DecimatorU64() override;

    // The chosen level of the pyramid, shared, not copied.
    const QList<double> &data() const override;

    IChartArea *chartArea() const;
    void setChartArea(IChartArea *chart);

    int level() const { return m_level; }
    const DecimatorFilter<double> &decimator() const { return m_decimator; }

protected:
    bool _filter_func(const QList<double> &input) override;
    qsizetype _filter_tail(qsizetype first, const QList<double> &tail) override;
    void _clear_func() override;
    // Drops the pyramid's first cells in place; a chosen level above 0 is handed down anew.
    bool _drop_front(qsizetype count) override;
    // Level 0 of the pyramid.
    const QList<double> &inputValues() const override;
    // Every level keeps the maxima of the level below: the peak of the
    // coarsest level is the peak of each.
    std::optional<double> outputPeak() const override;

private slots:
    // Picks the level for the chart's current width and visible rectangle and
    // hands it down when it changed.
    void updateLevel();

private:
    bool chooseLevel();
    void connectChart(IChartArea *chart);

    DecimatorFilter<double> m_decimator; // the pyramid, one empty level
    int m_level = 0;                     // index of the level that data() returns, 0
    QPointer<IChartArea> m_chartArea;    // chart whose size and zoom select the level; not owned, null
};
