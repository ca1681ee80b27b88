// SPDX-License-Identifier: BSD-3-Clause
// How the program looks: its palettes, its icons, and the few ways in which a text differs from others.
#pragma once

#include <QIcon>

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

// A mask from resources/studio/icons/ in the palette's colour of text. name: that of its file, such as
// "save"; where there is none the icon is null.
QIcon MakeIcon(const QString& name);

} // namespace studio
