// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Side-by-side benchmark of Vexal and Qt Charts on the same long series.
//
// The parent process runs every measurement in a child process of its own (so
// that peak memory belongs to one system and one scenario), collects the
// results and prints one table. A child shows a 1200 x 600 window on the
// OpenGL scene graph with either a Vexal ChartArea (a DecimatorU64 feeding a
// BarPlotter, the values going straight into the BarPlotter, or the values
// going straight into a LinePlotter) or a Qt Charts ChartView with an OpenGL
// LineSeries, and measures:
//   first frame  - from handing the N values over until the frame showing them;
//   zoom/pan     - 20 steps (ten halvings moving across the data, ten pans);
//   live update  - 20 successive replacements of the N values;
//   memory       - peak resident memory above the empty window, per sample,
//                  while the series is shown, zoomed and panned.
// Two floors are timed the same way: a bare window whose rectangle changes
// colour (one frame of this window on this machine) and a chart without
// plotters whose zoom changes (one frame of a chart's framebuffer).
// A frame "shows" a change once the scene has settled: the time is that of the
// last frame swapped before the window stays idle, so deferred work (queued
// updates, dropped redraw requests) is counted and never missed.

#include <vexal/chartarea.h>
#include <vexal/decimatoru64.h>
#include <vexal/barplotter.h>
#include <vexal/lineplotter.h>

#include <QtCharts/QValueAxis>
#include <QtCharts/QXYSeries>
#include <QtCore/QCommandLineParser>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QTimer>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <memory>
#include <random>

namespace {

//-----------------------------------------------------------------------------
// [SECTION] Shared helpers
//-----------------------------------------------------------------------------

constexpr int WindowWidth = 1200;
constexpr int WindowHeight = 600;
constexpr int ZoomSteps = 10;          // halvings, followed by as many pans
constexpr int LiveUpdates = 20;
constexpr double MaxValue = 1000.0;    // values are uniform in [0, MaxValue)
constexpr qint64 SettleMs = 150;       // idle time after which a frame counts as final
constexpr qint64 ThrottleGapMs = 30;   // idle time before a step, longer than the redraw throttle

enum class System { Vexal, VexalRaw, VexalLine, QtCharts, BareWindow, EmptyChart };

const char *systemName(System s)
{
    switch (s) {
    case System::Vexal: return "vexal";
    case System::VexalRaw: return "vexal-raw";
    case System::VexalLine: return "vexal-line";
    case System::QtCharts: return "qtcharts";
    case System::BareWindow: return "window";
    case System::EmptyChart: return "empty-chart";
    }
    return "";
}

QList<double> makeValues(qint64 n, quint64 seed)
{
    std::mt19937_64 engine(seed);
    std::uniform_real_distribution<double> uniform(0.0, MaxValue);
    QList<double> values(n);
    for (double &v : values)
        v = uniform(engine);
    return values;
}

qint64 statusKiB(const char *field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray key = QByteArray(field) + ':';
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(key))
            return line.mid(key.size()).trimmed().split(' ').value(0).toLongLong();
    }
    return 0;
}

// Starts a new peak-memory measurement at the current resident size.
void resetPeakMemory()
{
    QFile clearRefs(QStringLiteral("/proc/self/clear_refs"));
    if (clearRefs.open(QIODevice::WriteOnly))
        clearRefs.write("5");
}

double median(QList<double> v)
{
    if (v.isEmpty())
        return qQNaN();
    std::sort(v.begin(), v.end());
    const qsizetype m = v.size() / 2;
    return v.size() % 2 ? v[m] : (v[m - 1] + v[m]) / 2.0;
}

QString cpuName()
{
    QFile cpuinfo(QStringLiteral("/proc/cpuinfo"));
    if (cpuinfo.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : cpuinfo.readAll().split('\n')) {
            if (line.startsWith("model name"))
                return QString::fromLatin1(line.mid(line.indexOf(':') + 1).trimmed());
        }
    }
    return QStringLiteral("unknown CPU");
}

//-----------------------------------------------------------------------------
// [SECTION] Frame clock: when has a change reached the screen?
//-----------------------------------------------------------------------------

class FrameClock
{
public:
    explicit FrameClock(QQuickWindow *window)
    {
        m_clock.start();
        m_wake.start(2); // bounds the sleep of waitForEvents()
        QObject::connect(window, &QQuickWindow::frameSwapped, window,
                         [this] { m_lastSwap.store(m_clock.nsecsElapsed()); }, Qt::DirectConnection);
        QObject::connect(window, &QQuickWindow::afterRendering, window, [this] {
            if (m_renderer.isEmpty()) {
                auto *gl = QOpenGLContext::currentContext()->functions();
                m_renderer = QString::fromLatin1(reinterpret_cast<const char *>(gl->glGetString(GL_RENDERER)));
            }
        }, Qt::DirectConnection);
    }

    // Runs change() and returns the milliseconds until the last frame swapped
    // before the window went idle for SettleMs; negative when it never settled.
    double measure(const std::function<void()> &change)
    {
        waitIdle(ThrottleGapMs);
        const qint64 start = m_clock.nsecsElapsed();
        const qint64 swapBefore = m_lastSwap.load();
        change();
        const qint64 deadline = start + qint64(120) * 1000000000;
        while (m_clock.nsecsElapsed() < deadline) {
            waitForEvents();
            const qint64 swap = m_lastSwap.load();
            if (swap != swapBefore && m_clock.nsecsElapsed() - swap > SettleMs * 1000000)
                return double(swap - start) / 1e6;
        }
        return -1.0;
    }

    // Processes events until nothing was swapped for ms milliseconds.
    void waitIdle(qint64 ms)
    {
        QElapsedTimer idle;
        idle.start();
        qint64 swap = m_lastSwap.load();
        while (idle.elapsed() < ms) {
            waitForEvents();
            if (m_lastSwap.load() != swap) {
                swap = m_lastSwap.load();
                idle.restart();
            }
        }
    }

