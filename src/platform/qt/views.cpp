// The widgets of controls (views.h): labels, buttons, and what all kinds have in common. Lists: list_views.cpp; text
// boxes: text_views.cpp; frames: frame_view.cpp; where they stand, and when they are refreshed: window.cpp.
#include "platform/qt/views.h"

#include "platform/qt/focusable.h"
#include "platform/qt/icon.h"
#include "platform/qt/text.h"

#include <QApplication>
#include <QFontDatabase>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>

#include <cmath>

namespace {

constexpr int TwipsPerInch = 1440;
constexpr int BannerPoints = 24;
constexpr int ImagePixels = 128;
constexpr int ListPoints = 10; // of a list, where the user's font is not larger
constexpr int FocusLine = 2;   // pixels of the line around what has the focus

class Button : public Focusable<QPushButton> {
public:
    Button(Control &control, QWidget *parent) : Focusable(control, parent) {
        setAutoDefault(false);
        ShowHint();
        connect(this, &QPushButton::clicked, this, [this] { Report([this] { UserPresses(of); }); });
    }

    void Refresh(unsigned aspects) {
        if (!(aspects & TextAspect)) return;
        setText(AsMnemonic(of.Caption));
        setAccessibleName(QString::fromStdString(AccessibleName(of)));
    }

    // Some styles leave no room between a caption and the button's edge.
    QSize sizeHint() const override {
        const QFontMetrics metrics = fontMetrics();
        const QSize text = metrics.size(Qt::TextShowMnemonic, this->text());
        return QPushButton::sizeHint().expandedTo(text + QSize(metrics.height() * 3 / 2, metrics.height() * 2 / 3));
    }

    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void keyPressEvent(QKeyEvent *event) override {
        if (!ReportKey(of, *event)) return;
        if (KeyCodeOf(*event) == EnterCode)
            click();
        else
            QPushButton::keyPressEvent(event);
    }

private:
    // What it does and its key; to a screen reader, which says the caption itself, the key.
    void ShowHint() {
        const QString key = QString::fromStdString(KeyOf(of));
        const QString hint = QString::fromUtf8(of.Hint.data(), static_cast<qsizetype>(of.Hint.size()));
        setAccessibleDescription(key);
        setToolTip(hint.isEmpty() || key.isEmpty() ? hint + key : hint + " (" + key + ")");
    }
};

class Scroll : public Focusable<QScrollBar> {
public:
    Scroll(Control &control, QWidget *parent) : Focusable(control, parent) {
        setOrientation(Qt::Horizontal);
        setFocusPolicy(Qt::StrongFocus);
        setMinimum(1);
        setPageStep(1);
        setMinimumHeight(fontMetrics().height());
        connect(this, &QScrollBar::valueChanged, this, [this](int value) {
            if (!IsShowingChanges() && value != of.Value) Report([&] { UserScrolls(of, ToInteger(value)); });
        });
    }

    void Refresh(unsigned aspects) {
        if (!(aspects & RangeAspect)) return;
        setMaximum(of.Max);
        setValue(of.Value);
    }

protected:
    void keyPressEvent(QKeyEvent *event) override {
        if (!ReportKey(of, *event)) return;
        // The toolkit's scroll bars, which never have the focus, take these two keys the other way round.
        if (event->key() == Qt::Key_Left)
            triggerAction(SliderSingleStepSub);
        else if (event->key() == Qt::Key_Right)
            triggerAction(SliderSingleStepAdd);
        else
            QScrollBar::keyPressEvent(event);
    }

