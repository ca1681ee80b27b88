// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/CommandError.h"

namespace telop {

const char* const kExitCodeHelp =
    "Exit codes:\n"
    "  0    all is done\n"
    "  1    some frames failed, each is named; the others are finished\n"
    "  2    the command line cannot be understood\n"
    "  3    settings, plug-in or input cannot be used\n"
    "  4    --strict-fonts: a font or a character is not there\n"
    "  5    an output exists already or cannot be written\n"
    "  130  interrupted (143: terminated); only whole frames are left\n";

} // namespace telop