    QString renderer() const { return m_renderer; }

private:
    // Sleeps until an event arrives (at the latest the wake timer's): polling
    // would take a core from the render thread on a small machine.
    static void waitForEvents() { QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); }

    QElapsedTimer m_clock;
    QTimer m_wake;                      // periodic wake-up while waiting
    std::atomic<qint64> m_lastSwap{-1}; // ns of the last frameSwapped
    QString m_renderer;                 // GL_RENDERER, read on the render thread
};

//-----------------------------------------------------------------------------
// [SECTION] The two systems behind one interface
//-----------------------------------------------------------------------------

// The visible x range of the zoom and pan script, step by step.
QList<QPair<double, double>> zoomScript(double n)
{
    QList<QPair<double, double>> steps;
    double width = n;
    double left = 0.0;
    for (int i = 1; i <= ZoomSteps; ++i) {
        width /= 2.0;
        left = (n - width) * i / (ZoomSteps + 1); // moves across the data while zooming in
        steps.append({left, width});
    }
    for (int i = 0; i < ZoomSteps; ++i) {
        left = std::clamp(left - width / 2.0, 0.0, n - width); // pans back towards the start
        steps.append({left, width});
    }
    return steps;
}

// The deep zoom script: from the whole series into 1e5, 1e4 and 2 000 samples
// in the middle, a pan by one window width, and back out to the whole series.
struct DeepStep
{
    const char *label; // row label in the table
    double left;       // left edge of the visible range
    double width;      // width of the visible range
};

QList<DeepStep> deepZoomScript(double n)
{
    const double middle = n / 2.0;
    QList<DeepStep> steps;
    // A range as wide as the series would change nothing: it is left out.
    for (const auto &[label, width] : {std::pair{"deep: into 1e5 (ms)", 1e5}, std::pair{"deep: into 1e4 (ms)", 1e4},
                                       std::pair{"deep: into 2000 (ms)", 2e3}}) {
        if (width < n)
            steps.append({label, middle - width / 2.0, width});
    }
    const DeepStep last = steps.last();
    steps.append({"deep: pan one width (ms)", std::min(last.left + last.width, n - last.width), last.width});
    steps.append({"deep: back out (ms)", 0.0, n});
    return steps;
}

class ChartUnderTest
{
public:
    virtual ~ChartUnderTest() = default;
    virtual QByteArray qml() const = 0;
    virtual void prepare(QQuickItem *root, qint64 n) = 0;   // untimed set-up for N values
    virtual void hand(const QList<double> &values) = 0;    // timed: hand the values over
    virtual void showRange(double left, double width) = 0; // timed: zoom or pan
    virtual void append(const QList<double> &values) = 0;  // timed: values appended to the series
    virtual void setCapacity(qint64 capacity) = 0;         // untimed: the most values the series keeps
};

class VexalChart : public ChartUnderTest
{
public:
    explicit VexalChart(System system) : m_decimated(system == System::Vexal), m_line(system == System::VexalLine) {}

    QByteArray qml() const override
    {
        return QByteArray("import QtQuick 2.15\nimport VexalPlugin 1.0\n"
                          "Item {\n"
                          "  ChartArea { objectName: 'chart'; anchors.fill: parent }\n")
            + (m_line ? "  LinePlotter { objectName: 'plotter' }\n" : "  BarPlotter { objectName: 'plotter' }\n")
            + "  DecimatorU64 { objectName: 'decimator' }\n"
              "  Filter1D { objectName: 'window' }\n"
              "}\n";
    }

    void prepare(QQuickItem *root, qint64 n) override
    {
        m_chart = root->findChild<ChartArea *>(QStringLiteral("chart"));
        m_plotter = root->findChild<IPlotter1D *>(QStringLiteral("plotter"));
        m_decimator = root->findChild<DecimatorU64 *>(QStringLiteral("decimator"));
        m_window = root->findChild<Filter1D *>(QStringLiteral("window"));
        m_plotter->setChartArea(m_chart);
        const QRectF area(0, 0, double(n), 1);
        if (m_decimator && m_decimated) {
            m_decimator->setChartArea(m_chart);
            m_decimator->setArea(area);
            m_decimator->addPlotter(m_plotter);
        } else {
            m_plotter->setPlotterArea(area);
        }
        m_chart->updateArea();    // chartRect spans the N samples now, not at the next accepted redraw
        m_chart->resetZoomView(); // the whole range is shown from the first frame
    }

    void hand(const QList<double> &values) override
    {
        if (Filter1D *root = rootFilter())
            root->setData(values);
        else
            m_plotter->setData(values);
    }

    void showRange(double left, double width) override
    {
        const QRectF zoom = m_chart->zoomRect();
        m_chart->setZoomRect(QRectF(left, zoom.y(), width, zoom.height()));
    }

    // The view follows the growing series, as a monitoring view does.
    void append(const QList<double> &values) override
    {
        m_chart->setFollow(true);
        if (Filter1D *root = rootFilter())
            root->appendData(values);
        else
            m_plotter->appendData(values);
    }

    // The decimator keeps the window; a line gets an identity filter that keeps it.
    void setCapacity(qint64 capacity) override
    {
        if (!m_decimated) {
            m_window->setArea(m_plotter->plotterArea());
            m_window->addPlotter(m_plotter);
            m_windowed = true;
        }
        rootFilter()->setCapacity(int(capacity));
    }

private:
    Filter1D *rootFilter() const { return m_decimated ? m_decimator : m_windowed ? m_window : nullptr; }

