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
# A fault in a reader of foreign bytes shall end the program, not become somebody's way in.
add_compile_options(-fstack-protector-strong)
add_link_options(LINKER:-z,relro,-z,now)
if(NOT TELOP_SANITIZE AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
    add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
endif()
if(TELOP_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Between the sanitizers' checks, GCC loses sight of what the standard library has initialised.
    add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-Wno-maybe-uninitialized>)
endif()
if(TELOP_SANITIZE)
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

# telop_precompile(target header...): what most sources of the target include, compiled once. A source
# still includes what it uses; the linter reads it without this.
function(telop_precompile target)
    target_precompile_headers(${target} PRIVATE
        <algorithm> <functional> <memory> <optional> <span> <string> <utility> <vector> ${ARGN})
    # Seen through a precompiled header, the standard library counts as our own code, and optimisers
    # suspect its strings of what they never do. So nothing that computes with pixels or bytes has one.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${target} PRIVATE
            -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread -Wno-restrict)
    endif()
endfunction()
set(TELOP_QT_HEADERS
    <QAbstractItemView> <QApplication> <QEvent> <QImage> <QLabel> <QLayout> <QLineEdit> <QPainter>
    <QPlainTextEdit> <QPointer> <QPushButton> <QString> <QTimer> <QWidget>)
