// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include "testplotter1d.h"

TestPlotter1D::TestPlotter1D(QObject *parent)
    : IPlotter1D(parent)
{
    programLabel = QStringLiteral("test1d");
}

TestPlotter1D::~TestPlotter1D()
{
    detachFromChart();
}

void TestPlotter1D::setData(const QList<double> &data)
{
    m_receivedData.append(data);
    m_calls.append(QStringLiteral("data"));
    IPlotter1D::setData(data);
    emit received();
}

void TestPlotter1D::setPlotterArea(const QRectF &area)
{
    m_receivedAreas.append(area);
    m_calls.append(QStringLiteral("area"));
    IPlotter1D::setPlotterArea(area);
    emit received();
}