    bool m_decimated;                   // values pass through the decimator
    bool m_windowed = false;            // values pass through the window filter
    bool m_line;                        // a LinePlotter instead of a BarPlotter
    ChartArea *m_chart = nullptr;       // the chart item
    IPlotter1D *m_plotter = nullptr;       // the plotter
    DecimatorU64 *m_decimator = nullptr; // the pyramid between values and plotter
    Filter1D *m_window = nullptr;        // the sliding window in front of a line, when it has a capacity
};

class QtChartsChart : public ChartUnderTest
{
public:
    QByteArray qml() const override
    {
        return "import QtQuick 2.15\nimport QtCharts 2.15\n"
               "ChartView {\n"
               "  legend.visible: false; antialiasing: false\n"
               "  property QtObject xAxis: ax\n"
               "  property QtObject yAxis: ay\n"
               "  property QtObject series: line\n"
               "  ValueAxis { id: ax }\n"
               "  ValueAxis { id: ay }\n"
               "  LineSeries { id: line; useOpenGL: true; axisX: ax; axisY: ay }\n"
               "}\n";
    }

    void prepare(QQuickItem *root, qint64 n) override
    {
        // Axes and series are not children of the view: reach them through its properties.
        const auto object = [root](const char *name) { return root->property(name).value<QObject *>(); };
        m_series = qobject_cast<QXYSeries *>(object("series"));
        m_x = qobject_cast<QValueAxis *>(object("xAxis"));
        auto *y = qobject_cast<QValueAxis *>(object("yAxis"));
        m_x->setRange(0, double(n));
        y->setRange(0, MaxValue);
    }

    void hand(const QList<double> &values) override
    {
        m_series->replace(pointsFor(values));
        m_next = values.size();
    }

    void showRange(double left, double width) override
    {
        m_x->setRange(left, left + width);
    }

    // QXYSeries::append of the new points, the x axis widened to show all.
    void append(const QList<double> &values) override
    {
        QList<QPointF> points(values.size());
        for (qsizetype i = 0; i < values.size(); ++i)
            points[i] = QPointF(double(m_next + i), values[i]);
        m_next += values.size();
        m_series->append(points);
        const qsizetype over = m_capacity > 0 ? m_series->count() - m_capacity : 0;
        if (over > 0)
            m_series->removePoints(0, int(over));
        m_x->setRange(double(m_next - m_series->count()), double(m_next));
    }

    // Points beyond the capacity are removed from the front after each append.
    void setCapacity(qint64 capacity) override { m_capacity = capacity; }

    // The peer takes points, so the points are built before timing.
    void preparePoints(const QList<double> &values)
    {
        QList<QPointF> points(values.size());
        for (qsizetype i = 0; i < values.size(); ++i)
            points[i] = QPointF(double(i), values[i]);
        m_points.insert(values.constData(), points);
    }

private:
    QList<QPointF> pointsFor(const QList<double> &values) const { return m_points.value(values.constData()); }

    QXYSeries *m_series = nullptr;                      // the LineSeries
    QValueAxis *m_x = nullptr;                          // its x axis
    QHash<const double *, QList<QPointF>> m_points;     // prepared points per value list
    qint64 m_capacity = 0;                              // most points kept; 0 = no limit
    qint64 m_next = 0;                                  // x of the next point appended
};

//-----------------------------------------------------------------------------
// [SECTION] Child: one system, one mode, one N
//-----------------------------------------------------------------------------

// Fills the window with the root item of qml; null (with the errors printed) when it does not load.
std::unique_ptr<QQuickItem> showScene(QQmlEngine &engine, QQuickWindow &window, const QByteArray &qml)
{
    engine.addImportPath(QStringLiteral(VEXAL_BENCH_QML_DIR)); // the module in the build tree
    window.resize(WindowWidth, WindowHeight);
    QQmlComponent component(&engine);
    component.setData(qml, QUrl());
    std::unique_ptr<QQuickItem> root(qobject_cast<QQuickItem *>(component.create()));
    if (!root) {
        fprintf(stderr, "%s\n", qPrintable(component.errorString()));
        return nullptr;
    }
    root->setParentItem(window.contentItem());
    root->setSize(QSizeF(WindowWidth, WindowHeight));
    return root;
}

void printResult(const QJsonObject &result)
{
    printf("RESULT %s\n", QJsonDocument(result).toJson(QJsonDocument::Compact).constData());
    fflush(stdout);
}

// One child's chart: the system's chart in a shown window, prepared for N
// values, with the peak memory measured from the empty chart on.
class ChildChart
{
public:
    // False (with the errors printed) when the scene does not load.
    bool open(System system, qint64 n)
    {
        if (system == System::QtCharts)
            chart = std::make_unique<QtChartsChart>();
        else
            chart = std::make_unique<VexalChart>(system);
        root = showScene(engine, window, chart->qml());
        if (!root)
            return false;
        clock = std::make_unique<FrameClock>(&window);
        window.show();
        clock->waitIdle(300); // window exposed, start-up tasks done
        chart->prepare(root.get(), n);
        clock->waitIdle(100);
        resetPeakMemory();
        baselineKiB = statusKiB("VmRSS");
        m_n = n;
        return true;
    }

    // N values from seed, with the peer's points built before any timing.
    QList<double> values(quint64 seed)
    {
        QList<double> v = makeValues(m_n, seed);
        if (auto *peer = dynamic_cast<QtChartsChart *>(chart.get()))
            peer->preparePoints(v);
        return v;
    }

    // Peak resident memory above the empty chart, per sample.
    double bytesPerSample() const { return double(statusKiB("VmHWM") - baselineKiB) * 1024.0 / double(m_n); }

