// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include "plugin/vexalextensionplugin.h"

#include <vexal/vexaltypes.h>

void VexalExtensionPlugin::registerTypes(const char *)
{
    Vexal::registerTypes();
}
