// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Feeds the CPU side of every plotter (no OpenGL) arbitrary data, areas,
// offsets and zooms, takes its height, builds its window arrays and draw ranges and asks
// it what lies under arbitrary points. Checks that indexes stay in range and
// that no draw range reaches past the arrays it draws from.
#include "fuzzapplication.h"
#include "fuzzinput.h"

#include <vexal/chartarea.h>
#include <vexal/areaplotter.h>
#include <vexal/barplotter.h>
#include <vexal/barplotterdx.h>
#include "plotters/plotterframes_p.h"

#include <memory>

namespace {

constexpr int MaxValues = 512;
constexpr int MaxSteps = 64;

// One chart for the whole run, since every chart starts a settling task.
ChartArea &chart()
{
    static ChartArea *instance = [] {
        auto *c = new ChartArea;
        c->setSize(QSizeF(640, 480));
        c->setUpdateIntervalMs(0); // every change recomputes the chart's rectangles
        return c;
    }();
    return *instance;
}

// The fuzzed plotter's rebuild and frame steps, without OpenGL.
class FuzzedPlotter
{
public:
    virtual ~FuzzedPlotter() = default;
    virtual IPlotter1D &plotter() = 0;
    virtual void rebuild() = 0;
    virtual void checkFrame(const QRectF &visible) = 0;
};

class FuzzedBars : public BarPlotter, public FuzzedPlotter
{
public:
    FuzzedBars() { m_glReady = true; } // data setters take the height at once
    IPlotter1D &plotter() override { return *this; }
    void rebuild() override { updateHeight(); }
    // The window's arrays hold every group it spans, and the drawn groups lie
    // inside it.
    void checkFrame(const QRectF &visible) override
    {
        QList<SRenderLayerDefinition> layers;
        _fetch_render_layers(layers, visible);
        const Vexal::BarFrame &frame = barFrame();
        const qsizetype groups = frame.window.size();
        FUZZ_CHECK(groups >= 0);
        FUZZ_CHECK(frame.points.size() == 4 * groups);
        FUZZ_CHECK(frame.indices.size() == 6 * groups);
        FUZZ_CHECK(frame.vertexIds.size() == 4 * groups);
        FUZZ_CHECK(frame.drawn.isEmpty() || (frame.drawn.first >= 0 && frame.drawn.last <= groups));
    }
};

// Area and pair plotters go through the layered pipeline: their layers must
// draw only vertices and indices that exist.
template <typename Layered>
class FuzzedLayers : public Layered, public FuzzedPlotter
{
public:
    FuzzedLayers()
    {
        this->initialized = true; // data setters rebuild the arrays at once
        this->attributeDefinitions = this->declareArributeArray();
    }
    IPlotter1D &plotter() override { return *this; }
    void rebuild() override
    {
        QMutexLocker locker(&this->dataMutex);
        this->__update_vertex();
        this->__update_index();
    }
    void checkFrame(const QRectF &visible) override
    {
        QList<SRenderLayerDefinition> &layers = this->currentFrame().layers;
        this->_fetch_render_layers(layers, visible);
        for (const SRenderLayerDefinition &layer : std::as_const(layers)) {
            if (layer.count <= 0 || layer.mode == 0)
                continue;
            FUZZ_CHECK(layer.first >= 0);
            if (layer.mode & DrawFlags::Elements) {
                const qint64 bytes = this->_fetch_attribute_data(layer.indexAttribute).size;
                FUZZ_CHECK(layer.first + qint64(layer.count) * 4 <= bytes);
                continue;
            }
            for (int attribute : layer.attributes) {
                const SAttributeDefinition &definition = this->attributeDefinitions.at(attribute);
                const qint64 bytes = this->_fetch_attribute_data(attribute).size;
                FUZZ_CHECK((qint64(layer.first) + layer.count) * definition.tupleSize * 4 <= bytes);
            }
        }
    }
};

std::unique_ptr<FuzzedPlotter> makePlotter(int kind)
{
    switch (kind) {
    case 0:
        return std::make_unique<FuzzedBars>();
    case 1:
        return std::make_unique<FuzzedLayers<AreaPlotter>>();
    default:
        return std::make_unique<FuzzedLayers<BarPlotterDx>>();
    }
}

void query(const IPlotter1D &plotter, FuzzInput &in)
{
    const int index = plotter._index_at(in.anyDouble());
    FUZZ_CHECK(index >= -1);
    const SInfoPoint info = plotter.mouse_hovering(in.point());
    FUZZ_CHECK(!info.valid || (info.index >= 0 && info.index < plotter.data().size()));
    (void)plotter.area_at(in.point());
    const QRectF rect = in.rect();
    (void)plotter.__start_index(rect);
    (void)plotter.__end_index(rect);
    FUZZ_CHECK(plotter.max_in(rect) >= 0.0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput in(data, size);
    std::unique_ptr<FuzzedPlotter> fuzzed = makePlotter(in.pick(3));
    IPlotter1D &plotter = fuzzed->plotter();
    plotter.setChartArea(&chart());
    in.runSteps(MaxSteps, {
        [&] { plotter.setData(in.values(MaxValues)); },
        [&] { plotter.setPlotterArea(in.rect()); },
        [&] { plotter.setXOffset(in.anyDouble()); },
        [&] { chart().setZoomRect(in.rect()); },
        [&] { query(plotter, in); },
        [&] {
            fuzzed->rebuild();
            fuzzed->checkFrame(chart().visibleRect());
        },
    });
    return 0;
}
