// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/QQmlExtensionPlugin>

// The plugin object that the QML engine loads for "import VexalPlugin 1.0".
class VexalExtensionPlugin : public QQmlExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.vexal.VexalExtensionPlugin/1.0")

public:
    // Registers under "VexalPlugin" whatever uri the engine passes.
    void registerTypes(const char *uri) override;
};
