#pragma once

#include <vexal/iplotter1d.h>

#include <QtOpenGL/QOpenGLBuffer>

// Draws a series as adjacent bars of equal width standing on value 0, all in
// the plotter colour. It keeps its own arrays, buffers and a program shared by
// every bar plotter instead of using the render-layer pipeline.
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
    QOpenGLBuffer m_pointBuffer{QOpenGLBuffer::VertexBuffer};    // GPU copy of m_points; not created
    QOpenGLBuffer m_vertexIdBuffer{QOpenGLBuffer::VertexBuffer}; // GPU copy of m_vertexIds; not created
    QOpenGLBuffer m_indexBuffer{QOpenGLBuffer::IndexBuffer};     // GPU copy of m_indices; not created
    quint32 m_dirty = 0;          // DirtyBits::Vertex points, DirtyBits::Index indices/ids to upload; 0
    bool m_glReady = false;       // buffers created and arrays built once; false
    int m_barCount = 0;           // bars in the uploaded point buffer; 0

private:
    void createBuffers();
    void uploadDirtyArrays();
    void bindAttributes(QOpenGLShaderProgram &program);
    void releaseAttributes(QOpenGLShaderProgram &program);
};
