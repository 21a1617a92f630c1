// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/sprogramshaderdefinition.h>

// "area": 2-component vertices in data coordinates, mapped by a matrix, drawn in
// one flat colour.
class VEXAL_EXPORT SAreaPlotterProgram : public SProgramShaderDefinition
{
public:
    static constexpr const char *Name = "area"; // the name plotters draw with
    QString name() const override;
    QList<ShaderSource> shaderSources() const override;
    virtual QString vertexSource() const;
    virtual QString fragmentSource() const;

    // The flat-colour fragment shader shared with "hresbar".
    static QString flatColorFragmentSource();
};
