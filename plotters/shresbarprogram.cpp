// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/shresbarprogram.h>

#include <vexal/sareaplotterprogram.h>

QString SHResBarProgram::name() const
{
    return QString::fromLatin1(Name);
}

QList<ShaderSource> SHResBarProgram::shaderSources() const
{
    const QString vertex = QStringLiteral(
        "attribute vec3 vertex;\n"
        "uniform float x_msb;\n"
        "uniform float x_lsb;\n"
        "uniform float screen_dx;\n"
        "uniform float screen_dy;\n"
        "void main()\n"
        "{\n"
        "   float x\t\t= ((vertex[0] - x_msb) + (vertex[1] - x_lsb))*screen_dx - 1.0;\n"
        "   float y\t\t= -vertex[2]/screen_dy + 1.0;\n"
        "   gl_Position = vec4( x, y, 1.0, 1.0);\n"
        "}\n");
    return {{QOpenGLShader::Vertex, vertex},
            {QOpenGLShader::Fragment, SAreaPlotterProgram::flatColorFragmentSource()}};
}
