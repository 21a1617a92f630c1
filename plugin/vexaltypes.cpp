// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/vexaltypes.h>

#include <vexal/chartarea.h>
#include <vexal/ichartarea.h>
#include <vexal/decimatoru64.h>
#include <vexal/filter1d.h>
#include <vexal/fixeddecimator2d.h>
#include <vexal/fixeddecimatoru64.h>
#include <vexal/minimalwidth2d.h>
#include <vexal/movingaverageu64.h>
#include <vexal/areaplotter.h>
#include <vexal/lineplotter.h>
#include <vexal/bardecorator.h>
#include <vexal/barplotter.h>
#include <vexal/barplotterdx.h>
#include <vexal/iplotter.h>
#include <vexal/sareagradientprogram.h>
#include <vexal/sareaplotterprogram.h>
#include <vexal/shresbarprogram.h>
#include <vexal/randomu64data.h>
#include <vexal/scsvreader.h>

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
    qmlRegisterType<LinePlotter>(ModuleName, 1, 0, "LinePlotter");
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
