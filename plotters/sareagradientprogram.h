// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/sareaplotterprogram.h>

// "area_gradient": like "area", coloured by a vertical gradient between
// color_bot (clip y = +1) and color_top (clip y = -1).
class VEXAL_EXPORT SAreaGradientProgram : public SAreaPlotterProgram
{
public:
    static constexpr const char *Name = "area_gradient"; // the name plotters draw with
    QString name() const override;
    QString vertexSource() const override;
    QString fragmentSource() const override;
};
