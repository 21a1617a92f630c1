// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/iplotter1d.h>

// A one-dimensional plotter for filter tests: it draws nothing and records
// every data list and plotter area it is handed, in order.
class TestPlotter1D : public IPlotter1D
{
    Q_OBJECT
    Q_PROPERTY(int dataCalls READ dataCalls NOTIFY received)
    Q_PROPERTY(int areaCalls READ areaCalls NOTIFY received)
    Q_PROPERTY(QList<double> lastData READ lastData NOTIFY received)
    Q_PROPERTY(QRectF lastArea READ lastArea NOTIFY received)

public:
    explicit TestPlotter1D(QObject *parent = nullptr);
    ~TestPlotter1D() override;

    void setData(const QList<double> &data) override;
    void setPlotterArea(const QRectF &area) override;

    int dataCalls() const { return int(m_receivedData.size()); }
    int areaCalls() const { return int(m_receivedAreas.size()); }
    QList<double> lastData() const { return m_receivedData.value(m_receivedData.size() - 1); }
    QRectF lastArea() const { return m_receivedAreas.value(m_receivedAreas.size() - 1); }
    const QList<QList<double>> &receivedData() const { return m_receivedData; }
    const QList<QRectF> &receivedAreas() const { return m_receivedAreas; }
    // Every call in order: "data" or "area".
    const QStringList &calls() const { return m_calls; }

signals:
    void received();

protected:
    QList<SAttributeDefinition> declareArributeArray() override { return {}; }

private:
    QList<QList<double>> m_receivedData; // every list given to setData, in order
    QList<QRectF> m_receivedAreas;       // every area given to setPlotterArea, in order
    QStringList m_calls;                 // "data" / "area" per call, in order
};