    // Declared in the order of construction; destroyed clock and item first, engine last.
    std::unique_ptr<ChartUnderTest> chart; // the system under test
    QQmlEngine engine;                     // loads the scene
    QQuickWindow window;                   // 1200 x 600, OpenGL scene graph
    std::unique_ptr<QQuickItem> root;      // the scene's root item
    std::unique_ptr<FrameClock> clock;     // times the changes
    qint64 baselineKiB = 0;                // resident memory of the prepared, empty chart

private:
    qint64 m_n = 0; // values per list
};

int runChild(System system, qint64 n, quint64 seed)
{
    ChildChart c;
    if (!c.open(system, n))
        return 1;
    const QList<double> first = c.values(seed);
    QJsonObject result;
    result[QStringLiteral("first")] = c.clock->measure([&] { c.chart->hand(first); });
    QJsonArray steps;
    for (const auto &[left, width] : zoomScript(double(n)))
        steps.append(c.clock->measure([&, l = left, w = width] { c.chart->showRange(l, w); }));
    result[QStringLiteral("steps")] = steps;
    result[QStringLiteral("bytesPerSample")] = c.bytesPerSample();

    // Live updates alternate between two lists, so every call changes all N values.
    c.chart->showRange(0, double(n));
    const QList<double> second = c.values(seed + 1);
    QJsonArray live;
    for (int i = 0; i < LiveUpdates; ++i)
        live.append(c.clock->measure([&] { c.chart->hand(i % 2 ? first : second); }));
    result[QStringLiteral("live")] = live;
    result[QStringLiteral("renderer")] = c.clock->renderer();
    printResult(result);
    return 0;
}

// The deep zoom script alone: the first frame, each step of deepZoomScript and
// the peak resident memory over all of them.
int runDeepChild(System system, qint64 n, quint64 seed)
{
    ChildChart c;
    if (!c.open(system, n))
        return 1;
    const QList<double> values = c.values(seed);
    QJsonObject result;
    result[QStringLiteral("first")] = c.clock->measure([&] { c.chart->hand(values); });
    QJsonArray steps;
    for (const DeepStep &step : deepZoomScript(double(n)))
        steps.append(c.clock->measure([&] { c.chart->showRange(step.left, step.width); }));
    result[QStringLiteral("deep")] = steps;
    result[QStringLiteral("peakMiB")] = double(statusKiB("VmHWM")) / 1024.0;
    result[QStringLiteral("bytesPerSample")] = c.bytesPerSample();
    result[QStringLiteral("renderer")] = c.clock->renderer();
    printResult(result);
    return 0;
}

// Streaming: every 20 ms a chunk of 1 000 values is appended until the series
// was given n (or the time limit is reached), after prefill values handed
// over as a whole list, into a series that keeps at most capacity values (0:
// all). Reports the time spent in each append call, the frames per second
// over the run, the resident memory 5 s into the stream (a window has moved
// on by then) and at its end, and the peak memory.
constexpr int StreamChunk = 1000;
constexpr int StreamIntervalMs = 20;

struct StreamPlan
{
    qint64 capacity = 0;         // most values the series keeps; 0 = no limit
    qint64 prefill = 0;          // values handed over before streaming
    qint64 limitMs = 300000;     // the longest a run streams
};

int runStreamChild(System system, qint64 n, quint64 seed, const StreamPlan &plan)
{
    const bool empty = system == System::EmptyChart;
    ChildChart c;
    // The empty chart spans one unit, so that its zoom can change.
    if (!c.open(system, empty ? 1 : plan.prefill))
        return 1;
    if (!empty && plan.capacity > 0)
        c.chart->setCapacity(plan.capacity);
    if (!empty && plan.prefill > 0) {
        c.chart->hand(c.values(seed + 1));
        c.clock->waitIdle(100);
    }
    const QList<double> chunk = makeValues(StreamChunk, seed);
    int frames = 0;
    QObject::connect(&c.window, &QQuickWindow::frameSwapped, &c.window, [&frames] { ++frames; },
                     Qt::DirectConnection);
    QList<double> appendMs;
    qint64 held = empty ? 0 : plan.prefill;
    qint64 startKiB = 0;
    QTimer::singleShot(5000, [&startKiB] { startKiB = statusKiB("VmRSS"); });
    QElapsedTimer run;
    run.start();
    QTimer tick;
    tick.setInterval(StreamIntervalMs);
    QObject::connect(&tick, &QTimer::timeout, [&] {
        QElapsedTimer call;
        call.start();
        if (empty)
            c.chart->showRange(0.0, held % 2000 ? 0.5 : 0.25); // a chart without data redraws
        else
            c.chart->append(chunk);
        appendMs.append(double(call.nsecsElapsed()) / 1e6);
        held += StreamChunk;
        if (held >= n || run.elapsed() > plan.limitMs)
            QCoreApplication::quit();
    });
    frames = 0;
    tick.start();
    QCoreApplication::exec();
    QJsonObject result;
    QList<double> sorted = appendMs;
    std::sort(sorted.begin(), sorted.end());
    result[QStringLiteral("appendMedian")] = median(appendMs);
    result[QStringLiteral("appendP99")] = sorted.isEmpty() ? qQNaN() : sorted[(sorted.size() - 1) * 99 / 100];
    result[QStringLiteral("appendMax")] = sorted.isEmpty() ? qQNaN() : sorted.last();
    result[QStringLiteral("fps")] = double(frames) * 1000.0 / double(run.elapsed());
    result[QStringLiteral("held")] = double(held);
    result[QStringLiteral("startMiB")] = double(startKiB) / 1024.0;
    result[QStringLiteral("endMiB")] = double(statusKiB("VmRSS")) / 1024.0;
    result[QStringLiteral("peakMiB")] = double(statusKiB("VmHWM")) / 1024.0;
    result[QStringLiteral("renderer")] = c.clock->renderer();
    printResult(result);
    return 0;
}

