// SPDX-License-Identifier: BSD-3-Clause
// Opens one window with every control of the platform, made from a form, and logs the commands that
// arrive. The window itself is written against the toolkit alone; this file is its host, which has an
// application of Qt's.
#include <exception>
#include <iostream>

#include <CLI/CLI.hpp>
#include <QApplication>
#include <QPalette>
#include <QStyleFactory>

#include "controls/ControlsDialog.h"

namespace {

// Qt's Fusion style makes the shades between from these.
QPalette DarkPalette() {
    QPalette palette(QColor(50, 50, 54), QColor(42, 42, 46));
    palette.setColor(QPalette::Base, QColor(28, 28, 30));
    palette.setColor(QPalette::Highlight, QColor(52, 110, 190));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

} // namespace

int main(int argc, char** argv) try {
    CLI::App options {
        "A window with every control. The commands that arrive are written into it, and "
        "to the standard output."
    };
    bool dark = false;
    options.add_flag("--dark", dark, "Dark colours, whatever the desktop has");
    CLI11_PARSE(options, argc, argv);

    QApplication application(argc, argv);
    if (dark) {
        QApplication::setStyle(QStyleFactory::create("Fusion"));
        QApplication::setPalette(DarkPalette());
    }
    ControlsDialog dialog;
    dialog.DoModal(nullptr);
    if (!dialog.WasMade()) {
        std::cerr << "controls: the window could not be made from its form\n";
        return 1;
    }
    return 0;
} catch (const std::exception& error) {
    std::cerr << "controls: " << error.what() << '\n';
    return 1;
}
