// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/vexalglobal.h>

#include <QtCore/QList>
#include <QtCore/QRectF>
#include <QtCore/QString>

class QMutex;
class IPlotter;

// Dirty bits shared by all plotters: which CPU-side arrays were rebuilt.
namespace DirtyBits {
constexpr quint32 Vertex = 0x1000;  // vertex data rebuilt
constexpr quint32 Index = 0x4000;   // index data rebuilt
}

// Draw-call flags carried in SRenderLayerDefinition::mode beside the GL primitive.
namespace DrawFlags {
constexpr quint32 Arrays = 0x1000;    // glDrawArrays
constexpr quint32 Elements = 0x2000;  // glDrawElements
}

// One vertex attribute (or the index array) of a plotter.
struct VEXAL_EXPORT SAttributeDefinition
{
    QString name;             // attribute name in the shader; only a label for an index array
    quint32 dirtyMask = 0;    // dirty bits that make this buffer upload
    quint32 usagePattern = 0; // QOpenGLBuffer::UsagePattern of the buffer
    quint32 bufferType = 0;   // QOpenGLBuffer::Type (vertex or index buffer)
    quint32 glType = 0;       // component type; for an index array the index type of glDrawElements
    qint32 offset = 0;        // byte offset of the attribute in the buffer
    qint32 tupleSize = 0;     // components per vertex
    qint32 stride = 0;        // bytes between vertices, 0 = tightly packed
    QMutex *mutex = nullptr;  // plotter mutex held while the data are fetched and uploaded, or null
};

// Bytes of one attribute, as handed to the upload; not owned.
struct VEXAL_EXPORT SAttributePointer
{
    const void *data = nullptr; // first byte, null for "nothing"
    qint32 size = 0;            // byte count
};

// One draw call of one frame.
struct VEXAL_EXPORT SRenderLayerDefinition
{
    qint32 layer = 0;          // sort key within the plotter's frame (ascending)
    qint32 first = 0;          // first vertex (arrays) or byte offset into the index buffer (elements)
    qint32 count = 0;          // vertices or indices to draw; <= 0 skips the layer
    float lineWidth = -1.0f;   // line width in logical pixels, set before the draw when > 0
    QString program;           // name of the registered shader program
    quint32 mode = 0x2004;     // GL primitive | DrawFlags; 0 skips the layer
    QList<int> attributes;     // indices into the plotter's attribute declarations
    qint32 indexAttribute = -1; // declaration whose buffer is the index buffer, -1 for none
};

// What lies under the mouse, as answered by a plotter.
struct VEXAL_EXPORT SInfoPoint
{
    bool valid = false;          // true when the point lies on an item of the plotter
    qint32 index = -1;           // index of the item under the point, -1 for none
    double x = 0.0;              // free for subclasses (e.g. the hovered x in data units)
    double value = 0.0;          // free for subclasses (e.g. the hovered value)
    QRectF area;                 // rectangle of the hovered item, null when none
    IPlotter *plotter = nullptr; // the plotter that answered
    QString label;               // free for subclasses (e.g. a formatted x)
    QString text;                // free for subclasses (e.g. a formatted value)
};
