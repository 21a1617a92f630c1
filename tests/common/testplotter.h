// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/iplotter.h>

#include <QtCore/QAtomicInt>

// A layered plotter for tests: its data [left, bottom, right, top] describe one
// rectangle in data coordinates, drawn as a triangle strip with the "area"
// program in the plotter colour. It counts uploads and draws.
class TestPlotter : public IPlotter
{
    Q_OBJECT

public:
    explicit TestPlotter(QObject *parent = nullptr);
    ~TestPlotter() override;

    // Replaces the default single "area" layer.
    void setLayers(const QList<SRenderLayerDefinition> &layers);
    static SRenderLayerDefinition rectangleLayer(const QString &program = QStringLiteral("area"));

    int uploads() const { return m_uploads.loadRelaxed(); }
    int renders() const { return m_renders.loadRelaxed(); }
    bool isInitialized() const { return initialized; }
    quint32 pendingDirtyFlags() const { return dirtyFlags; }

    void render(const QRectF &area) override;

protected:
    QList<SAttributeDefinition> declareArributeArray() override;
    bool __update_vertex() override;
    void _update_uniforms(QOpenGLShaderProgram &program, const SRenderLayerDefinition &layer) override;
    SAttributePointer _fetch_attribute_data(const int &index) const override;
    void _fetch_render_layers(QList<SRenderLayerDefinition> &layers, const QRectF &area) override;

private:
    QList<float> m_vertices;                 // 4 corners, 2 floats each
    QList<SRenderLayerDefinition> m_layers;  // layers handed to the pipeline
    QRectF m_visible;                        // rectangle of the frame being drawn
    mutable QAtomicInt m_uploads;            // _fetch_attribute_data calls
    QAtomicInt m_renders;                    // render calls that passed the visibility test
};
