#include "plugin/vexaltypes.h"

#include "chart/chartarea.h"
#include "chart/ichartarea.h"
#include "filters/decimatoru64.h"
#include "filters/filter1d.h"
#include "filters/fixeddecimator2d.h"
#include "filters/fixeddecimatoru64.h"
#include "filters/minimalwidth2d.h"
#include "filters/movingaverageu64.h"
#include "plotters/areaplotter.h"
#include "plotters/bardecorator.h"
#include "plotters/barplotter.h"
#include "plotters/barplotterdx.h"
#include "plotters/iplotter.h"
#include "plotters/sareagradientprogram.h"
#include "plotters/sareaplotterprogram.h"
#include "plotters/shresbarprogram.h"
#include "sources/randomu64data.h"
#include "sources/scsvreader.h"

#include <QtQml/qqml.h>

#include <new>

namespace {

constexpr const char *ModuleName = "VexalPlugin";

template <typename Definition>
void registerDefinition()
{
    // Definitions live until the process ends; the registry keeps the pointer.
    auto *definition = new (std::nothrow) Definition;
    if (!definition) {
        qCritical("Cannot register program shader");
        return;
    }
    IPlotter::registerProgramDefinition(definition);
}

} // namespace

void Vexal::registerTypes()
{
    qmlRegisterType<ChartArea>(ModuleName, 1, 0, "ChartArea");
    qmlRegisterType<IChartArea>(ModuleName, 1, 0, "IChartArea");
    qmlRegisterType<BarPlotter>(ModuleName, 1, 0, "BarPlotter");
    qmlRegisterType<BarPlotterDx>(ModuleName, 1, 0, "BarPlotterDx");
    qmlRegisterType<AreaPlotter>(ModuleName, 1, 0, "AreaPlotter");
    qmlRegisterType<BarDecorator>(ModuleName, 1, 0, "BarDecorator");
    // Filter1D is registered under both of its QML names.
    qmlRegisterType<Filter1D>(ModuleName, 1, 0, "IFIlterU64");
    qmlRegisterType<DecimatorU64>(ModuleName, 1, 0, "DecimatorU64");
    qmlRegisterType<RandomU64Data>(ModuleName, 1, 0, "RandomU64Data");
    qmlRegisterType<MovingAverageU64>(ModuleName, 1, 0, "MovingAverageU64");
    qmlRegisterType<FixedDecimatorU64>(ModuleName, 1, 0, "FixedDecimatorU64");
    qmlRegisterType<Filter1D>(ModuleName, 1, 0, "Filter1D");
    qmlRegisterType<FixedDecimator2D>(ModuleName, 1, 0, "FixedDecimator2D");
    qmlRegisterType<MinimalWidth2D>(ModuleName, 1, 0, "MinimalWidth2D");
    qmlRegisterType<SCSVReader>(ModuleName, 1, 0, "SCSVReader");

    registerDefinition<SAreaPlotterProgram>();
    registerDefinition<SHResBarProgram>();
    registerDefinition<SAreaGradientProgram>();
}
