// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/iplotter1d.h>

namespace Vexal { struct PairFrame; }

// Draws bars of individual widths laid edge to edge. The data are pairs: element
// 2k is the width of bar k along x, element 2k+1 its value. Every x position is
// kept as two floats (most and least significant part) and drawn with the
// "hresbar" program, so long series keep their x precision on the GPU. Each
// chart that shows the bars keeps vertices for a window of bars around its
// view; where bars are narrower than a pixel on average it draws groups of
// bars, each as wide as its bars together and as high as their peak.
class VEXAL_EXPORT BarPlotterDx : public IPlotter1D
{
    Q_OBJECT

public:
    // One vertex of the "vertex" attribute: x split into two floats, and y.
    struct Vertex
    {
        float xMsb = 0.0f; // x rounded to float, relative to the plotter area's left edge
        float xLsb = 0.0f; // what that rounding lost
        float y = 0.0f;    // value, measured from the value at the view's bottom edge
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

protected:
    Vexal::CellRange itemsShownBy(const QRectF &rect) const override;
    void dataTailChanged(qsizetype firstChanged) override;
    // The current chart's frame: its window of bars, their arrays and uniforms.
    Vexal::PairFrame &pairFrame() const;

private:
    // Sum of the widths of bars from..to (both included), 0.0 when from > to.
    double __dx_from_to(int from, int to) const;
    // The range of bars that the frame's rectangle shows.
    void __update_draw_index();
    void rebuildWindowArrays(Vexal::PairFrame &frame);
    void captureUniforms(Vexal::PairFrame &frame);
    // edges()[k]: x of bar k's left edge relative to the plotter area, the widths
    // summed from bar 0; one more than the bars. Worked out once per data change.
    const QList<double> &edges() const;
    // The first edge k >= from with edges()[k] at or beyond x (relative to the
    // area); the bar count when none is.
    int firstEdgeAtOrAfter(double x, int from) const;
    int barCount() const { return int(data().size() / 2); }
    double widthOf(int bar) const { return data()[2 * bar]; }
    double valueOf(int bar) const { return data()[2 * bar + 1]; }

    mutable QList<double> m_edges; // see edges(); empty
    mutable quint64 m_edgesStamp = 0; // data stamp m_edges were summed for; 0 = never
};
