// SPDX-License-Identifier: BSD-3-Clause
// The program's icons: drawn as lines in the palette's colour of text, sharp on every screen.
#pragma once

#include <QIcon>

namespace studio {

enum class Glyph {
    kOpen,
    kSave,
    kUndo,
    kRedo,
    kExport,
    kFirst,
    kPrevious,
    kPlay,
    kPause,
    kNext,
    kLast,
    kFit,
    kActual,
    kInformation,
    kWarning,
    kError,
    kClose,
};

QIcon MakeIcon(Glyph glyph);

} // namespace studio
