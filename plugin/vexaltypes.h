// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/vexalglobal.h>

namespace Vexal {

// Registers every QML type of the module under "VexalPlugin" 1.0, then the
// built-in shader program definitions.
VEXAL_EXPORT void registerTypes();

} // namespace Vexal
