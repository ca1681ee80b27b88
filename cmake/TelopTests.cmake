# SPDX-License-Identifier: BSD-3-Clause
# GoogleTest from the sources that Debian ships, so that it is built for whatever machine the tree is
# built for, with the same sanitizers.

include(GoogleTest)

# What a machine has more of must not change what tests see. Scripts that are tests ask for it, too.
if(TELOP_TESTS AND NOT TELOP_CORE_ONLY)
    set(TELOP_TEST_FONTS ${CMAKE_BINARY_DIR}/fonts.conf)
    execute_process(COMMAND ${PROJECT_SOURCE_DIR}/scripts/font-config ${TELOP_TEST_FONTS}
        COMMAND_ERROR_IS_FATAL ANY)
endif()

function(telop_add_googletest)
    if(TARGET gmock)
        return()
    endif()
    set(BUILD_GMOCK ON)
    set(INSTALL_GTEST OFF)
    add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
    foreach(library gtest gmock)
        # Not under test, and built anew for each machine and sanitizer.
        target_compile_options(${library} PRIVATE -w -O0 -g0)
    endforeach()
endfunction()

# telop_add_test(name [OFFSCREEN] SOURCES file... LIBRARIES target...)
# One test program; each of its cases is a test of CTest, named <build>.<suite>.<case>. With
# OFFSCREEN its windows need no screen. A suite or case about several threads says Thread, Concurrent
# or Parallel in its name: a build with ThreadSanitizer runs those.
function(telop_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "OFFSCREEN" "" "SOURCES;LIBRARIES")
    telop_add_googletest()
    add_executable(${name} ${arg_SOURCES} ${PROJECT_SOURCE_DIR}/tests/support/TestMain.cpp)
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} gmock)
    target_compile_definitions(${name} PRIVATE
        $<$<BOOL:${TELOP_TEST_FONTS}>:TELOP_TEST_FONTS="${TELOP_TEST_FONTS}">
        $<$<BOOL:${arg_OFFSCREEN}>:TELOP_TEST_OFFSCREEN>)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    set(headers <gmock/gmock.h>)
    if(arg_OFFSCREEN)
        list(APPEND headers ${TELOP_QT_HEADERS} <QTest>)
    endif()
    telop_precompile(${name} ${headers})
    # Compiled more often than it runs, and twice as long under sanitizers when it is optimised. An
    # assertion behind an if is an if with an else.
    target_compile_options(${name} PRIVATE -O1 -Wno-dangling-else)
    if(TELOP_SANITIZE)
        target_compile_options(${name} PRIVATE -O0)
    endif()
    cmake_path(GET CMAKE_BINARY_DIR FILENAME build)
    # ThreadSanitizer has something to say only where threads meet.
    if(TELOP_SANITIZE MATCHES thread)
        set(only TEST_FILTER "*Thread*:*Concurren*:*Parallel*")
    endif()
    gtest_discover_tests(${name}
        TEST_PREFIX ${build}.
        ${only}
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 60
        PROPERTIES TIMEOUT 300)
endfunction()
