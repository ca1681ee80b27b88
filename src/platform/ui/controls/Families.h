// SPDX-License-Identifier: BSD-3-Clause
// The families of controls: each makes the control of a widget that is one of its own, and its own
// widgets by the class name in a form. All give null for what is not theirs.
#pragma once

#include <QString>
#include <QWidget>

namespace platform {

class Control;
class Window;

Control* MakeButtonControl(QWidget& widget, Window& owner);     // push, check, radio
Control* MakeColorControl(QWidget& widget, Window& owner);      // ColorButton
Control* MakeRadioGroupControl(QWidget& widget, Window& owner); // RadioGroup
Control* MakeEditControl(QWidget& widget, Window& owner);       // QLineEdit, QPlainTextEdit
Control* MakeLabelControl(QWidget& widget, Window& owner);      // QLabel
Control* MakeStepperControl(QWidget& widget, Window& owner);    // Stepper
Control* MakeUserPaneControl(QWidget& widget, Window& owner);   // UserPane
Control* MakePopupControl(QWidget& widget, Window& owner);      // PopupButton
Control* MakeListControl(QWidget& widget, Window& owner);       // ListView

// "RadioGroup", "Stepper", "ColorButton", "UserPane", "PopupButton", "ListView".
QWidget* MakeCustomWidget(const QString& className, QWidget* parent);
QWidget* NewPopupButton(QWidget* parent); // what MakeCustomWidget gives for "PopupButton"
QWidget* NewListView(QWidget* parent);    // and for "ListView"

} // namespace platform
