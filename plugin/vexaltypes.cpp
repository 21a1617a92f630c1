#include "plugin/vexaltypes.h"

#include "chart/chartarea.h"
#include "chart/ichartarea.h"
#include "plotters/areaplotter.h"
#include "plotters/bardecorator.h"
#include "plotters/barplotter.h"
#include "plotters/barplotterdx.h"
#include "plotters/iplotter.h"
#include "plotters/sareagradientprogram.h"
#include "plotters/sareaplotterprogram.h"
#include "plotters/shresbarprogram.h"

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

    registerDefinition<SAreaPlotterProgram>();
    registerDefinition<SHResBarProgram>();
    registerDefinition<SAreaGradientProgram>();
}
