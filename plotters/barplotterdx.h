// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/iplotter1d.h>

// Draws bars of individual widths laid edge to edge. The data are pairs: element
// 2k is the width of bar k along x, element 2k+1 its value. Every x position is
// kept as two floats (most and least significant part) and drawn with the
// "hresbar" program, so long series keep their x precision on the GPU.
class VEXAL_EXPORT BarPlotterDx : public IPlotter1D
{
    Q_OBJECT

public:
    // One vertex of the "vertex" attribute: x split into two floats, and y.
    struct Vertex
    {
        float xMsb = 0.0f; // x rounded to float, relative to the plotter area's left edge
        float xLsb = 0.0f; // what that rounding lost
        float y = 0.0f;    // value, measured from 0 upwards
    };

    explicit BarPlotterDx(QObject *parent = nullptr);
    ~BarPlotterDx() override;

    double max_in(const QRectF &rect) const override;
    QRectF area_at(const QPointF &point) const override;
    void setPlotterArea(const QRectF &area) override;
    SInfoPoint mouse_hovering(const QPointF &point) const override;
    QList<SAttributeDefinition> declareArributeArray() override;
    bool __update_vertex() override;
    bool __update_index() override;
    void _update_uniforms(QOpenGLShaderProgram &program, const SRenderLayerDefinition &layer) override;
    SAttributePointer _fetch_attribute_data(const int &attribute) const override;
    void _fetch_render_layers(QList<SRenderLayerDefinition> &layers, const QRectF &rect) override;
    int _index_at(double x) const override;
    int __start_index(const QRectF &rect) const override;
    int __end_index(const QRectF &rect) const override;

    QList<Vertex> m_vertices;   // 4 per bar; sized 4 per double, the tail stays zero; empty
    QList<quint32> m_indexData; // 6 per double (twice the bars); never shrinks; empty

private:
    // Sum of the widths of bars from..to (both included), 0.0 when from > to.
    double __dx_from_to(int from, int to) const;
    // The range of bars that the frame's rectangle shows.
    void __update_draw_index();
    int barCount() const { return int(data().size() / 2); }
    double widthOf(int bar) const { return data()[2 * bar]; }
    double valueOf(int bar) const { return data()[2 * bar + 1]; }

    // The uniforms of the frame being drawn, worked out with its layer while the
    // GUI thread is blocked.
    struct FrameUniforms
    {
        float xMsb = 0.0f;    // the view's left edge relative to the plotter area, split
        float xLsb = 0.0f;
        float screenDx = 0.0f; // clip units per data unit along x
        float screenDy = 0.0f; // half the view's height
        QColor color;          // bar colour
    };
    // A chart's frame of the bars: its visible rectangle, the bars it shows
    // and its uniforms.
    struct PairFrame
    {
        QRectF rect;            // visible rectangle, null
        int drawFirst = 0;      // first bar drawn; 0
        int drawLast = 0;       // one past the last bar drawn; 0
        FrameUniforms uniforms; // worked out with the layer
    };
    void captureUniforms(PairFrame &frame);
};
