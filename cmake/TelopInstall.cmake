# SPDX-License-Identifier: BSD-3-Clause
# What an installed Telop consists of. Every path in it is relative, so that the tree may move.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Telop)
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
set(TELOP_INSTALLED_BUNDLE ${CMAKE_INSTALL_LIBDIR}/telop/TextOverlay.bundle)

# The header and the bundle are all that a host needs. The bundle is put together whole while
# building, with the libraries that it needs beside its modules.
install(TARGETS epi EXPORT TelopEpi)
install(FILES include/epi/epi.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/epi)
install(DIRECTORY ${TELOP_BUNDLE_DIR} DESTINATION ${CMAKE_INSTALL_LIBDIR}/telop
    USE_SOURCE_PERMISSIONS)

# The reference host, for programs in C++.
set_target_properties(telop-platform PROPERTIES EXPORT_NAME platform)
set_target_properties(telop-host PROPERTIES EXPORT_NAME host)
set_target_properties(telop-jobs PROPERTIES EXPORT_NAME jobs)
install(TARGETS telop-platform telop-host telop-jobs EXPORT TelopHost)
install(FILES
        src/platform/Commands.h
        src/platform/CoreFoundation.h
        src/platform/Drawing.h
        src/platform/Events.h
        src/platform/Fonts.h
        src/platform/Lifetime.h
        src/platform/Status.h
        src/platform/TextContext.h
        src/platform/TextEncoding.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/telop/platform)
if(TELOP_UI)
    set_target_properties(telop-platform-ui PROPERTIES EXPORT_NAME platform-ui)
    install(TARGETS telop-platform-ui EXPORT TelopHost)
    install(FILES
            src/platform/ui/Controls.h
            src/platform/ui/Cursors.h
            src/platform/ui/DataBrowser.h
            src/platform/ui/Dialogs.h
            src/platform/ui/Menus.h
            src/platform/ui/UIObject.h
            src/platform/ui/Windows.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/telop/platform/ui)
endif()
install(DIRECTORY src/host DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/telop
    FILES_MATCHING PATTERN "*.h")

# The programs.
file(RELATIVE_PATH bindir_to_libdir ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set_target_properties(telop PROPERTIES INSTALL_RPATH "$ORIGIN/${bindir_to_libdir}")
install(TARGETS telop)

# How other projects find them.
foreach(part Epi Host)
    install(EXPORT Telop${part} FILE Telop${part}.cmake NAMESPACE Telop:: DESTINATION ${package_dir})
endforeach()
configure_package_config_file(cmake/TelopConfig.cmake.in ${CMAKE_BINARY_DIR}/TelopConfig.cmake
    INSTALL_DESTINATION ${package_dir}
    PATH_VARS TELOP_INSTALLED_BUNDLE)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/TelopConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/TelopConfig.cmake ${CMAKE_BINARY_DIR}/TelopConfigVersion.cmake
    DESTINATION ${package_dir})

file(RELATIVE_PATH pkgconfig_to_prefix
    ${CMAKE_INSTALL_PREFIX}/${pkgconfig_dir} ${CMAKE_INSTALL_PREFIX})
foreach(package telop telop-host)
    configure_file(cmake/${package}.pc.in ${CMAKE_BINARY_DIR}/${package}.pc @ONLY)
    install(FILES ${CMAKE_BINARY_DIR}/${package}.pc DESTINATION ${pkgconfig_dir})
endforeach()
