# SPDX-FileCopyrightText: 2026 The Vexal developers
# SPDX-License-Identifier: MIT
# Lints the module's QML and JavaScript files and the demo's QML; any
# warning fails.
# cmake -DQMLLINT=<qmllint> -DQML_DIR=<module import dir> -DDEMO_QML_DIR=<demo module import dir>
#       -DSOURCE_DIR=<source tree> -P qmllint.cmake

# The installed Qt5Compat.GraphicalEffects lacks the type description of its
# private part, and importing it always warns: for the two files that import
# it, import problems are shown without failing. A type they could not resolve
# would still fail as a type warning.
set(effects_users qml/ChartTooltip.qml qml/Legend/ColoredIcon.qml)

file(GLOB files RELATIVE ${SOURCE_DIR}
     ${SOURCE_DIR}/qml/*.qml ${SOURCE_DIR}/qml/*.js ${SOURCE_DIR}/qml/Legend/*.qml)
list(REMOVE_ITEM files ${effects_users})
list(APPEND files examples/vexal-demo/Main.qml)

# The demo's own type is described by Qt's type registrar in the build tree.
set(lint ${QMLLINT} -I ${QML_DIR} -I ${DEMO_QML_DIR})
execute_process(COMMAND ${lint} ${files}
                WORKING_DIRECTORY ${SOURCE_DIR} RESULT_VARIABLE status)
execute_process(COMMAND ${lint} --import info ${effects_users}
                WORKING_DIRECTORY ${SOURCE_DIR} RESULT_VARIABLE effects_status)
if(NOT status EQUAL 0 OR NOT effects_status EQUAL 0)
    message(FATAL_ERROR "qmllint reported warnings")
endif()
