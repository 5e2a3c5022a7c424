// What the views of all controls that can have the focus do alike: keys and the focus are reported first.
#pragma once

#include "platform/qt/views.h"

#include <QEvent>
#include <QFocusEvent>
#include <QKeyEvent>

// The key code of controls.h; one that means nothing to the program for every other key.
Integer KeyCodeOf(const QKeyEvent &event);

// Reports a key. False where the widget must not act on it.
bool ReportKey(Control &control, const QKeyEvent &event);

// Reports a character that was composed from several keys, or by an input method. False where it is discarded.
bool ReportComposed(Control &control, const QString &character);

template <class Widget> class Focusable : public Widget {
public:
    Focusable(Control &control, QWidget *parent) : Widget(parent), of(control) {}

protected:
    bool event(QEvent *event) override {
        // No shortcut of the toolkit's may come before the program's own table.
        if (event->type() == QEvent::ShortcutOverride) event->accept();
        return Widget::event(event);
    }

    void focusInEvent(QFocusEvent *event) override {
        Widget::focusInEvent(event);
        if (IsShowingChanges() || event->reason() == Qt::ActiveWindowFocusReason ||
            event->reason() == Qt::PopupFocusReason)
            return;
        Report([this] { UserEnters(of); });
    }

    Control &of;
};
