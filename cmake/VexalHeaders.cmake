# SPDX-FileCopyrightText: 2026 The Vexal developers
# SPDX-License-Identifier: MIT
# Public headers are included as <vexal/NAME.h>. Each folder names its public
# headers with vexal_public_headers(); the build writes a forwarding header for
# each into build/include/vexal, and the install copies the headers themselves
# (only these: the _p.h internals stay in the source tree).
set(VEXAL_INCLUDE_DIR ${CMAKE_BINARY_DIR}/include)

function(vexal_public_headers)
    foreach(header IN LISTS ARGN)
        set(path ${CMAKE_CURRENT_SOURCE_DIR}/${header})
        get_filename_component(name ${header} NAME)
        file(CONFIGURE OUTPUT ${VEXAL_INCLUDE_DIR}/vexal/${name} CONTENT "#include \"${path}\"\n")
        set_property(GLOBAL APPEND PROPERTY VEXAL_PUBLIC_HEADERS ${path})
    endforeach()
    target_sources(vexal PRIVATE ${ARGN})
endfunction()
