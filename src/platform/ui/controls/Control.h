// SPDX-License-Identifier: BSD-3-Clause
// The side of controls that has the widgets: their families, and how they are made and ended.
#pragma once

#include <QObject>
#include <QWidget>

#include "platform/ui/Controls.h"

namespace platform {

// A child of its widget, so that it ends with it. The families derive from it, and connect the
// widget's signals to SendHit.
class WidgetControl : public QObject, public Control {
public:
    WidgetControl(QWidget& widget, Window& owner) : QObject(&widget), Control(widget, owner) {}
};

// The control for a widget, of the family by the table in Controls.h. A widget of none, such as a
// frame, has the operations that all have in common. The one that the widget has already, if it has.
Control* MakeControl(QWidget& widget, Window& owner);
// Ends the controls of root and of all widgets in it, innermost first, each with its disposed event
// while it is still whole. The widgets stay.
void EndControls(QWidget& root);

// "RadioGroup", "Stepper", "ColorButton", "UserPane", "PopupButton", "ListView"; null for others.
QWidget* MakeCustomWidget(const QString& className, QWidget* parent);

// Each makes the control of a widget that is of its own family, and gives null for what is not.
Control* MakeButtonControl(QWidget& widget, Window& owner);     // push, check, radio
Control* MakeColorControl(QWidget& widget, Window& owner);      // ColorButton
Control* MakeRadioGroupControl(QWidget& widget, Window& owner); // RadioGroup
Control* MakeEditControl(QWidget& widget, Window& owner);       // QLineEdit, QPlainTextEdit
Control* MakeLabelControl(QWidget& widget, Window& owner);      // QLabel
Control* MakeStepperControl(QWidget& widget, Window& owner);    // Stepper
Control* MakeUserPaneControl(QWidget& widget, Window& owner);   // UserPane
Control* MakePopupControl(QWidget& widget, Window& owner);      // PopupButton
Control* MakeListControl(QWidget& widget, Window& owner);       // ListView

// Puts everything in a hidden window where it will be when it is shown; the window grows to what its
// contents need at least. Layouts do not settle by themselves before, but dialogs ask where their
// controls lie while they set them up. Does nothing for a window that is shown.
void SettleLayouts(QWidget& window);

QWidget* NewColorButton(QWidget* parent); // what MakeCustomWidget gives for "ColorButton"

} // namespace platform
