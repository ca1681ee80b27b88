// SPDX-License-Identifier: BSD-3-Clause
// The one exception of the toolkit: a platform status that went wrong, and where.
#pragma once

#include <cstdint>

class HuxException {
public:
    HuxException();
    HuxException(const char* file, int line, long errorCode);
    HuxException(const HuxException& other);
    HuxException& operator=(const HuxException& other);
    virtual ~HuxException() = default;

    const char* GetFile() const { return m_szFile; }
    int GetLine() const { return m_nLine; }
    long GetErrorCode() const { return m_nErrorCode; }
    operator long() const { return m_nErrorCode; }

private:
    void CopyMembers(const HuxException& other);

    char m_szFile[1024];
    std::int32_t m_nLine;
    std::int32_t m_nErrorCode;
};

// Throws a HuxException. file is a source path of the compiler; what does not fit is cut.
[[noreturn]] void huxThrowError(long errorCode, const char* file, int line);
