// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/iplotter1d.h>

#include <QtOpenGL/QOpenGLBuffer>

namespace Vexal { struct BarFrame; }

// Draws a series as adjacent bars of equal width standing on value 0, all in
// the plotter colour. Each chart that shows it keeps arrays for a window of
// bars around its view (uploaded through the plotters' GPU arrays), and where
// bars are narrower than a pixel it draws groups of bars at their peak. It
// uses a program shared by every bar plotter instead of the render-layer
// pipeline.
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
    // Sets the plotter area's height to the data maximum (never below 0).
    void updateHeight();
    void dataTailChanged(qsizetype firstChanged) override;
    void _fetch_render_layers(QList<SRenderLayerDefinition> &layers, const QRectF &area) override;
    void uploadFrameArrays() override;
    // The current chart's frame: its window of bars and their arrays.
    Vexal::BarFrame &barFrame() const;

    bool m_glReady = false;       // the first frame was prepared: the height follows the data; false

private:
    void rebuildWindowArrays(Vexal::BarFrame &frame);
    void bindAttributes(QOpenGLShaderProgram &program);
    void releaseAttributes(QOpenGLShaderProgram &program);
};
