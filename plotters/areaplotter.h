// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/iplotter1d.h>

namespace Vexal { struct AreaFrame; }


// Draws a series as a filled area between value 0 and the curve through the
// values, with an optional border line along the curve and an optional
// vertical colour gradient in the fill. Sample i stands at the left edge of
// its cell. Each chart that shows the area keeps vertices for a window of
// samples around its view; where samples are narrower than a pixel it draws
// groups of samples at their peak.
class VEXAL_EXPORT AreaPlotter : public IPlotter1D
{
    Q_OBJECT
    Q_PROPERTY(double borderWidth READ borderWidth WRITE setBorderWidth NOTIFY borderWidthChanged)
    Q_PROPERTY(QColor borderColor READ borderColor WRITE setBorderColor NOTIFY borderColorChanged)
    Q_PROPERTY(bool borderEnable READ borderEnable WRITE setBorderEnable NOTIFY borderEnableChanged)
    Q_PROPERTY(bool enableGradient READ enableGradient WRITE setEnableGradient NOTIFY enableGradientChanged)
    Q_PROPERTY(QColor gradientColor READ gradientColor WRITE setGradientColor NOTIFY gradientColorChanged)

public:
    // Dirty bit of the border vertices, beside the shared vertex and index bits.
    static constexpr quint32 BorderDirty = 0x100000;

    explicit AreaPlotter(QObject *parent = nullptr);
    ~AreaPlotter() override;

    double borderWidth() const { return m_borderWidth; }
    void setBorderWidth(double width);
    QColor borderColor() const { return m_borderColor; }
    void setBorderColor(const QColor &color);
    bool borderEnable() const { return m_borderEnable; }
    void setBorderEnable(bool enable);
    bool enableGradient() const { return m_enableGradient; }
    void setEnableGradient(bool enable);
    QColor gradientColor() const { return m_gradientColor; }
    void setGradientColor(const QColor &color);

    void setPlotterArea(const QRectF &area) override;

signals:
    void borderWidthChanged();
    void borderColorChanged();
    void borderEnableChanged();
    void enableGradientChanged();
    void gradientColorChanged();

protected:
    QList<SAttributeDefinition> declareArributeArray() override;
    bool __update_vertex() override;
    void dataTailChanged(qsizetype firstChanged) override;
    void _update_uniforms(QOpenGLShaderProgram &program, const SRenderLayerDefinition &layer) override;
    SAttributePointer _fetch_attribute_data(const int &index) const override;
    void _fetch_render_layers(QList<SRenderLayerDefinition> &layers, const QRectF &area) override;
    // The current chart's frame: its window of samples, their vertices and uniforms.
    Vexal::AreaFrame &areaFrame() const;


private:
    double m_borderWidth = 3.0;               // border line width in pixels
    QColor m_borderColor{7, 203, 242, 255};   // border line colour
    bool m_borderEnable = true;               // draw the border line
    bool m_enableGradient = false;            // fill from gradientColor at value 0 to the plotter colour
    QColor m_gradientColor{7, 203, 242, 255}; // fill colour at value 0 when the gradient is on
    void captureUniforms(Vexal::AreaFrame &frame);
    void rebuildWindowVertices(Vexal::AreaFrame &frame);
};
