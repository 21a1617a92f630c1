// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/sareagradientprogram.h>

QString SAreaGradientProgram::name() const
{
    return QString::fromLatin1(Name);
}

QString SAreaGradientProgram::vertexSource() const
{
    return QStringLiteral("attribute vec2 vertex;\n"
                          "uniform mat4 matrix;\n"
                          "uniform vec4 color_top;\n"
                          "uniform vec4 color_bot;\n"
                          "varying vec4 vColor;\n"
                          "void main()\n"
                          "{\n"
                          "   vec4 pos = matrix * vec4( vertex.xy, 1.0, 1.0);\n"
                          "   float middle = (-pos.y+1.0)/2.0;\n"
                          "   vColor = mix(color_bot, color_top, middle);\n"
                          "   gl_Position = pos;\n"
                          "}\n");
}

QString SAreaGradientProgram::fragmentSource() const
{
    return QStringLiteral("#ifdef GL_ES\n"
                          "precision mediump float;\n"
                          "#endif\n"
                          "varying vec4 vColor;\n"
                          "void main()\n"
                          "{\n"
                          "   gl_FragColor = vColor;\n"
                          "}");
}
