# SPDX-License-Identifier: BSD-3-Clause
# What every target of the tree is compiled with.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # It warns of an overlap when a literal is put before a std::string, where there is none.
    add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
endif()
if(TELOP_SANITIZE)
    # Between the sanitizers' checks, GCC loses sight of what the standard library has initialised.
    add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-Wno-maybe-uninitialized>)
    add_compile_options(-fsanitize=${TELOP_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${TELOP_SANITIZE})
endif()

# telop_name_known_leaks(target): for LeakSanitizer, which asks the libraries that a program starts
# with what not to report, and the program alone how much to say of it.
function(telop_name_known_leaks target)
    if(TELOP_SANITIZE MATCHES address)
        target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/src/platform/text/KnownLeaks.cpp)
    endif()
endfunction()
