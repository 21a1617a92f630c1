// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/plotterrecords.h>

#include <QtCore/QHash>
#include <QtCore/QMutex>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtGui/QColor>
#include <QtOpenGL/QOpenGLBuffer>

#include <memory>

class IChartArea;
Q_MOC_INCLUDE(<vexal/ichartarea.h>)
class QOpenGLShaderProgram;
class SProgramShaderDefinition;
namespace Vexal { class GpuArrays; }

// Base of everything that draws a series into a chart. A subclass declares its
// vertex attributes, hands out their bytes on demand and describes each frame as
// render layers; this class owns the GPU buffers, uploads what is dirty, binds
// the named shader programs and issues the draw calls.
class VEXAL_EXPORT IPlotter : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged)
    Q_PROPERTY(double zOrder READ zOrder WRITE setZOrder NOTIFY zOrderChanged)
    Q_PROPERTY(QString legendToolTipText READ legendToolTipText WRITE setLegendToolTipText NOTIFY legendToolTipTextChanged)
    Q_PROPERTY(QString warningMessage READ warningMessage WRITE setWarningMessage NOTIFY warningMessageChanged)
    Q_PROPERTY(QList<double> data READ data WRITE setData NOTIFY dataChanged)
    Q_PROPERTY(uchar vectorDim READ vectorDim WRITE setVectorDim NOTIFY vectorDimChanged)
    Q_PROPERTY(QRectF plotterArea READ plotterArea WRITE setPlotterArea NOTIFY plotterAreaChanged)
    Q_PROPERTY(QRectF modArea READ modArea NOTIFY modAreaChanged)
    Q_PROPERTY(uint drawLayer READ drawLayer WRITE setDrawLayer NOTIFY drawLayerChanged)
    Q_PROPERTY(bool showLegend READ showLegend WRITE setShowLegend NOTIFY drawLayerChanged)
    Q_PROPERTY(IChartArea *chartArea READ chartArea WRITE setChartArea NOTIFY chartAreaChanged)
    Q_PROPERTY(double xOffset READ xOffset WRITE setXOffset NOTIFY xOffsetChanged)

public:
    explicit IPlotter(QObject *parent = nullptr);
    ~IPlotter() override;

    // ---- Properties
    QString name() const { return m_name; }
    void setName(const QString &name);
    QColor color() const { return m_color; }
    void setColor(const QColor &color);
    bool visible() const { return m_visible; }
    void setVisible(bool visible);
    double zOrder() const { return m_zOrder; }
    void setZOrder(double zOrder);
    QString legendToolTipText() const { return m_legendToolTipText; }
    void setLegendToolTipText(const QString &text);
    QString warningMessage() const { return m_warningMessage; }
    void setWarningMessage(const QString &message);
    uchar vectorDim() const { return m_vectorDim; }
    void setVectorDim(uchar dim);
    QRectF plotterArea() const { return m_plotterArea; }
    QRectF modArea() const { return dataArea(); }
    uint drawLayer() const { return m_drawLayer; }
    void setDrawLayer(uint layerMask);
    bool showLegend() const { return m_showLegend; }
    void setShowLegend(bool show);
    IChartArea *chartArea() const;
    void setChartArea(IChartArea *chart);
    double xOffset() const { return m_xOffset; }
    void setXOffset(double offset);

    // The plotter area moved horizontally by xOffset: where the data are drawn.
    QRectF dataArea() const;

    // ---- Render thread, called by the chart
    virtual void prepareRender();
    virtual void render(const QRectF &area);
    // The chart's synchronize step, GUI thread blocked: takes everything that
    // this frame's draw reads of the GUI-side state, and the frame's layers.
    void captureFrame(const QRectF &visibleRect);

    // ---- Queries in data coordinates
    virtual double max_in(const QRectF &area) const;
    virtual double min_in(const QRectF &area) const; // extension hook; the base returns 0.0
    // The smallest and largest values shown in the x range of rect, of either
    // sign, NaN ignored; false when it shows none. The base reports min_in and
    // max_in when the plotter has data.
    virtual bool valueRange(const QRectF &rect, double &minimum, double &maximum) const;
    virtual QRectF area_at(const QPointF &point) const;
    virtual void setPlotterArea(const QRectF &area);
    virtual SInfoPoint mouse_hovering(const QPointF &point) const;
    virtual const QList<double> &data() const;
    virtual void setData(const QList<double> &data);
    // Appends values to the data: what is drawn is what setData with the
    // whole list would draw, at a cost that follows the number of values
    // appended. The plotter area widens by one cell per value (a cell being
    // its width divided by the values before, or 1 when it had none), so the
    // new values sit right of the old ones.
    Q_INVOKABLE void appendData(const QList<double> &values);
    // Empties the data, from the screen too.
    Q_INVOKABLE void clear();
    // Replaces the values from first on by tail (a filter's output that grew
    // or changed only at its end), at a cost that follows the tail; the
    // plotter area stays as it is. first 0 (or beyond the data) replaces the
    // data as setData does.
    void replaceTail(qsizetype first, const QList<double> &tail);
    // Drops the first count values (a filter's sliding window moved on),
    // without shifting the rest in memory; the plotter area stays as it is.
    void dropFront(qsizetype count);

    // ---- Process-wide shader program registry
    static void registerProgramDefinition(SProgramShaderDefinition *definition);
    static QList<SProgramShaderDefinition *> programDefinitions();
    static bool programsBuilt();
    static void buildPrograms();
    static QOpenGLShaderProgram *programFor(const QString &name);

    // Internal: makes chart the chart whose frame this thread takes or draws,
    // until the scope ends.
    class FrameScope
    {
    public:
        explicit FrameScope(const IChartArea *chart);
        ~FrameScope();
        Q_DISABLE_COPY_MOVE(FrameScope)

    private:
        const void *m_previous; // restored at the end of the scope
    };

    // Called by a chart that is going away while this plotter still points at it.
    void forgetChart(const IChartArea *chart);
    // Called by a chart whose plotter list holds this plotter: the plotter
    // leaves that list too when it is destroyed, before its members go.
    void noteListedBy(IChartArea *chart);

