# SPDX-FileCopyrightText: 2026 The Vexal developers
# SPDX-License-Identifier: MIT
# cmake --install: the library and its headers for C++ users (find_package(Vexal)),
# and the QML module in Qt's QML import directory below the prefix: Qt's own
# directory with the default prefix, <prefix>/lib/<arch>/qt6/qml with another
# (add that to QML_IMPORT_PATH).
include(CMakePackageConfigHelpers)

set(VEXAL_INSTALL_QMLDIR "${QT6_INSTALL_QML}" CACHE PATH "QML import directory, relative to the prefix")
set(module_destination "${VEXAL_INSTALL_QMLDIR}/VexalPlugin")
# The plugin finds the library relative to itself, wherever the prefix is.
file(RELATIVE_PATH plugin_to_lib "/${module_destination}" "/${CMAKE_INSTALL_LIBDIR}")
set_target_properties(vexalplugin PROPERTIES INSTALL_RPATH "$ORIGIN/${plugin_to_lib}")

install(TARGETS vexal EXPORT VexalTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# Only the public headers, as <vexal/NAME.h>.
get_property(public_headers GLOBAL PROPERTY VEXAL_PUBLIC_HEADERS)
install(FILES ${public_headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vexal)

install(TARGETS vexalplugin LIBRARY DESTINATION ${module_destination})
# The module folder as built: qmldir, type information and the components.
install(DIRECTORY ${VEXAL_MODULE_DIR}/ DESTINATION ${module_destination}
    PATTERN "*.so" EXCLUDE)

install(EXPORT VexalTargets NAMESPACE Vexal:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Vexal)
configure_package_config_file(cmake/VexalConfig.cmake.in
    ${CMAKE_BINARY_DIR}/VexalConfig.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Vexal)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/VexalConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/VexalConfig.cmake ${CMAKE_BINARY_DIR}/VexalConfigVersion.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Vexal)
