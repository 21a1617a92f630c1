// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/sareaplotterprogram.h>

QString SAreaPlotterProgram::name() const
{
    return QString::fromLatin1(Name);
}

QList<ShaderSource> SAreaPlotterProgram::shaderSources() const
{
    return {{QOpenGLShader::Vertex, vertexSource()}, {QOpenGLShader::Fragment, fragmentSource()}};
}

QString SAreaPlotterProgram::vertexSource() const
{
    return QStringLiteral("attribute vec2 vertex;\n"
                          "uniform mat4 matrix;\n"
                          "void main()\n"
                          "{\n"
                          "   gl_Position = matrix * vec4( vertex.xy, 1.0, 1.0);\n"
                          "}\n");
}

QString SAreaPlotterProgram::fragmentSource() const
{
    return flatColorFragmentSource();
}

QString SAreaPlotterProgram::flatColorFragmentSource()
{
    return QStringLiteral("#ifdef GL_ES\n"
                          "precision mediump float;\n"
                          "#endif\n"
                          "uniform vec4 color;\n"
                          "void main()\n"
                          "{\n"
                          "   gl_FragColor = color;\n"
                          "}");
}
