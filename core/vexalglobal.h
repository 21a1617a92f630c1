// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/qglobal.h>

// Symbols of the Vexal library are exported while it is built and imported by
// the plugin, the tests, the demo, the benchmarks and C++ users.
#if defined(VEXAL_BUILD_LIBRARY)
#  define VEXAL_EXPORT Q_DECL_EXPORT
#else
#  define VEXAL_EXPORT Q_DECL_IMPORT
#endif