// The floors under every step, measured with the same clock as often as the
// zoom and pan script has steps: a bare window whose one rectangle changes
// colour, and a chart without plotters whose zoom changes.
int runFloorChild(System system)
{
    const bool chart = system == System::EmptyChart;
    QQmlEngine engine;
    QQuickWindow window;
    const std::unique_ptr<QQuickItem> root = showScene(
        engine, window, chart ? "import VexalPlugin 1.0\nChartArea {}\n" : "import QtQuick 2.15\nRectangle {}\n");
    if (!root)
        return 1;
    FrameClock clock(&window);
    window.show();
    clock.waitIdle(300);
    const auto step = [&](int i) {
        if (chart)
            static_cast<ChartArea *>(root.get())->setZoomRect(QRectF(0, 0, 1.0 / (i + 2), 1));
        else
            root->setProperty("color", i % 2 ? QColor(Qt::white) : QColor(Qt::lightGray));
    };
    QJsonArray steps;
    for (int i = 0; i < 2 * ZoomSteps; ++i)
        steps.append(clock.measure([&] { step(i); }));
    QJsonObject result;
    result[QStringLiteral("steps")] = steps;
    printResult(result);
    return 0;
}

//-----------------------------------------------------------------------------
// [SECTION] Parent: runs the children and prints the table
//-----------------------------------------------------------------------------

struct Figures
{
    QList<double> first, zoomMedian, zoomMax, live, memory; // one entry per repetition
    QList<QList<double>> deep;                             // per deep zoom step, one entry per repetition
    QList<double> peakMiB;                                 // peak resident memory, one entry per repetition
    QList<double> appendMedian, appendP99, appendMax;      // streaming: per repetition
    QList<double> fps, held, startMiB, endMiB;             // streaming: per repetition
    bool ran = false;                                      // at least one child reported
    QString renderer;                                      // as the children saw it
};

QList<double> toList(const QJsonArray &array)
{
    QList<double> values;
    for (const QJsonValue &v : array)
        values.append(v.toDouble());
    return values;
}

// The systems a run measures (--systems); every one by default.
QList<System> selectedSystems;

Figures runChildren(System system, qint64 n, int repetitions, const QString &program,
                    const QStringList &options = {})
{
    Figures figures;
    if (!selectedSystems.contains(system))
        return figures;
    for (int rep = 0; rep < repetitions; ++rep) {
        QProcess child;
        child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QStringList arguments{QStringLiteral("--child"), QString::fromLatin1(systemName(system)),
                              QString::number(n), QStringLiteral("--seed"), QStringLiteral("42")};
        arguments.append(options);
        child.start(program, arguments);
        if (!child.waitForFinished(30 * 60 * 1000)) {
            child.kill();
            fprintf(stderr, "%s N=%lld did not finish\n", systemName(system), qlonglong(n));
            continue;
        }
        for (const QByteArray &line : child.readAllStandardOutput().split('\n')) {
            if (!line.startsWith("RESULT "))
                continue;
            const QJsonObject o = QJsonDocument::fromJson(line.mid(7)).object();
            const QList<double> steps = toList(o[QStringLiteral("steps")].toArray());
            figures.first.append(o[QStringLiteral("first")].toDouble());
            if (!steps.isEmpty()) {
                figures.zoomMedian.append(median(steps));
                figures.zoomMax.append(*std::max_element(steps.cbegin(), steps.cend()));
            }
            figures.live.append(median(toList(o[QStringLiteral("live")].toArray())));
            figures.memory.append(o[QStringLiteral("bytesPerSample")].toDouble());
            const QList<double> deepSteps = toList(o[QStringLiteral("deep")].toArray());
            figures.deep.resize(std::max(figures.deep.size(), deepSteps.size()));
            for (qsizetype i = 0; i < deepSteps.size(); ++i)
                figures.deep[i].append(deepSteps[i]);
            figures.peakMiB.append(o[QStringLiteral("peakMiB")].toDouble());
            for (const auto &[key, list] :
                 {std::pair{"appendMedian", &figures.appendMedian}, std::pair{"appendP99", &figures.appendP99},
                  std::pair{"appendMax", &figures.appendMax}, std::pair{"fps", &figures.fps},
                  std::pair{"held", &figures.held}, std::pair{"startMiB", &figures.startMiB},
                  std::pair{"endMiB", &figures.endMiB}})
                list->append(o[QLatin1String(key)].toDouble());
            figures.renderer = o[QStringLiteral("renderer")].toString();
            figures.ran = true;
        }
    }
    return figures;
}

// True when the system ran, or was not asked for.
bool ranIfSelected(System system, const Figures &f)
{
    return f.ran || !selectedSystems.contains(system);
}

QString cell(const Figures &f, const QList<double> Figures::*field)
{
    return f.ran ? QString::number(median(f.*field), 'f', 1) : QStringLiteral("-");
}

// A deep zoom step's median, "-" where the child did not report it.
QString deepCell(const Figures &f, qsizetype step)
{
    return step < f.deep.size() ? QString::number(median(f.deep[step]), 'f', 1) : QStringLiteral("-");
}

QString ratio(const Figures &ours, const Figures &peer, const QList<double> Figures::*field)
{
    if (!ours.ran || !peer.ran)
        return QStringLiteral("-");
    return QString::number(median(ours.*field) / median(peer.*field), 'f', 3);
}

void printRow(const char *scenario, qint64 n, const Figures &ours, const Figures &peer,
              const QList<double> Figures::*field, const QString &peerNote)
{
    const QString peerCell = peerNote.isEmpty() ? cell(peer, field) : peerNote;
    printf("| %-26s | %9s | %12s | %12s | %8s |\n", scenario, qPrintable(QString::number(double(n), 'g', 2)),
           qPrintable(cell(ours, field)), qPrintable(peerCell),
           qPrintable(peerNote.isEmpty() ? ratio(ours, peer, field) : QStringLiteral("-")));
}

