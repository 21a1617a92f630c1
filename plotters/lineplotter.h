// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/iplotter1d.h>

#include <memory>

namespace Vexal {
class LinePyramid;
struct LineFrame;
}

// Draws a series as a polyline through one value per cell: cell i of n stands
// at x = left + (i + 0.5) * width / n, at its value's height, of any sign. NaN
// and infinite values leave gaps. The plotter keeps the first, smallest,
// largest and last value of groups of values in a pyramid, built once per data
// change; each chart builds vertices for its view only, from the level that
// gives several groups per pixel column, so a frame costs pixels, not values,
// and looks like the polyline through every value.
class VEXAL_EXPORT LinePlotter : public IPlotter1D
{
    Q_OBJECT
    Q_PROPERTY(double lineWidth READ lineWidth WRITE setLineWidth NOTIFY lineWidthChanged)
    Q_PROPERTY(bool decimation READ decimation WRITE setDecimation NOTIFY decimationChanged)

public:
    explicit LinePlotter(QObject *parent = nullptr);
    ~LinePlotter() override;

    double lineWidth() const { return m_lineWidth; }
    void setLineWidth(double width);
    bool decimation() const { return m_decimation; }
    void setDecimation(bool enable);

    // Kept whether or not a chart is attached: drawn once one is.
    void setData(const QList<double> &data) override;
    // Keeps x and width; y and height become the data's extent, 0 included.
    void setPlotterArea(const QRectF &area) override;
    bool valueRange(const QRectF &rect, double &minimum, double &maximum) const override;
    SInfoPoint mouse_hovering(const QPointF &point) const override;

signals:
    void lineWidthChanged();
    void decimationChanged();

protected:
    QList<SAttributeDefinition> declareArributeArray() override;
    SAttributePointer _fetch_attribute_data(const int &index) const override;
    void _fetch_render_layers(QList<SRenderLayerDefinition> &layers, const QRectF &area) override;
    void _update_uniforms(QOpenGLShaderProgram &program, const SRenderLayerDefinition &layer) override;
    void dataTailChanged(qsizetype firstChanged) override;
    // Drops the front of the reduction too, at a cost that follows the values dropped.
    void takeFrontDrop(const QList<double> &kept, qsizetype count) override;
    // The peaks and troughs of the line's values come from its own
    // reduction: the peak pyramid of bars is never built for a line.
    double peakIn(qsizetype first, qsizetype last) const override;
    double troughIn(qsizetype first, qsizetype last) const override;
    // The current chart's frame: the vertices of its view.
    Vexal::LineFrame &lineFrame() const;

private:
    // Takes data whose reduction is up to date, and shows them.
    void showNewData();
    QRectF withDataExtent(QRectF area) const;
    void buildVertices(Vexal::LineFrame &frame) const;

    double m_lineWidth = 1.5;                   // stroke width in logical pixels
    bool m_decimation = true;                   // draw from the pyramid; false draws every segment
    quint64 m_styleVersion = 1;                 // counts changes of width and decimation
    std::unique_ptr<Vexal::LinePyramid> m_pyramid; // first/min/max/last of groups of the data
};
