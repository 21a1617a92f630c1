// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

// The filter types that the fuzz targets feed, made by kind.
#include <vexal/decimatoru64.h>
#include <vexal/filter1d.h>
#include <vexal/fixeddecimator2d.h>
#include <vexal/fixeddecimatoru64.h>
#include <vexal/minimalwidth2d.h>
#include <vexal/movingaverageu64.h>

#include <memory>

enum Kind { Identity, Decimator, MovingAverage, FixedDecimator, FixedDecimatorPairs, MinimalWidth, KindCount };

inline std::unique_ptr<Filter1D> makeFilter(Kind kind)
{
    switch (kind) {
    case Decimator:
        return std::make_unique<DecimatorU64>();
    case MovingAverage:
        return std::make_unique<MovingAverageU64>();
    case FixedDecimator:
        return std::make_unique<FixedDecimatorU64>();
    case FixedDecimatorPairs:
        return std::make_unique<FixedDecimator2D>();
    case MinimalWidth:
        return std::make_unique<MinimalWidth2D>();
    default:
        return std::make_unique<Filter1D>();
    }
}
