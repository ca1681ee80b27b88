// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxUtility/HuxException.h"

#include <cstring>

HuxException::HuxException() : HuxException("", 0, 0) {}

HuxException::HuxException(const char* file, int line, long errorCode)
    : m_szFile {}, m_nLine(line), m_nErrorCode(static_cast<std::int32_t>(errorCode)) {
    std::strncpy(m_szFile, file ? file : "", sizeof m_szFile - 1);
}

HuxException::HuxException(const HuxException& other) {
    CopyMembers(other);
}

HuxException& HuxException::operator=(const HuxException& other) {
    if (this != &other)
        CopyMembers(other);
    return *this;
}

void HuxException::CopyMembers(const HuxException& other) {
    std::memcpy(m_szFile, other.m_szFile, sizeof m_szFile);
    m_nLine = other.m_nLine;
    m_nErrorCode = other.m_nErrorCode;
}

void huxThrowError(long errorCode, const char* file, int line) {
    throw HuxException(file, line, errorCode);
}
