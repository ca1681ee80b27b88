// SPDX-License-Identifier: BSD-3-Clause
// Streams of PAM, PPM and PGM frames, from a file in memory.

#include <cstdint>
#include <cstdlib>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

#include "host/frames/Descriptor.h"
#include "host/frames/PamStream.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const host::Descriptor memory(memfd_create("frames", MFD_CLOEXEC));
    if (memory.Get() < 0 || host::WriteAll(memory.Get(), { data, size }) != 0)
        std::abort();
    lseek(memory.Get(), 0, SEEK_SET);
    host::PamReader reader(memory.Get());
    host::Frame frame;
    std::string why;
    host::StreamResult result = host::StreamResult::kFrame;
    while (result == host::StreamResult::kFrame)
        result = reader.Next(frame, why);
    if ((result == host::StreamResult::kFailed) == why.empty())
        std::abort();
    return 0;
}