    // The toolkit's styles show the focus on every kind of widget but on this one.
    void paintEvent(QPaintEvent *event) override {
        QScrollBar::paintEvent(event);
        if (!hasFocus()) return;
        QPainter painter(this);
        painter.setPen(QPen(palette().color(QPalette::Highlight), FocusLine));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
};

View MakeLabel(Control &control, QWidget *parent, int columns) {
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    // A text of more than a few words breaks where the window ends.
    label->setWordWrap(columns > 0 || control.Face == Font::Serif);
    return {label, [&control, label](unsigned aspects) {
                if (!(aspects & TextAspect)) return;
                label->setText(AsLabel(control.Caption));
                if (!control.Title.empty()) label->setAccessibleDescription(label->text());
            }};
}

View MakeImage(QWidget *parent) {
    auto *image = new QLabel(parent);
    image->setPixmap(ProgramPicture(ImagePixels, image->devicePixelRatioF()));
    image->setAlignment(Qt::AlignTop);
    image->setMargin(ImagePixels / 8);
    return {image, [](unsigned) {}};
}

View MakeTimer(Control &control, QWidget *parent) {
    auto *widget = new QWidget(parent);
    widget->hide();
    auto *timer = new QTimer(widget);
    timer->setInterval(control.Interval);
    QObject::connect(timer, &QTimer::timeout, widget, [&control] { Report([&] { UserTicks(control); }); });
    return {widget, [&control, timer](unsigned) { control.Enabled ? timer->start() : timer->stop(); }};
}

View MakeWidget(Control &control, QWidget *parent, int columns, int lines) {
    switch (control.Type) {
    case Kind::Frame: return MakeFrameView(control, parent);
    case Kind::Label: return MakeLabel(control, parent, columns);
    case Kind::Button: return ViewOf(new Button(control, parent));
    case Kind::List: return MakeListView(control, parent);
    case Kind::TextBox: return MakeTextView(control, parent, lines);
    case Kind::ComboBox: return MakeComboView(control, parent);
    case Kind::ScrollBar: return ViewOf(new Scroll(control, parent));
    case Kind::Image: return MakeImage(parent);
    case Kind::Timer:
    case Kind::Form: break;
    }
    return MakeTimer(control, parent);
}

void MakeSelectionsReadable() {
    QPalette palette = QApplication::palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive})
        palette.setColor(group, QPalette::HighlightedText, ReadableOn(palette.color(group, QPalette::Highlight)));
    if (palette != QApplication::palette()) QApplication::setPalette(palette);
}

class PaletteWatch : public QObject {
public:
    PaletteWatch() : QObject(qApp) { qApp->installEventFilter(this); }

protected:
    bool eventFilter(QObject *object, QEvent *event) override {
        if (object == qApp && event->type() == QEvent::ApplicationPaletteChange) MakeSelectionsReadable();
        return false;
    }
};

QFont FixedFont(int points) {
    QFont font("Courier", points);
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
    if (QFontInfo(font).fixedPitch()) return font;
    font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSize(points);
    return font;
}

QFont FontOf(Font face, QFont font) {
    const int users = QFontInfo(font).pointSize();
    switch (face) {
    case Font::Fixed: return FixedFont(std::max(ListPoints, users));
    case Font::Serif: {
        QFont serif("Liberation Serif", users + 1);
        serif.setStyleHint(QFont::Serif);
        return serif;
    }
    case Font::Banner:
        font.setPointSize(BannerPoints);
        font.setBold(true);
        return font;
    case Font::Plain: break;
    }
    return font;
}

void SetLeastSize(QWidget &widget, const Control &control, int columns, int lines) {
    const QFontMetrics metrics(widget.font());
    const int frame = metrics.height() / 2 + 2;
    if (columns > 0) widget.setMinimumWidth(metrics.horizontalAdvance('0') * columns + frame);
    if (lines <= 0) return;
    widget.setMinimumHeight(metrics.lineSpacing() * lines + frame);
    if (control.Type == Kind::TextBox) widget.setFixedHeight(metrics.lineSpacing() * lines + frame + 2);
    // A choice must stay under the pointer for a double-click while the box for another value opens below the list.
    if (control.Type == Kind::List && columns == 0) widget.setFixedHeight(widget.minimumHeight());
}

QString ObjectName(const Control &control) {
    const QString name = QString::fromUtf8(control.Name.data(), static_cast<qsizetype>(control.Name.size()));
    return control.Index < 0 ? name : name + "_" + QString::number(control.Index);
}

} // namespace

View MakeView(Control &control, QWidget *parent, int columns, int lines) {
    View view = MakeWidget(control, parent, columns, lines);
    QWidget &widget = *view.Widget;
    widget.setObjectName(ObjectName(control));
    widget.setFont(FontOf(control.Face, widget.font()));
    SetLeastSize(widget, control, columns, lines);
    if (!control.Title.empty()) widget.setAccessibleName(QString::fromStdString(AccessibleName(control)));
    return view;
}

int Pixels(const QWidget &widget, long twips) { return static_cast<int>(twips * widget.logicalDpiX() / TwipsPerInch); }

QColor ReadableOn(const QColor &background) {
    const auto linear = [](float c) { return c <= 0.03928F ? c / 12.92F : std::pow((c + 0.055F) / 1.055F, 2.4F); };
    const float luminance = 0.2126F * linear(background.redF()) + 0.7152F * linear(background.greenF()) +
                            0.0722F * linear(background.blueF());
    // Where black and white have the same contrast.
    return luminance > 0.179F ? Qt::black : Qt::white;
}

void KeepSelectionsReadable() {
    new PaletteWatch;
    MakeSelectionsReadable();
}
