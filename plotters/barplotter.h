// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/iplotter1d.h>

#include <QtOpenGL/QOpenGLBuffer>

// Draws a series as adjacent bars of equal width standing on value 0, all in
// the plotter colour. It keeps its own arrays (uploaded through the plotters'
// per-share-group GPU arrays) and a program shared by every bar plotter
// instead of using the render-layer pipeline.
class VEXAL_EXPORT BarPlotter : public IPlotter1D
{
    Q_OBJECT

public:
    explicit BarPlotter(QObject *parent = nullptr);
    ~BarPlotter() override;

    void prepareRender() override;
    void render(const QRectF &area) override;
    QRectF area_at(const QPointF &point) const override;
    void setPlotterArea(const QRectF &area) override;
    void setData(const QList<double> &data) override;

protected:
    // Writes the "point" attribute and sets the plotter area's height to the
    // data maximum (never below 0).
    void rebuildPoints();
    // Writes indices and vertex ids of the bars not yet indexed; the arrays
    // never shrink.
    void rebuildIndices();

    QList<float> m_points;        // "point" attribute, 4 per bar (1 in the geometry variant); empty
    QList<float> m_vertexIds;     // "vertexID" attribute, 4 per bar; empty
    QList<quint32> m_indices;     // two triangles per bar, 6 indices; empty
    bool m_glReady = false;       // arrays built once, at the first frame; false

private:
    void uploadStaleArrays();
    void bindAttributes(QOpenGLShaderProgram &program);
    void releaseAttributes(QOpenGLShaderProgram &program);
};
