// The main window: its widgets from the layout, and showing what the program changed.
#pragma once

#include "platform/layout.h"

#include <string>

class QWidget;
struct Control;

// Builds the window; it is not shown yet.
QWidget *BuildMainWindow(const Place &layout, std::string (*title)(), bool (*mayClose)());

// The main window, or null before there is one: the parent of dialogues.
QWidget *MainWindow();

// The widget of a control; null for one that stands nowhere.
QWidget *WidgetOf(const Control &control);

// A widget that shows a control outside the main window's layout, in a form; and the end of all in it.
void AddView(Control &control, QWidget *parent);
void DropView(const Control &control);

// Shows all changes that the program made to its controls since the last time.
void ShowChanges();

// Waits until the desktop has placed a window that was just shown: dialogues stand in the middle of it.
void WaitForPlace();

// The window closes without asking from now on.
void CloseForGood();
