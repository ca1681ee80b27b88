# SPDX-License-Identifier: BSD-3-Clause
# 32-bit little-endian. The programs run as they are where the machine's kernel knows 32-bit programs,
# else in qemu's user mode.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER i686-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER i686-linux-gnu-g++)
# The old floating-point unit computes with more digits than a double has, and rounds differently.
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse")
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")

set(CMAKE_FIND_ROOT_PATH /usr/i686-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(loader /usr/i686-linux-gnu/lib/ld-linux.so.2)
execute_process(COMMAND ${loader} --version RESULT_VARIABLE failed OUTPUT_QUIET ERROR_QUIET)
if(failed)
    set(CMAKE_CROSSCOMPILING_EMULATOR qemu-i386 -L /usr/i686-linux-gnu)
else()
    set(CMAKE_CROSSCOMPILING_EMULATOR ${loader} --library-path /usr/i686-linux-gnu/lib)
endif()
