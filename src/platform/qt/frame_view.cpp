// Frames (views.h): a line around their parts, with the caption in its upper edge.
#include "platform/qt/text.h"
#include "platform/qt/views.h"

#include <QGroupBox>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace {

constexpr float LineStrength = 0.35F; // of the text's colour
constexpr int Corner = 3;             // pixels, as what follows
constexpr int Gap = 4;                // between the line and the caption
constexpr int OuterMargin = 6;

// The inside keeps its colour, which a desktop's style may tint. A frame that stands in no other fills the window and
// draws its line a little inside, so that the window has one colour up to its edges.
class FrameBox : public QGroupBox {
public:
    FrameBox(bool fillsWindow, QWidget *parent) : QGroupBox(parent), margin(fillsWindow ? OuterMargin : 0) {
        setAutoFillBackground(fillsWindow);
    }

    void ShowCaption(const Control &control) {
        caption = AsLabel(control.Caption).trimmed();
        setTitle(AsMnemonic(control.Caption));
        KeepMargins();
    }

    // The names of many files in a caption must not make the window wider.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QSize minimumSizeHint() const override { return QWidget::minimumSizeHint(); }

protected:
    bool event(QEvent *event) override {
        if (event->type() != QEvent::ToolTip) return QGroupBox::event(event);
        const auto &help = static_cast<const QHelpEvent &>(*event);
        if (help.pos().y() > margin + fontMetrics().height() || Shown() == caption) return QGroupBox::event(event);
        QToolTip::showText(help.globalPos(), caption, this);
        return true;
    }

    void resizeEvent(QResizeEvent *event) override {
        QGroupBox::resizeEvent(event);
        KeepMargins();
    }

    void changeEvent(QEvent *event) override {
        QGroupBox::changeEvent(event);
        KeepMargins();
    }

    void paintEvent(QPaintEvent * /*event*/) override {
        const QFontMetrics metrics = fontMetrics();
        const QString shown = Shown();
        const int top = margin + (shown.isEmpty() ? 0 : metrics.height() / 2);
        const QRect label(CaptionLeft(), margin, metrics.horizontalAdvance(shown), metrics.height());
        QColor line = palette().color(QPalette::WindowText);
        line.setAlphaF(LineStrength);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(line);
        if (!shown.isEmpty()) painter.setClipRegion(QRegion(rect()) - label.adjusted(-Gap, 0, Gap, 0));
        painter.drawRoundedRect(QRectF(rect().adjusted(margin, top, -margin, -margin)).adjusted(.5, .5, -.5, -.5),
                                Corner, Corner);
        painter.setClipping(false);
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(label, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
    }

private:
    int CaptionLeft() const { return margin + fontMetrics().height(); }

    // As much of the caption as there is room for.
    QString Shown() const { return fontMetrics().elidedText(caption, Qt::ElideRight, width() - 2 * CaptionLeft()); }

    // The toolkit sets those of its style whenever size, font or title change.
    void KeepMargins() {
        const int top = margin + (caption.isEmpty() ? 0 : fontMetrics().height());
        setContentsMargins(margin, top, margin, margin);
    }

    int margin;
    QString caption;
};

} // namespace

View MakeFrameView(Control &control, QWidget *parent) {
    auto *frame = new FrameBox(control.Container == nullptr, parent);
    return {frame, [&control, frame](unsigned aspects) {
                if (aspects & TextAspect) frame->ShowCaption(control);
            }};
}