signals:
    void colorChanged();
    void visibleChanged();
    void zOrderChanged();
    void plotterAreaChanged();
    void initChanged(); // kept: part of the plotter interface; never emitted
    void chartAreaChanged();
    void drawLayerChanged();
    void showLegendChanged(); // kept: part of the plotter interface; showLegend notifies drawLayerChanged
    void nameChanged();
    void legendToolTipTextChanged();
    void dataChanged();
    void vectorDimChanged();
    void warningMessageChanged();
    void xOffsetChanged();
    void modAreaChanged();

protected:
    // What the draw of the current frame reads of the GUI-side state, taken by
    // captureFrame while the GUI thread is blocked.
    struct FrameState
    {
        bool visible = false; // the plotter draws
        QRectF plotterArea;   // the plotter area
        QRectF dataArea;      // the plotter area moved by xOffset
        QColor color;         // the plotter colour
        double pixelWidth = 0.0; // framebuffer pixels across the chart, 0 outside a chart's frame
        double pixelHeight = 0.0; // framebuffer pixels down the chart, 0 outside a chart's frame
        double pixelRatio = 1.0; // framebuffer pixels per logical pixel (device ratio × renderScale); 1
    };

    // What one chart's frames of this plotter draw with: taken in that chart's
    // synchronize step and read by its draw. A plotter shown by several charts
    // (in several windows, drawn by several render threads) keeps one each.
    struct FrameRecord
    {
        FrameState state;                     // the GUI-side state, as taken
        QList<SRenderLayerDefinition> layers; // the frame's render layers, kept between frames
        std::shared_ptr<void> extra;          // what a subclass takes besides (frameExtra)
    };
    // The record of the chart whose frame is being taken or drawn on this
    // thread (outside a chart's frame: one record of its own).
    FrameRecord &currentFrame() const;
    // A subclass's own part of the current record; each subclass uses one type.
    template <typename T>
    T &frameExtra() const
    {
        FrameRecord &record = currentFrame();
        if (!record.extra)
            record.extra = std::make_shared<T>();
        return *static_cast<T *>(record.extra.get());
    }
    // The end of a chart's synchronize step, after the layers were taken:
    // uploads what the frame draws and the chart's GPU copy lacks. The base
    // uploads the render pipeline's declared arrays.
    virtual void uploadFrameArrays();

    // ---- Subclass hooks of the render pipeline
    virtual QList<SAttributeDefinition> declareArributeArray();
    virtual void declareUniforms(); // kept: part of the plotter interface; never called, the base only reports it is missing
    virtual bool __update_vertex();
    virtual bool __update_index();
    virtual void __update_custom(); // kept: part of the plotter interface; the pipeline never calls it
    virtual void _update_uniforms(QOpenGLShaderProgram &program, const SRenderLayerDefinition &layer);
    virtual SAttributePointer _fetch_attribute_data(const int &index) const;
    virtual void _fetch_render_layers(QList<SRenderLayerDefinition> &layers, const QRectF &area);

    // The GPU copies of the plotter's arrays, one per OpenGL share group that
    // draws it. The render pipeline declares one array per attribute
    // declaration; plotters that draw by themselves declare their own.
    Vexal::GpuArrays &gpuArrays() const { return *m_gpuArrays; }

    // Asks every chart that shows the plotter for a throttled redraw.
    void requestChartUpdate() const;
    // Leaves the chart's lists; concrete plotters call it first in their destructors
    // so that the render thread never draws a half-destroyed plotter.
    void detachFromChart();
    // Stores a new plotter area, emitting plotterAreaChanged and modAreaChanged and
    // asking for a repaint, unless it equals the current one.
    bool storePlotterArea(const QRectF &area);
    // Changes only the height of the plotter area (the data maximum); no signal.
    void setPlotterAreaHeight(double height) { m_plotterArea.setHeight(height); }
    void setPlotterAreaWidth(double width) { m_plotterArea.setWidth(width); }
    // Counts the changes of the data, from 1: what was worked out of the
    // data (GPU windows, peak pyramids) remembers the stamp it was made for.
    // markDataReplaced() starts a new series of changes.
    quint64 dataStamp() const { return m_dataStamp; }
    void markDataReplaced();
    // How many leading values are the same now as when the data stamp was
    // stamp (0 when that is not known any more): what was worked out of the
    // data then needs only its tail rebuilt.
    qsizetype unchangedSince(quint64 stamp) const;
    // After the data changed from firstChanged on (values appended, or a
    // filter's tail recomputed) and the data stamp moved on: subclasses bring
    // what they keep of the data up to date. The base does what a
    // replacement does.
    virtual void dataTailChanged(qsizetype firstChanged);
    // The data lost their first count values and are now kept: takes them as
    // setData does; a plotter that can drop the front of its reduction
    // instead does that.
    virtual void takeFrontDrop(const QList<double> &kept, qsizetype count);
    bool keepsDataWithoutChart = false;            // data given before a chart are kept, not dropped

    QList<double> m_data;                          // the series; shared, not copied
    QMutex dataMutex;                              // held while vertex/index arrays are rebuilt
    QMutex vertexMutex; // kept: part of the plotter interface, for subclasses' attribute declarations; unused here
    QMutex indexMutex;  // kept: part of the plotter interface, for subclasses' index declarations; unused here
    bool initialized = false;                      // set by the first prepareRender
    bool offsetSubtracts = true;                   // xOffset moves the data area left (true) or right
    quint32 dirtyFlags = 0;                        // arrays rebuilt but not yet uploaded
    QString programLabel;                          // printed by the base's warnings
    QList<SAttributeDefinition> attributeDefinitions; // declared at initialisation

