// The main window (window.h). What each kind of control looks like: views.cpp.
#include "platform/qt/window.h"

#include "platform/front.h"
#include "platform/qt/views.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QStackedLayout>
#include <QVariant>
#include <QWindow>

#include <algorithm>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

// The parts of one place of which the last visible one is shown.
struct Pages {
    QStackedLayout *Stack;
    std::vector<const Control *> Parts;
};

// The views by control; empty before the window is built.
std::unordered_map<const Control *, View> Views;
std::vector<Pages> AllPages;
QWidget *TheWindow = nullptr;

// The main window's title, and as it is shown; empty before the window is built.
std::string (*Title)() = nullptr;
std::string ShownTitle;

// Depth of ShowChanges.
int Showing = 0;

// Depth of Report: reports of the toolkit's that an event of the program's brings about stand inside it.
int Reporting = 0;

// The window closes without asking.
bool MayCloseUnasked = false;

class Window : public QWidget {
public:
    explicit Window(bool (*question)()) : mayClose(question) {}

protected:
    void showEvent(QShowEvent *event) override {
        QWidget::showEvent(event);
        setAttribute(Qt::WA_KeyboardFocusChange); // buttons show the focus before the first Tab, too
    }

    void closeEvent(QCloseEvent *event) override {
        if (MayCloseUnasked) return;
        bool closes = false;
        if (!IsWaitingForAnswer()) Report([&] { RunAsEvent([&] { closes = mayClose(); }); });
        event->setAccepted(closes);
    }

private:
    bool (*mayClose)();
};

// --- Building
// ---------------------------------------------------------------------------------------------------------------

void AddPart(QBoxLayout &box, const Place &place, QWidget *parent);

void AddParts(QBoxLayout &box, const Place &place, QWidget *parent) {
    for (const Place &part : place.Parts) AddPart(box, part, parent);
}

void AddFrameParts(const Place &place, QWidget *frame) {
    auto *box = new QVBoxLayout(frame);
    QMargins margins = box->contentsMargins();
    margins.setTop(margins.top() / 2); // the caption stands off by itself
    box->setContentsMargins(margins);
    AddParts(*box, place, frame);
    // What fills a frame has its room there before it is shown for the first time.
    for (const Place &part : place.Parts) {
        if (part.Of == nullptr || part.Stretch == 0) continue;
        QSizePolicy policy = WidgetOf(*part.Of)->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        WidgetOf(*part.Of)->setSizePolicy(policy);
    }
}

QWidget *MakeControl(const Place &place, QWidget *parent) {
    View view = MakeView(*place.Of, parent, place.Columns, place.Lines);
    QWidget *const widget = view.Widget;
    Views[place.Of] = std::move(view);
    if (!place.Parts.empty()) AddFrameParts(place, widget);
    return widget;
}

