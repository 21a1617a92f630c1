// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/vexalglobal.h>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtOpenGL/QOpenGLShader>

// One stage of a shader program.
struct VEXAL_EXPORT ShaderSource
{
    QOpenGLShader::ShaderType stage = QOpenGLShader::Vertex; // pipeline stage
    QString source;                                           // GLSL text
};

// Describes a shader program that several plotters share: its registry name and
// its sources. Definitions are registered once and live until the process ends,
// so they are never deleted through this base.
class VEXAL_EXPORT SProgramShaderDefinition
{
public:
    virtual QString name() const = 0;
    virtual QList<ShaderSource> shaderSources() const = 0;

protected:
    ~SProgramShaderDefinition() = default;
};
