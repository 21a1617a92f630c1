// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/iplotter.h>

#include <QtCore/QTime>
#include <QtCore/QTimer>
#include <QtCore/QVariantList>
#include <QtGui/QVector2D>
#include <QtOpenGL/QOpenGLBuffer>

// Watches other plotters, finds the bar under the mouse, publishes what lies
// there in infoMap and draws a translucent highlight over it. When the hovered
// bar changes, the old highlight fades out while the new one shows at once.
class VEXAL_EXPORT BarDecorator : public IPlotter
{
    Q_OBJECT
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY activeChanged)
    Q_PROPERTY(QVariantList infoMap READ infoMap NOTIFY infoMapChanged)
    Q_PROPERTY(QList<IPlotter *> plotters READ plotters WRITE setPlotters NOTIFY plottersChanged)
    Q_PROPERTY(double mouseX READ mouseX WRITE setMouseX)
    Q_PROPERTY(double mouseY READ mouseY WRITE setMouseY)

public:
    explicit BarDecorator(QObject *parent = nullptr);
    ~BarDecorator() override;

    bool active() const { return m_active; }
    void setActive(bool active);
    QVariantList infoMap() const { return m_infoMap; }
    QList<IPlotter *> plotters() const { return m_plotters; }
    void setPlotters(const QList<IPlotter *> &plotters);
    double mouseX() const { return m_mouseX; }
    void setMouseX(double x);
    double mouseY() const { return m_mouseY; }
    void setMouseY(double y);

    Q_INVOKABLE void addPlotter(IPlotter *newPlotter);
    Q_INVOKABLE void removePlotter(IPlotter *plotter);
    Q_INVOKABLE void removeAllPlotter();

    void prepareRender() override;
    void render(const QRectF &area) override;

signals:
    void activeChanged();
    void infoMapChanged();
    void plottersChanged();

protected:
    // One highlight: where it stands and when it expires.
    struct Highlight
    {
        QRectF rect;  // chart coordinates; null for "no highlight"
        QTime expiry; // when it started to fade; an hour ahead while it is the newest
    };

    // What a chart's frame of the decorator draws besides the common state.
    struct DecoratorFrame
    {
        int highlights = 0; // highlights the frame shows; 0
        float time = 0.0f;  // shader clock of the frame; 0
    };

    // Finds the bar under the mouse, updates the highlight and infoMap.
    void updateHover();
    // Makes rect the newest highlight; the previous one starts to fade.
    void pushHighlight(const QRectF &rect);
    // Drops highlights that have faded out; stops once only the newest is left.
    void fadeTick();

    QList<Highlight> m_history;            // newest first; one null highlight after construction
    QList<QVector2D> m_highlightVertices;  // "point": clip x and height, 4 per highlight; empty
    QList<float> m_highlightTimes;         // "time": fade start, 4 per highlight; 4 x 4000000 (never fades)
    QList<quint32> m_highlightIndices;     // 6 per highlight slot; built by the constructor
    QTimer m_fadeTimer;                    // fade clock, 20 ms, repeating
    int m_maxHighlights = 10;              // highlights kept on the GPU; 10
    float m_timeScale = 100.0f;            // milliseconds per shader time unit; 100

private:
    void watch(IPlotter *plotter);
    void unwatch(IPlotter *plotter);
    void forgetPlotter(const IPlotter *plotter);
    QPointF mouseInChart(const IChartArea &chart) const;
    void reshapeHighlight(const QRectF &rect);
    void fitToSlots();
    void uploadStaleArrays();
    void markHighlightsChanged();

    double m_mouseX = 0.0;        // mouse x in chart item pixels; 0
    double m_mouseY = 0.0;        // mouse y in chart item pixels; 0
    bool m_active = false;        // hover updates run only while active; false
    QVariantList m_infoMap;       // last published hover list; empty
    QList<IPlotter *> m_plotters; // watched plotters, dropped when destroyed; empty
};
