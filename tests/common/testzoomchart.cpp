// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include "testzoomchart.h"

#include "core/numeric_p.h"

TestZoomChart::TestZoomChart(QQuickItem *parent)
    : IChartArea(parent)
{
}

TestZoomChart::~TestZoomChart()
{
    closeRenderGate();
}

void TestZoomChart::setZoomRect(const QRectF &rect)
{
    if (Vexal::sameRect(m_zoomRect, rect))
        return;
    m_zoomRect = rect;
    emit zoomRectChanged();
    announceVisibleRect();
}