int runParent(const QList<qint64> &sizes, int repetitions, qint64 peerLimit, qint64 rawLimit)
{
    const QString program = QCoreApplication::applicationFilePath();
    QString renderer;
    const Figures bareWindow = runChildren(System::BareWindow, 0, repetitions, program);
    const Figures emptyChart = runChildren(System::EmptyChart, 0, repetitions, program);
    struct Row { qint64 n; Figures ours, raw, line, peer; };
    QList<Row> rows;
    for (qint64 n : sizes) {
        Row row{n, {}, {}, {}, {}};
        row.ours = runChildren(System::Vexal, n, repetitions, program);
        if (n <= rawLimit)
            row.raw = runChildren(System::VexalRaw, n, repetitions, program);
        row.line = runChildren(System::VexalLine, n, repetitions, program);
        if (n <= peerLimit)
            row.peer = runChildren(System::QtCharts, n, repetitions, program);
        for (const Figures *f : {&row.ours, &row.raw, &row.line})
            renderer = f->renderer.isEmpty() ? renderer : f->renderer;
        rows.append(row);
    }

    printf("\nMachine: %s; GL renderer: %s; Qt %s; window %d x %d; median of %d repetition(s)\n\n",
           qPrintable(cpuName()), qPrintable(renderer), qVersion(), WindowWidth, WindowHeight, repetitions);
    printf("Floors (median step, ms): a bare window whose one rectangle changes colour %s; a ChartArea\n"
           "without plotters whose zoom changes %s. No step of either system can be faster here.\n\n",
           qPrintable(cell(bareWindow, &Figures::zoomMedian)), qPrintable(cell(emptyChart, &Figures::zoomMedian)));
    printf("| %-26s | %9s | %12s | %12s | %8s |\n", "scenario", "N", "Vexal", "Qt Charts", "ratio");
    printf("|%s|%s|%s|%s|%s|\n", "----------------------------", "-----------", "--------------",
           "--------------", "----------");
    const QString tooLong = QStringLiteral("not run");
    for (const Row &r : rows) {
        const QString peerNote = r.n <= peerLimit ? QString() : tooLong;
        printRow("first frame (ms)", r.n, r.ours, r.peer, &Figures::first, peerNote);
        printRow("zoom/pan median (ms)", r.n, r.ours, r.peer, &Figures::zoomMedian, peerNote);
        printRow("zoom/pan max (ms)", r.n, r.ours, r.peer, &Figures::zoomMax, peerNote);
        printRow("live update median (ms)", r.n, r.ours, r.peer, &Figures::live, peerNote);
        printRow("memory (bytes/sample)", r.n, r.ours, r.peer, &Figures::memory, peerNote);
        if (r.n <= rawLimit) {
            printRow("raw first frame (ms)", r.n, r.raw, r.peer, &Figures::first, peerNote);
            printRow("raw zoom/pan median (ms)", r.n, r.raw, r.peer, &Figures::zoomMedian, peerNote);
            printRow("raw zoom/pan max (ms)", r.n, r.raw, r.peer, &Figures::zoomMax, peerNote);
            printRow("raw memory (bytes/sample)", r.n, r.raw, r.peer, &Figures::memory, peerNote);
        }
        printRow("line first frame (ms)", r.n, r.line, r.peer, &Figures::first, peerNote);
        printRow("line zoom/pan median (ms)", r.n, r.line, r.peer, &Figures::zoomMedian, peerNote);
        printRow("line zoom/pan max (ms)", r.n, r.line, r.peer, &Figures::zoomMax, peerNote);
        printRow("line live update (ms)", r.n, r.line, r.peer, &Figures::live, peerNote);
        printRow("line memory (bytes/sample)", r.n, r.line, r.peer, &Figures::memory, peerNote);
    }
    printf("\n\"not run\": Qt Charts cannot hold this many points in reasonable time.\n"
           "raw: the values go straight into the BarPlotter, without the decimator.\n"
           "line: the values go straight into a LinePlotter; Qt Charts draws a LineSeries in every row.\n");
    const bool complete = bareWindow.ran && emptyChart.ran && std::all_of(rows.cbegin(), rows.cend(), [&](const Row &r) {
        return ranIfSelected(System::Vexal, r.ours) && (r.n > rawLimit || ranIfSelected(System::VexalRaw, r.raw))
            && ranIfSelected(System::VexalLine, r.line) && (r.n > peerLimit || ranIfSelected(System::QtCharts, r.peer));
    });
    if (!complete)
        fprintf(stderr, "Some measurements did not report (\"-\" in the table).\n");
    return complete ? 0 : 1;
}

