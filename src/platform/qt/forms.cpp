// Windows of their own, whose parts the program places (OpenForm in platform/front.h).
#include "platform/controls.h"
#include "platform/front.h"
#include "platform/qt/text.h"
#include "platform/qt/views.h"
#include "platform/qt/window.h"

#include <QCloseEvent>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPointer>
#include <QScreen>

#include <cmath>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace {

constexpr int TwipsPerInch = 1440;

class FormWindow : public QWidget {
public:
    FormWindow(Control &control, std::initializer_list<Control *> controls) : form(control), parts(controls) {
        setObjectName(QString::fromUtf8(form.Name.data(), static_cast<qsizetype>(form.Name.size())));
        setWindowTitle(AsLabel(form.Caption));
        for (Control *part : parts) {
            AddView(*part, this);
            WidgetOf(*part)->setFocusPolicy(Qt::StrongFocus);
        }
        const QPoint screen = QGuiApplication::primaryScreen()->geometry().topLeft();
        resize(Pixels(*this, form.Width), Pixels(*this, form.Height));
        move(screen + QPoint(Pixels(*this, form.Left), Pixels(*this, form.Top)));
        Place();
    }

    ~FormWindow() override {
        for (const Control *part : parts) DropView(*part);
    }

    FormWindow(const FormWindow &) = delete;
    FormWindow &operator=(const FormWindow &) = delete;

protected:
    // The window manager has framed the window by now: the frame too stands within the place that was asked for.
    void paintEvent(QPaintEvent *event) override {
        QWidget::paintEvent(event);
        const QSize frame = frameGeometry().size() - size();
        if (std::exchange(framed, true) || frame.isNull()) return;
        QMetaObject::invokeMethod(
            this, [this, frame] { move(pos() - QPoint(frame.width(), frame.height())); }, Qt::QueuedConnection);
    }

    void resizeEvent(QResizeEvent *event) override {
        QWidget::resizeEvent(event);
        Report([this] { UserResizes(form, Twips(width()), Twips(height())); });
        Place();
    }

    void closeEvent(QCloseEvent *event) override {
        QWidget::closeEvent(event);
        Report([this] { UserCloses(form); });
        deleteLater();
    }

private:
    long Twips(int pixels) const { return pixels * TwipsPerInch / logicalDpiX(); }

    void Place() {
        for (const Control *part : parts)
            WidgetOf(*part)->setGeometry(Pixels(*this, part->Left), Pixels(*this, part->Top),
                                         Pixels(*this, part->Width), Pixels(*this, part->Height));
    }

    Control &form;
    std::vector<Control *> parts;
    bool framed = false; // painted once
};

// The open forms; a closed one is null.
std::map<const Control *, QPointer<QWidget>> Forms;

} // namespace

ScreenTwips ScreenSize() {
    const QScreen *const screen = QGuiApplication::primaryScreen();
    const QSize size = screen->size();
    const double dpi = screen->logicalDotsPerInch();
    const auto twips = [&](int pixels) { return std::lround(pixels * double{TwipsPerInch} / dpi); };
    return {twips(size.width()), twips(size.height())};
}

void OpenForm(Control &form, std::initializer_list<Control *> parts) {
    auto *window = new FormWindow(form, parts);
    Forms[&form] = window;
    window->show();
    WidgetOf(**parts.begin())->setFocus();
}

void CloseForm(Control &form) {
    const QPointer<QWidget> window = Forms[&form];
    if (window != nullptr) window->close();
}

void RepaintNow(Control &control) {
    constexpr qint64 LeastMilliseconds = 16; // a screen's own frame: it would not show more
    static QElapsedTimer sinceLast;
    if (sinceLast.isValid() && sinceLast.elapsed() < LeastMilliseconds) return;
    ShowChanges();
    if (QWidget *const widget = WidgetOf(control)) widget->repaint();
    KeepWindowAlive();
    sinceLast.start();
}
