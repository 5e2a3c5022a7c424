// Widgets that show controls. A view shows the control's state and reports what the user did; it decides nothing.
#pragma once

#include "platform/controls.h"

#include <QWidget>

#include <functional>

// A widget with the control it shows.
struct View {
    QWidget *Widget = nullptr;
    // Shows those aspects that depend on the kind of widget anew.
    std::function<void(unsigned aspects)> Refresh;
    std::string ShownTag{};
};

// The widget for a control, with its object name, accessible name, font and, from the layout, its least size in
// characters and lines (0: its own).
View MakeView(Control &control, QWidget *parent, int columns, int lines);

// A view of a widget that refreshes itself.
template <class Widget> View ViewOf(Widget *widget) {
    return {widget, [widget](unsigned aspects) { widget->Refresh(aspects); }};
}

// The views of frames, lists, combo boxes and text boxes (lines: as in MakeView).
View MakeFrameView(Control &control, QWidget *parent);
View MakeListView(Control &control, QWidget *parent);
View MakeComboView(Control &control, QWidget *parent);
View MakeTextView(Control &control, QWidget *parent, int lines);

// Runs a report of the user's act and shows what changed by it (window.cpp).
void Report(const std::function<void()> &act);

// Program changes are being shown: what the toolkit does to the focus meanwhile is not the user's act.
bool IsShowingChanges();

// Pixels of a number of twips on the widget's screen.
int Pixels(const QWidget &widget, long twips);

// Text that can be read on a background.
QColor ReadableOn(const QColor &background);

// From now on what is selected, anywhere, is shown in a text colour that can be read on the desktop's colour of
// selections. Needs the application.
void KeepSelectionsReadable();