// The deep zoom table: each step of deepZoomScript for the decimated chart,
// the raw BarPlotter, the LinePlotter and Qt Charts (up to peerLimit), with
// the first frame and the peak memory.
int runDeepParent(const QList<qint64> &sizes, int repetitions, qint64 peerLimit, qint64 rawLimit)
{
    const QString program = QCoreApplication::applicationFilePath();
    printf("\n| %-26s | %9s | %12s | %12s | %12s | %12s |\n", "deep zoom scenario", "N", "Vexal", "Vexal raw",
           "Vexal line", "Qt Charts");
    printf("|%s|%s|%s|%s|%s|%s|\n", "----------------------------", "-----------", "--------------",
           "--------------", "--------------", "--------------");
    bool complete = true;
    for (qint64 n : sizes) {
        const Figures ours = runChildren(System::Vexal, n, repetitions, program, {QStringLiteral("--deep")});
        const Figures raw = n <= rawLimit ? runChildren(System::VexalRaw, n, repetitions, program, {QStringLiteral("--deep")}) : Figures{};
        const Figures line = runChildren(System::VexalLine, n, repetitions, program, {QStringLiteral("--deep")});
        const Figures peer = n <= peerLimit ? runChildren(System::QtCharts, n, repetitions, program, {QStringLiteral("--deep")}) : Figures{};
        const QString notRun = QStringLiteral("not run");
        const auto row = [&](const char *label, const QList<double> Figures::*field) {
            printf("| %-26s | %9s | %12s | %12s | %12s | %12s |\n", label,
                   qPrintable(QString::number(double(n), 'g', 2)), qPrintable(cell(ours, field)),
                   qPrintable(n <= rawLimit ? cell(raw, field) : notRun), qPrintable(cell(line, field)),
                   qPrintable(n <= peerLimit ? cell(peer, field) : notRun));
        };
        row("first frame (ms)", &Figures::first);
        const QList<DeepStep> script = deepZoomScript(double(n));
        for (qsizetype i = 0; i < script.size(); ++i) {
            printf("| %-26s | %9s | %12s | %12s | %12s | %12s |\n", script[i].label,
                   qPrintable(QString::number(double(n), 'g', 2)), qPrintable(deepCell(ours, i)),
                   qPrintable(n <= rawLimit ? deepCell(raw, i) : notRun), qPrintable(deepCell(line, i)),
                   qPrintable(n <= peerLimit ? deepCell(peer, i) : notRun));
        }
        row("peak RSS (MiB)", &Figures::peakMiB);
        row("memory (bytes/sample)", &Figures::memory);
        complete = complete && ranIfSelected(System::Vexal, ours) && (n > rawLimit || ranIfSelected(System::VexalRaw, raw))
                   && ranIfSelected(System::VexalLine, line) && (n > peerLimit || ranIfSelected(System::QtCharts, peer));
    }
    printf("\nraw: the values go straight into the BarPlotter, without the decimator; line: the values go\n"
           "straight into a LinePlotter; \"not run\": too many points for this system in reasonable time and memory.\n");
    return complete ? 0 : 1;
}

// One streaming run of every system: its name in the table, the values
// given in all, and how they are given.
struct StreamCase
{
    QString name;         // first column of its rows
    qint64 n = 0;         // values given in all, the prefill included
    StreamPlan plan;      // capacity, prefill and time limit
    bool peer = true;     // Qt Charts runs it too
};

QStringList streamOptions(const StreamPlan &plan)
{
    return {QStringLiteral("--stream"), QStringLiteral("--capacity"), QString::number(plan.capacity),
            QStringLiteral("--prefill"), QString::number(plan.prefill), QStringLiteral("--limit-ms"),
            QString::number(plan.limitMs)};
}

// The streaming table: for each case, the time of an append, the frame rate
// against an empty chart's over as long a run, and the memory.
int runStreamParent(const QList<StreamCase> &cases, int repetitions)
{
    const QString program = QCoreApplication::applicationFilePath();
    printf("\n| %-34s | %-20s | %12s | %12s | %12s |\n", "streaming: 1 000 values every 20 ms", "run", "Vexal",
           "Vexal line", "Qt Charts");
    printf("|%s|%s|%s|%s|%s|\n", "------------------------------------", "----------------------",
           "--------------", "--------------", "--------------");
    bool complete = true;
    for (const StreamCase &run : cases) {
        const QStringList options = streamOptions(run.plan);
        const Figures empty = runChildren(System::EmptyChart, run.n, repetitions, program, options);
        const Figures ours = runChildren(System::Vexal, run.n, repetitions, program, options);
        const Figures line = runChildren(System::VexalLine, run.n, repetitions, program, options);
        const Figures peer = run.peer ? runChildren(System::QtCharts, run.n, repetitions, program, options) : Figures{};
        const QString notRun = run.peer ? QString() : QStringLiteral("not run");
        const auto row = [&](const char *label, const QList<double> Figures::*field) {
            printf("| %-34s | %-20s | %12s | %12s | %12s |\n", label, qPrintable(run.name),
                   qPrintable(cell(ours, field)), qPrintable(cell(line, field)),
                   qPrintable(notRun.isEmpty() ? cell(peer, field) : notRun));
        };
        row("values given at the end", &Figures::held);
        row("append median (ms)", &Figures::appendMedian);
        row("append 99th percentile (ms)", &Figures::appendP99);
        row("append max (ms)", &Figures::appendMax);
        row("frames per second", &Figures::fps);
        printf("| %-34s | %-20s | %12s | %12s | %12s |\n", "  empty chart, same run (fps)", qPrintable(run.name),
               qPrintable(cell(empty, &Figures::fps)), "", "");
        row("RSS 5 s into the stream (MiB)", &Figures::startMiB);
        row("RSS when streaming ends (MiB)", &Figures::endMiB);
        row("peak RSS (MiB)", &Figures::peakMiB);
        complete = complete && ranIfSelected(System::Vexal, ours) && ranIfSelected(System::VexalLine, line)
                   && (!run.peer || ranIfSelected(System::QtCharts, peer)) && empty.ran;
    }
    printf("\nVexal: a DecimatorU64 into a BarPlotter; line: a LinePlotter (behind a Filter1D when it has a\n"
           "capacity); both views follow the data. Qt Charts: QXYSeries::append on an OpenGL LineSeries (and\n"
           "removePoints beyond a capacity), the x axis set to the points held. A run stops when the values\n"
           "given reach N or at its time limit (\"values given\" then tells how far it got); \"prefilled\"\n"
           "runs hand over all but their last values as one list first; a \"window\" keeps only the newest.\n");
    return complete ? 0 : 1;
}

// The standard streaming runs: from empty up to each length.
QList<StreamCase> growingRuns(const QList<qint64> &sizes)
{
    QList<StreamCase> cases;
    for (qint64 n : sizes)
        cases.append({QStringLiteral("up to %1").arg(double(n), 0, 'g', 2), n, StreamPlan{}, true});
    return cases;
}

