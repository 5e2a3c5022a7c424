// Message boxes, input boxes and the common file dialog as windows (platform/dialogs.h).
#include "platform/dialogs.h"

#include "platform/controls.h"
#include "platform/qt/text.h"
#include "platform/qt/window.h"

#include <QCloseEvent>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QTimer>
#include <QUrl>

namespace {

constexpr int InputColumns = 70; // of an input box, which asks for a path

// As long as a dialogue is open. Before it opens the window shows what has changed, and has its place on the screen.
class Asking {
public:
    Asking() {
        ShowChanges();
        WaitForPlace();
    }

private:
    WaitingForAnswer waiting;
};

// A box that only its buttons answer, where none of them means "no answer".
class MessageBox : public QMessageBox {
public:
    MessageBox(QWidget *parent, bool cancellable) : QMessageBox(parent), closes(cancellable) {}

protected:
    void keyPressEvent(QKeyEvent *event) override {
        if (closes || event->key() != Qt::Key_Escape) QMessageBox::keyPressEvent(event);
    }

    void closeEvent(QCloseEvent *event) override {
        if (closes)
            QMessageBox::closeEvent(event);
        else
            event->ignore();
    }

private:
    bool closes;
};

QMessageBox::StandardButtons ButtonsOf(int style) {
    switch (style & ButtonsMask) {
    case OkCancel: return QMessageBox::Ok | QMessageBox::Cancel;
    case YesNoCancel: return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case YesNo: return QMessageBox::Yes | QMessageBox::No;
    default: return QMessageBox::Ok;
    }
}

QMessageBox::StandardButton DefaultOf(int style) {
    const bool second = (style & SecondIsDefault) != 0;
    switch (style & ButtonsMask) {
    case OkCancel: return second ? QMessageBox::Cancel : QMessageBox::Ok;
    case YesNoCancel:
    case YesNo: return second ? QMessageBox::No : QMessageBox::Yes;
    default: return QMessageBox::Ok;
    }
}

QMessageBox::Icon IconOf(int style) {
    switch (style & IconMask) {
    case CriticalIcon: return QMessageBox::Critical;
    case QuestionIcon: return QMessageBox::Question;
    case ExclamationIcon: return QMessageBox::Warning;
    case InformationIcon: return QMessageBox::Information;
    default: return QMessageBox::NoIcon;
    }
}

// What a screen reader says of the icon.
QString IconName(int style) {
    switch (style & IconMask) {
    case CriticalIcon: return "Critical";
    case QuestionIcon: return "Question";
    case ExclamationIcon: return "Warning";
    case InformationIcon: return "Information";
    default: return {};
    }
}

Answer AnswerOf(int button) {
    switch (button) {
    case QMessageBox::Ok: return OkAnswer;
    case QMessageBox::Yes: return YesAnswer;
    case QMessageBox::No: return NoAnswer;
    default: return CancelAnswer;
    }
}

QString NameOf(const std::string &name) { return QFile::decodeName(QByteArray::fromStdString(name)); }

// "label|patterns|..." as the toolkit writes it: "label (patterns);;...". All files are those without a dot, too.
QString FilterOf(const std::string &filter) {
    const QStringList parts = QString::fromStdString(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        filters << parts[i] + " (" + QString(parts[i + 1]).replace("*.*", "*").replace(';', ' ').simplified() + ")";
    return filters.join(";;");
}

// The toolkit's own dialogue on every desktop (program.cpp).
class FileDialog : public QFileDialog {
public:
    explicit FileDialog(const CommonDialog &dialog)
        : QFileDialog(MainWindow(), AsMessage(dialog.Title), NameOf(dialog.InitDir), FilterOf(dialog.Filter)) {
        setOption(HideNameFilterDetails);
        QList<QUrl> places{QUrl("file:"), QUrl::fromLocalFile(QDir::homePath())};
        for (const std::string &place : dialog.Places) places << QUrl::fromLocalFile(NameOf(place));
        setSidebarUrls(places);
        if (!dialog.FileName.empty()) selectFile(NameOf(dialog.FileName));
    }

    // Who types another name keeps the ending.
    void SelectUpToEnding() {
        QTimer::singleShot(0, this, [this] {
            const qsizetype ending = name->text().lastIndexOf('.');
            if (ending > 0) name->setSelection(0, static_cast<int>(ending));
        });
    }

    // The full path that the user picks, "" for none.
    std::string Pick() { return exec() == Accepted ? QFile::encodeName(selectedFiles().value(0)).toStdString() : ""; }

    // The toolkit would open a directory that is marked in the list, although a name was typed.
    void accept() override {
        if (name->hasFocus() || QDir::isAbsolutePath(name->text()))
            findChild<QListView *>("listView")->clearSelection();
        QFileDialog::accept();
    }

private:
    QLineEdit *const name = findChild<QLineEdit *>("fileNameEdit");
};

} // namespace

Answer MsgBox(std::string_view text, int style, std::string_view title) {
    const Asking asking;
    MessageBox box(MainWindow(), (style & ButtonsMask) != YesNo);
    box.setWindowTitle(AsMessage(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(AsMessage(text));
    box.setIcon(IconOf(style));
    if (auto *const icon = box.findChild<QLabel *>("qt_msgboxex_icon_label")) icon->setAccessibleName(IconName(style));
    box.setStandardButtons(ButtonsOf(style));
    box.setDefaultButton(DefaultOf(style));
    return AnswerOf(box.exec());
}

std::string InputBox(std::string_view prompt, std::string_view title, std::string_view proposal) {
    const Asking asking;
    QInputDialog box(MainWindow());
    box.setWindowTitle(AsMessage(title));
    box.setLabelText(AsMessage(prompt));
    box.setTextValue(NameOf(std::string(proposal)));
    box.resize(box.fontMetrics().averageCharWidth() * InputColumns, box.sizeHint().height());
    return box.exec() == QDialog::Accepted ? QFile::encodeName(box.textValue()).toStdString() : "";
}

void ShowOpen(CommonDialog &dialog) {
    const Asking asking;
    FileDialog box(dialog);
    box.setFileMode(QFileDialog::ExistingFile);
    dialog.FileName = box.Pick();
}

void ShowSave(CommonDialog &dialog) {
    const Asking asking;
    FileDialog box(dialog);
    box.setAcceptMode(QFileDialog::AcceptSave);
    box.setOption(QFileDialog::DontConfirmOverwrite, (dialog.Flags & OverwritePrompt) == 0);
    box.SelectUpToEnding();
    dialog.FileName = box.Pick();
}
