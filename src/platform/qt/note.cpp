// What the program tells in passing (front.h): a small window that goes by itself.
#include "platform/front.h"
#include "platform/qt/text.h"
#include "platform/qt/window.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QLabel>
#include <QPointer>
#include <QTimer>
#include <QToolTip>

namespace {

constexpr int ShownMilliseconds = 4000;

constexpr const char *ObjectName = "Note";

// The note while it is shown.
QPointer<QLabel> Note;

// A screen reader says a notification by itself, which it does not with a label or a tooltip.
QAccessibleInterface *AsNotification(const QString & /*className*/, QObject *object) {
    auto *const label = qobject_cast<QLabel *>(object);
    if (label == nullptr || label->objectName() != ObjectName) return nullptr;
    return new QAccessibleWidget(label, QAccessible::Notification);
}

QLabel *MakeNote(const QString &text, QWidget *window) {
    auto *note = new QLabel(window, Qt::ToolTip);
    note->setObjectName(ObjectName); // before anybody asks what it is
    note->setTextFormat(Qt::PlainText);
    note->setText(text);
    note->setAccessibleName(text);
    note->setAttribute(Qt::WA_ShowWithoutActivating);
    note->setAttribute(Qt::WA_TransparentForMouseEvents);
    note->setAttribute(Qt::WA_DeleteOnClose);
    note->setPalette(QToolTip::palette());
    note->setFrameShape(QFrame::Box);
    note->setMargin(note->fontMetrics().height() / 2);
    note->adjustSize();
    return note;
}

} // namespace

void ShowNote(std::string_view text) {
    static const bool installed = (QAccessible::installFactory(AsNotification), true);
    QWidget *const window = MainWindow();
    if (!installed || window == nullptr || !window->isVisible()) return;
    delete Note;
    Note = MakeNote(ToOneLine(text), window);
    const QPoint aboveButtons((window->width() - Note->width()) / 2, window->height() - 4 * Note->height());
    Note->move(window->mapToGlobal(aboveButtons));
    Note->show();
    QTimer::singleShot(ShownMilliseconds, Note, [note = Note.data()] { note->close(); });
    // The toolkit tells it of every window but of those of this kind.
    QAccessibleEvent shown(Note, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shown);
}
