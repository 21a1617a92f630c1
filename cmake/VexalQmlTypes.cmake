# SPDX-FileCopyrightText: 2026 The Vexal developers
# SPDX-License-Identifier: MIT
# Describes the module's C++ types for Qt's tooling (qmllint, code completion):
# qmlplugindump loads the built plugin and writes vexal.qmltypes beside it, and
# this file, run as a script on the dump, puts it in the terms that qmllint
# reads. A sanitizer build's plugin cannot be loaded by the uninstrumented
# tool, so such builds go without the description.

if(CMAKE_SCRIPT_MODE_FILE)
    # cmake -DVEXAL_QMLTYPES=<file> -P VexalQmlTypes.cmake
    file(READ ${VEXAL_QMLTYPES} types)

    # The dump gives revision 0 to exports of version 1.0; the tooling wants
    # the export's version, encoded as major << 8 | minor.
    string(REGEX MATCHALL "exportMetaObjectRevisions: \\[[0, ]+\\]" revisions "${types}")
    list(REMOVE_DUPLICATES revisions)
    foreach(dumped IN LISTS revisions)
        string(REPLACE "0" "256" versioned "${dumped}")
        string(REPLACE "${dumped}" "${versioned}" types "${types}")
    endforeach()

    # Type names as the tooling knows them: QML's string is QString, lists of
    # objects are lists of their element type, and unsigned integers, which
    # Qt 6.4's tooling has no type for, are ints to QML.
    string(REPLACE "type: \"string\"" "type: \"QString\"" types "${types}")
    string(REGEX REPLACE "type: \"QList<([A-Za-z0-9_]+)\\*>\""
           "type: \"\\1\"; isList: true; isPointer: true" types "${types}")
    string(REGEX REPLACE "type: \"u(int|char)\"" "type: \"int\"" types "${types}")

    file(WRITE ${VEXAL_QMLTYPES} "${types}")
    return()
endif()

find_program(VEXAL_QMLPLUGINDUMP qmlplugindump
    HINTS "${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS}" /usr/lib/qt6/bin)
if(VEXAL_QMLPLUGINDUMP AND NOT VEXAL_SANITIZE)
    set(VEXAL_QMLTYPES ${VEXAL_MODULE_DIR}/vexal.qmltypes)
    add_custom_command(OUTPUT ${VEXAL_QMLTYPES}
        COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen
                ${VEXAL_QMLPLUGINDUMP} -nonrelocatable -output ${VEXAL_QMLTYPES}
                VexalPlugin 1.0 ${VEXAL_QML_DIR}
        COMMAND ${CMAKE_COMMAND} -DVEXAL_QMLTYPES=${VEXAL_QMLTYPES} -P ${CMAKE_CURRENT_LIST_FILE}
        DEPENDS vexalplugin ${CMAKE_CURRENT_LIST_FILE}
        COMMENT "Describing the QML types of VexalPlugin")
    add_custom_target(vexal_qmltypes ALL DEPENDS ${VEXAL_QMLTYPES})
endif()