// The long runs: the last 30 s before 1e8 values, and a full window of 1e7
// streaming for a minute (with --short: of 1e5, for 7 s).
QList<StreamCase> windowRuns(bool brief)
{
    if (brief)
        return {{QStringLiteral("window 1e+05"), 450000, StreamPlan{100000, 100000, 20000}, true}}; // 7 s: past the 5 s memory figure
    const qint64 lastValues = 30 * 1000 / StreamIntervalMs * StreamChunk;
    return {{QStringLiteral("prefilled to 1e+08"), 100000000, StreamPlan{0, 100000000 - lastValues, 60000}, false},
            {QStringLiteral("window 1e+07"), 13000000, StreamPlan{10000000, 10000000, 90000}, true}};
}

} // namespace

int main(int argc, char **argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGL);
    QApplication app(argc, argv); // Qt Charts draws through widgets' graphics scene
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Vexal and Qt Charts, side by side."));
    parser.addHelpOption();
    const QCommandLineOption shortMode(QStringLiteral("short"), QStringLiteral("N = 1e5 only, one repetition."));
    const QCommandLineOption reps(QStringLiteral("repetitions"), QStringLiteral("Repetitions per figure."),
                                  QStringLiteral("count"), QStringLiteral("3"));
    const QCommandLineOption child(QStringLiteral("child"), QStringLiteral("Internal: run one measurement."),
                                   QStringLiteral("system"));
    const QCommandLineOption seed(QStringLiteral("seed"), QStringLiteral("Random seed."), QStringLiteral("seed"),
                                  QStringLiteral("42"));
    const QCommandLineOption deep(QStringLiteral("deep"),
                                  QStringLiteral("Only the deep zoom script, at N = 1e7 and 1e8 (1e5 with --short)."));
    const QCommandLineOption systems(QStringLiteral("systems"),
                                     QStringLiteral("Comma-separated systems to measure: vexal, vexal-raw, vexal-line, "
                                                    "qtcharts (all by default)."),
                                     QStringLiteral("list"));
    const QCommandLineOption stream(QStringLiteral("stream"),
                                    QStringLiteral("Only the streaming rows, up to 1e6 and 1e7 values (1e5 with --short)."));
    const QCommandLineOption streamWindow(
        QStringLiteral("stream-window"),
        QStringLiteral("Only the long streaming rows: the last 30 s up to 1e8 values, and a window of 1e7 values "
                       "(1e5 with --short)."));
    const QCommandLineOption capacity(QStringLiteral("capacity"), QStringLiteral("Internal: values a stream keeps."),
                                      QStringLiteral("count"), QStringLiteral("0"));
    const QCommandLineOption prefill(QStringLiteral("prefill"), QStringLiteral("Internal: values before a stream."),
                                     QStringLiteral("count"), QStringLiteral("0"));
    const QCommandLineOption limitMs(QStringLiteral("limit-ms"), QStringLiteral("Internal: a stream's longest run."),
                                     QStringLiteral("ms"), QStringLiteral("300000"));
    parser.addOptions({shortMode, reps, child, seed, deep, systems, stream, streamWindow, capacity, prefill, limitMs});
    parser.process(app);
    const QStringList wanted = parser.value(systems).split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (System s : {System::Vexal, System::VexalRaw, System::VexalLine, System::QtCharts, System::BareWindow,
                     System::EmptyChart}) {
        const bool floor = s == System::BareWindow || s == System::EmptyChart;
        if (wanted.isEmpty() || floor || wanted.contains(QLatin1String(systemName(s))))
            selectedSystems.append(s);
    }

    if (parser.isSet(child)) {
        const QString name = parser.value(child);
        const StreamPlan plan{parser.value(capacity).toLongLong(), parser.value(prefill).toLongLong(),
                              parser.value(limitMs).toLongLong()};
        if (parser.isSet(stream) && name == QLatin1String(systemName(System::EmptyChart)))
            return runStreamChild(System::EmptyChart, parser.positionalArguments().value(0).toLongLong(),
                                  parser.value(seed).toULongLong(), plan);
        for (System floor : {System::BareWindow, System::EmptyChart}) {
            if (name == QLatin1String(systemName(floor)))
                return runFloorChild(floor);
        }
        const System system = name == QLatin1String("qtcharts")   ? System::QtCharts
                            : name == QLatin1String("vexal-raw")  ? System::VexalRaw
                            : name == QLatin1String("vexal-line") ? System::VexalLine
                                                                  : System::Vexal;
        const qint64 n = parser.positionalArguments().value(0).toLongLong();
        const quint64 seedValue = parser.value(seed).toULongLong();
        if (parser.isSet(stream))
            return runStreamChild(system, n, seedValue, plan);
        return parser.isSet(deep) ? runDeepChild(system, n, seedValue) : runChild(system, n, seedValue);
    }
    // One repetition: a run at 1e7 streams for over three minutes per system.
    if (parser.isSet(stream))
        return runStreamParent(growingRuns(parser.isSet(shortMode) ? QList<qint64>{100000} : QList<qint64>{1000000, 10000000}), 1);
    if (parser.isSet(streamWindow))
        return runStreamParent(windowRuns(parser.isSet(shortMode)), 1);
    if (parser.isSet(deep)) {
        if (parser.isSet(shortMode))
            return runDeepParent({100000}, 1, 100000, 100000);
        return runDeepParent({10000000, 100000000}, std::max(1, parser.value(reps).toInt()), 10000000, 100000000);
    }
    if (parser.isSet(shortMode))
        return runParent({100000}, 1, 100000, 100000);
    const int repetitions = std::max(1, parser.value(reps).toInt());
    return runParent({100000, 1000000, 10000000, 100000000}, repetitions, 10000000, 10000000);
}
