// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/sprogramshaderdefinition.h>

// "hresbar": bars whose x is split into a most and a least significant float, so
// that x - left keeps its low bits for series far from the origin.
class VEXAL_EXPORT SHResBarProgram : public SProgramShaderDefinition
{
public:
    static constexpr const char *Name = "hresbar"; // the name plotters draw with
    QString name() const override;
    QList<ShaderSource> shaderSources() const override;
};
