// SPDX-License-Identifier: BSD-3-Clause
// How the program looks: its palettes, and the few ways in which a text differs from others.
#pragma once

class QWidget;

namespace studio {

enum class Theme { kSystem, kLight, kDark };

// Once at the start, before the first palette is chosen.
void PrepareStyle();
void SetTheme(Theme theme);

// Less than the texts beside it: explanations.
void SetFaint(QWidget& widget);
// What is wrong.
void SetAlarming(QWidget& widget);

} // namespace studio
