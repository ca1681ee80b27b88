# SPDX-License-Identifier: BSD-3-Clause
# The JSON reader is a folder of headers. Cross compilers look for headers in their own system only,
# and shall not look into this machine's, so they get a folder with just these.

find_path(TELOP_JSON_HEADERS nlohmann/json.hpp REQUIRED NO_CMAKE_FIND_ROOT_PATH)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/headers)
file(CREATE_LINK ${TELOP_JSON_HEADERS}/nlohmann ${CMAKE_BINARY_DIR}/headers/nlohmann SYMBOLIC)

add_library(telop-json INTERFACE)
target_include_directories(telop-json SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/headers)
