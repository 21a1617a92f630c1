# SPDX-FileCopyrightText: 2026 The Vexal developers
# SPDX-License-Identifier: MIT
# The QML components of the module, relative to the source root. Every .qml
# file becomes a module type of its own name; utils.js is imported by path.
set(VEXAL_QML_FILES
    qml/VexalQML.qml
    qml/LinearXAxis.qml
    qml/LinearYAxis.qml
    qml/NavigatorBar.qml
    qml/ChartTooltip.qml
    qml/utils.js
    qml/Legend/ColoredIcon.qml
    qml/Legend/LegendElement.qml
    qml/Legend/HorizontalLegend.qml
    qml/Legend/VerticalLegend.qml
    qml/Legend/ViewLegend.qml
    qml/Legend/LegendDropArea.qml)

# Writes the qmldir into DIR and copies the components beside it, so that DIR
# is the module as QML imports it.
function(vexal_write_module_dir dir)
    set(qmldir "module VexalPlugin\nplugin vexalplugin\nclassname VexalExtensionPlugin\n")
    string(APPEND qmldir "typeinfo vexal.qmltypes\ndepends QtQuick\n")
    foreach(file IN LISTS VEXAL_QML_FILES)
        string(REGEX REPLACE "^qml/" "" relative ${file})
        configure_file(${CMAKE_SOURCE_DIR}/${file} ${dir}/${relative} COPYONLY)
        get_filename_component(type ${file} NAME_WE)
        if(file MATCHES "\\.qml$")
            string(APPEND qmldir "${type} 1.0 ${relative}\n")
        endif()
    endforeach()
    file(CONFIGURE OUTPUT ${dir}/qmldir CONTENT "${qmldir}")
endfunction()