private:
    void initialize();
    // Lets an initialised plotter rebuild its arrays from the data.
    void rebuildArrays();
    // Puts tail in place of the values from first on, under a new data stamp.
    void takeTail(qsizetype first, const QList<double> &tail);
    // Draws one layer; line widths are scaled by the frame's pixel ratio.
    void drawRenderLayer(const SRenderLayerDefinition &layer, QOpenGLShaderProgram &program, float pixelRatio);

    QString m_name;                      // legend name, empty
    QString m_legendToolTipText;         // legend tooltip, empty
    QString m_warningMessage;            // shown beside the legend entry, empty
    QColor m_color{7, 203, 242, 255};    // plotter colour
    bool m_visible = true;               // invisible plotters neither upload nor draw
    double m_zOrder = 0.0;               // order within a draw layer, ascending
    double m_xOffset = 0.0;              // horizontal shift of the data area
    uchar m_vectorDim = 1;               // values per item
    QRectF m_plotterArea;                // data extent, null by default
    uint m_drawLayer = 1;                // bit k: draws in chart layer k
    bool m_showLegend = true;            // listed in legends
    QPointer<IChartArea> m_chartArea;    // the chart drawn into; not owned
    std::unique_ptr<Vexal::GpuArrays> m_gpuArrays; // GPU copies of the arrays, per share group
    quint64 m_dataStamp = 1;             // see dataStamp()
    QList<QPair<quint64, qsizetype>> m_tailChanges; // (stamp, first changed value) since the last replacement, newest last
    mutable QHash<const IChartArea *, std::shared_ptr<FrameRecord>> m_frames; // frame records per chart
    mutable QMutex m_framesMutex;        // render threads of several windows reach m_frames
    QList<QPointer<IChartArea>> m_listedBy; // charts whose lists hold this plotter; not owned
};
