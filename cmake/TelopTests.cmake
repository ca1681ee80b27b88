# SPDX-License-Identifier: BSD-3-Clause
# GoogleTest from the sources that Debian ships, so that it is built for whatever machine the tree is
# built for, with the same sanitizers.

include(GoogleTest)

function(telop_add_googletest)
    if(TARGET gmock_main)
        return()
    endif()
    set(BUILD_GMOCK ON)
    set(INSTALL_GTEST OFF)
    add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
    foreach(library gtest gtest_main gmock gmock_main)
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
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} gmock_main)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_precompile_headers(${name} PRIVATE <gmock/gmock.h>)
    # Test code is compiled more often than it runs. Seen through a precompiled header, the standard
    # library counts as our own code, and optimisers suspect its strings of what they never do.
    target_compile_options(${name} PRIVATE
        -O1 -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread -Wno-restrict)
    cmake_path(GET CMAKE_BINARY_DIR FILENAME build)
    # ThreadSanitizer has something to say only where threads meet.
    if(TELOP_SANITIZE MATCHES thread)
        set(only TEST_FILTER "*Thread*:*Concurren*:*Parallel*")
    endif()
    # One variable at most: the discovery drops what follows in a list.
    if(arg_OFFSCREEN)
        set(environment QT_QPA_PLATFORM=offscreen)
    endif()
    gtest_discover_tests(${name}
        TEST_PREFIX ${build}.
        ${only}
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 60
        PROPERTIES ENVIRONMENT "${environment}" TIMEOUT 300)
endfunction()
