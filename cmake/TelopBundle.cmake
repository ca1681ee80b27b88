# SPDX-License-Identifier: BSD-3-Clause
# Where the plug-in's bundle is put together, and how a module gets into it.

set(TELOP_BUNDLE_DIR ${CMAKE_BINARY_DIR}/TextOverlay.bundle)
set(TELOP_BUNDLE_MACHINE_DIR ${TELOP_BUNDLE_DIR}/Contents/Linux-${CMAKE_SYSTEM_PROCESSOR})

# telop_add_bundle_module(target NAME file-name-without-so EXPORTS version-script SOURCES file...)
# Exports what the version script names and finds its libraries beside itself.
function(telop_add_bundle_module target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "NAME;EXPORTS" "SOURCES")
    add_library(${target} MODULE ${arg_SOURCES})
    set_target_properties(${target} PROPERTIES
        PREFIX "" OUTPUT_NAME ${arg_NAME}
        LIBRARY_OUTPUT_DIRECTORY ${TELOP_BUNDLE_MACHINE_DIR}
        BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH "$ORIGIN"
        LINK_DEPENDS ${arg_EXPORTS})
    target_link_options(${target} PRIVATE LINKER:--version-script=${arg_EXPORTS})
    add_dependencies(${target} bundle-resources)
endfunction()