// Pixels of a line of text in the largest font of a box's parts.
int LineOf(const QWidget &box) {
    int line = box.fontMetrics().lineSpacing();
    for (const QWidget *part : box.findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
        line = std::max(line, part->fontMetrics().lineSpacing());
    return line;
}

QWidget *MakeBox(const Place &place, QWidget *parent) {
    auto *widget = new QWidget(parent);
    auto *box = new QBoxLayout(place.Form == Shape::Row ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom, widget);
    box->setContentsMargins(0, 0, 0, 0);
    AddParts(*box, place, widget);
    // What stands beside it must not jump when another part of the box is shown.
    if (place.Lines > 0) widget->setFixedHeight(place.Lines * LineOf(*widget));
    if (place.Columns > 0) widget->setFixedWidth(place.Columns * widget->fontMetrics().horizontalAdvance('0'));
    return widget;
}

QWidget *MakePages(const Place &place, QWidget *parent) {
    auto *widget = new QWidget(parent);
    Pages pages{new QStackedLayout(widget), {}};
    for (const Place &part : place.Parts) {
        pages.Stack->addWidget(MakeControl(part, widget));
        pages.Parts.push_back(part.Of);
    }
    AllPages.push_back(std::move(pages));
    return widget;
}

void AddPart(QBoxLayout &box, const Place &place, QWidget *parent) {
    switch (place.Form) {
    case Shape::Space: box.addStretch(1); return;
    case Shape::One: {
        // A control that the program places stands at the left, as wide as the program says.
        box.addWidget(MakeControl(place, parent), place.Stretch);
        return;
    }
    case Shape::Row:
    case Shape::Column: box.addWidget(MakeBox(place, parent), place.Stretch); return;
    case Shape::Pages: box.addWidget(MakePages(place, parent), place.Stretch); return;
    }
}

// --- Showing changes
// --------------------------------------------------------------------------------------------------------

bool StandsInPages(const Control &control) {
    for (const Pages &pages : AllPages)
        for (const Control *part : pages.Parts)
            if (part == &control) return true;
    return false;
}

void ShowLastVisiblePage() {
    for (const Pages &pages : AllPages)
        for (std::size_t i = 0; i < pages.Parts.size(); ++i)
            if (pages.Parts[i]->Visible) pages.Stack->setCurrentIndex(static_cast<int>(i));
}

Qt::FocusPolicy FocusPolicyOf(const Control &control) {
    const bool takes = control.Type != Kind::Frame && control.Type != Kind::Label && control.Type != Kind::Image &&
                       control.Type != Kind::Timer && control.TakesFocus;
    if (!takes) return Qt::NoFocus;
    return control.TabStop ? Qt::StrongFocus : Qt::ClickFocus;
}

void ShowState(const Control &control, QWidget &widget) {
    widget.setEnabled(control.Enabled);
    widget.setFocusPolicy(FocusPolicyOf(control));
    if (StandsInPages(control))
        ShowLastVisiblePage();
    else if (control.Type != Kind::Timer)
        widget.setVisible(control.Visible);
}

QColor ColourOf(Colour colour) { return {colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF}; }

void ShowColour(const Control &control, QWidget &widget) {
    if (control.BackColor == DesignColour) return;
    const QColor back = ColourOf(control.BackColor);
    QPalette palette = widget.palette();
    if (control.Type == Kind::Frame) {
        palette.setColor(QPalette::Window, back);
        palette.setColor(QPalette::WindowText, ReadableOn(back));
        widget.setAutoFillBackground(true);
    } else {
        palette.setColor(QPalette::Base, back);
        palette.setColor(QPalette::Text, ReadableOn(back));
    }
    widget.setPalette(palette);
}

void ShowControl(Control &control) {
    const unsigned aspects = std::exchange(control.Changed, 0U);
    const auto found = Views.find(&control);
    if (found != Views.end()) {
        if (aspects & ShownAspect) ShowState(control, *found->second.Widget);
        if (aspects & ColourAspect) ShowColour(control, *found->second.Widget);
        found->second.Refresh(aspects);
    }
    control.ChangedRows.clear();
}

// The program sets tags as it goes; they are shown to programs that look at the window from outside.
void ShowTags() {
    for (auto &[control, view] : Views) {
        if (view.ShownTag == control->Tag) continue;
        view.ShownTag = control->Tag;
        view.Widget->setProperty("tag", QString::fromStdString(control->Tag));
    }
}

void ShowTitle() {
    std::string title = Title();
    if (title == ShownTitle) return;
    // The toolkit would take "[*]" in a file's name for the place of its own mark.
    TheWindow->setWindowTitle(QFile::decodeName(QByteArray::fromStdString(title)).replace("[*]", "[*][*]"));
    ShownTitle = std::move(title);
}

// The toolkit moved the focus on when its widget was hidden, and the program made no choice of its own while it handled
// the event: the toolkit's stands.
void AdoptFocus() {
    QWidget *const focused = TheWindow->focusWidget();
    if (Focused() != nullptr || focused == nullptr) return;
    for (const auto &[control, view] : Views)
        if (view.Widget == focused && focused->isVisible()) UserEnters(*const_cast<Control *>(control));
}

} // namespace

QWidget *BuildMainWindow(const Place &layout, std::string (*title)(), bool (*mayClose)()) {
    SetContainers(layout);
    TheWindow = new Window(mayClose);
    Title = title;
    ShowTitle();
    auto *box = new QVBoxLayout(TheWindow);
    box->setContentsMargins(0, 0, 0, 0); // the frames fill it
    AddParts(*box, layout, TheWindow);
    for (auto &[control, view] : Views) {
        auto &shown = const_cast<Control &>(*control);
        shown.Changed = ~0U & ~(shown.Width > 0 ? 0U : PlaceAspect);
        ShowControl(shown);
    }
    return TheWindow;
}

void AddView(Control &control, QWidget *parent) {
    Views[&control] = MakeView(control, parent, 0, 0);
    control.Changed = ~0U;
    ShowControl(control);
}

void DropView(const Control &control) { Views.erase(&control); }

QWidget *MainWindow() { return TheWindow; }

QWidget *WidgetOf(const Control &control) {
    const auto found = Views.find(&control);
    return found == Views.end() ? nullptr : found->second.Widget;
}

void ShowChanges() {
    if (TheWindow == nullptr || Showing > 0) return;
    for (auto changed = TakeChanges(); !changed.empty(); changed = TakeChanges()) {
        ++Showing;
        for (Control *control : changed) ShowControl(*control);
        --Showing;
    }
    ShowTags();
    ShowTitle();
    QWidget *const wanted = Focused() == nullptr ? nullptr : WidgetOf(*Focused());
    if (wanted != nullptr && wanted != TheWindow->focusWidget() && wanted->isVisible())
        wanted->setFocus(Qt::OtherFocusReason);
}

bool IsShowingChanges() { return Showing > 0; }

void Report(const std::function<void()> &act) {
    ++Reporting;
    act();
    --Reporting;
    ShowChanges();
    if (Reporting > 0 || TheWindow == nullptr) return;
    AdoptFocus();
    ShowChanges();
}

void WaitForPlace() {
    constexpr qint64 MostMilliseconds = 1000; // a window that starts as a symbol is not placed
    static bool placed = false;
    if (placed || TheWindow == nullptr || !TheWindow->isVisible()) return;
    QElapsedTimer waiting;
    waiting.start();
    while (!TheWindow->windowHandle()->isExposed() && waiting.elapsed() < MostMilliseconds)
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers, 10);
    placed = true;
}

void CloseForGood() { MayCloseUnasked = true; }

void FrontShowFocus(Control &control) {
    ShowChanges();
    QWidget *const widget = WidgetOf(control);
    if (widget != nullptr) widget->setFocus(Qt::OtherFocusReason);
}
