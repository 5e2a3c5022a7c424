// A screen test that prints: reports of its own through the print panel, to pages or to a text file.
#pragma once

#include "form/main_window.h"
#include "model/field_model.h"
#include "platform/console/printer.h"
#include "platform/console/progress.h"
#include "print/print_panel.h"
#include "support/screen_test.h"

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

// Messages and printed texts compare and print by their parts.
inline bool operator==(const ShownMessage &a, const ShownMessage &b) {
    return a.Title == b.Title && a.Text == b.Text && a.Style == b.Style;
}

inline void PrintTo(const ShownMessage &message, std::ostream *out) {
    *out << "[" << message.Title << "] (" << message.Style << ") " << message.Text;
}

inline bool operator==(const PrintedText &a, const PrintedText &b) {
    return a.Page == b.Page && a.Line == b.Line && a.Column == b.Column && a.Text == b.Text && a.Bold == b.Bold &&
           a.Points == b.Points;
}

inline void PrintTo(const PrintedText &text, std::ostream *out) {
    *out << "page " << text.Page << " line " << text.Line << " column " << text.Column << (text.Bold ? " bold " : " ")
         << text.Points << " points: '" << text.Text << "'";
}

inline ShownMessage PrintMessage(const std::string &error) {
    return {"PRINTING...",
            "Error: " + error +
                "\r\nError printing this report! (no default printer? printer off line? full drive? file locked? wrong "
                "privileges?). Correct the problem and try again, or pick a different file name or location.",
            CriticalIcon};
}

inline const ShownMessage PrintQuestion{
    "PRINT CURRENT SCREEN FIELDS?",
    "YES: Print active screen display.\r\n\r\nNO: Print an existing (previously saved) Quintave report file.",
    YesNoCancel + QuestionIcon + SecondIsDefault};

inline const std::string ReportHeader = "0,\"QuintaveV2\",\"SITE.FTF\"\r\n";

// A report: the header line and these lines, ended by CR LF.
inline std::string ReportText(const std::vector<std::string> &lines) { return ReportHeader + Lines(lines); }

inline std::string ValueRecord(int level, const std::string &title, const std::string &value) {
    return std::to_string(level) + ",1,\"" + title + "\",\"" + value + "\"";
}

// What the print panel is set to. The mode counts the presses of the indent button.
struct PanelOptions {
    int Mode = 0;
    std::string Indent{};
    bool Below = false;
    std::string Separator = "'| '";
    int Copies = 1;
};

inline constexpr int NestedTitles = 1;
inline constexpr int NestedData = 2;
inline constexpr int RawMode = 3;

inline void Choose(Control &combo, const std::string &entry) {
    for (std::size_t row = 0; row < combo.Rows.size(); ++row)
        if (combo.Rows[row] == entry) return UserSelects(combo, static_cast<Integer>(row));
    throw std::runtime_error("no entry " + entry);
}

class PrintTest : public ScreenTest {
protected:
    void SetUp() override {
        setenv("SOURCE_DATE_EPOCH", "1551571200", 1); // 3 March 2019
        Start({R"(1,60,"TEXT","Title","","")", R"(1,30,"TEXT","Place","","")"});
    }

    std::string PathOf(const std::string &name) const { return folder.Path() + name; }

    // Opens the panel for the screen, for a report of the folder.
    static void OpenForScreen() {
        Dialogs.Answers = {YesAnswer};
        Press(Quintave.CommandPrint);
    }

    void OpenFor(const std::string &name) const {
        Dialogs.Answers = {NoAnswer};
        Dialogs.Texts = {PathOf(name)};
        Press(Quintave.CommandPrint);
    }

    static void Set(const PanelOptions &options) {
        SetCaption(Quintave.PrintFrameIndent, NoIndent);
        SetEnabled(Quintave.PrintIndent, true);
        SetText(Quintave.PrintIndent, "", 0);
        UserEnters(Quintave.PrintIndent);
        Type(options.Indent);
        for (int i = 0; i < options.Mode; ++i) Press(Quintave.PrintFrameIndent);
        if (options.Below != (Quintave.PrintFrameToggler.Caption == LineBelowTitle)) Press(Quintave.PrintFrameToggler);
        Choose(Quintave.Combo2, options.Separator);
        Choose(Quintave.Combo1, std::to_string(options.Copies));
    }

    static void PressPrinter() { Press(Quintave.PrintFramePrint[ToPrinter]); }

    void PressFile(const std::string &name) const {
        Dialogs.Texts = {PathOf(name)};
        Press(Quintave.PrintFramePrint[ToFile]);
    }

    // The bytes of the text file that a report of these lines gives.
    std::string TextOf(const std::vector<std::string> &lines, const PanelOptions &options = {}) const {
        return TextOfFile(ReportText(lines), options);
    }

    std::string TextOfFile(const std::string &bytes, const PanelOptions &options = {}) const {
        folder.Write("A.rpx", bytes);
        OpenFor("A.rpx");
        Set(options);
        PressFile("out.txt");
        return folder.Read("out.txt");
    }

    // The same without the header lines.
    std::string BodyOf(const std::vector<std::string> &lines, const PanelOptions &options = {}) const {
        const std::string text = TextOf(lines, options);
        if (options.Mode == RawMode) return text;
        EXPECT_TRUE(text.starts_with(TextHeader));
        return text.substr(std::min(TextHeader.size(), text.size()));
    }

    // The texts on the pages that a report of these lines gives.
    std::vector<PrintedText> PagesOf(const std::vector<std::string> &lines, const PanelOptions &options = {}) const {
        return PagesOfFile(ReportText(lines), options);
    }

    std::vector<PrintedText> PagesOfFile(const std::string &bytes, const PanelOptions &options = {}) const {
        folder.Write("A.rpx", bytes);
        OpenFor("A.rpx");
        Set(options);
        Printer.Jobs.clear();
        PressPrinter();
        return Printer.Jobs.empty() ? std::vector<PrintedText>{} : Printer.Jobs.front();
    }

    // The same without the page headers.
    std::vector<PrintedText> PageBodyOf(const std::vector<std::string> &lines, const PanelOptions &options = {}) const {
        std::vector<PrintedText> texts = PagesOf(lines, options);
        std::erase_if(texts, [](const PrintedText &text) { return text.Line == TopLine; });
        return texts;
    }

    // What the user sees of the panel when it is ready for a command.
    static void ExpectPanelReady() {
        EXPECT_TRUE(Quintave.PrintFrame.Visible);
        EXPECT_FALSE(Quintave.editframe.Visible);
        EXPECT_TRUE(Quintave.PrintFramePrint[ToPrinter].Enabled);
        EXPECT_TRUE(Quintave.PrintFramePrint[ToFile].Enabled);
        EXPECT_TRUE(Quintave.PrintFrameCancel.Enabled);
        EXPECT_EQ(Quintave.printLabel.Caption, "Waiting for PRINT command");
        EXPECT_FALSE(Progress.PointerIsBusy);
    }

    static void ExpectEntryScreen() {
        EXPECT_FALSE(Quintave.PrintFrame.Visible);
        EXPECT_TRUE(Quintave.editframe.Visible);
        EXPECT_EQ(Focused(), &Quintave.List1[0]);
        EXPECT_FALSE(Progress.PointerIsBusy);
    }

    // Geometry of letter paper: an inch is 12 columns and 6 lines.
    static constexpr double LeftColumn = 12;
    static constexpr double TopLine = 6;
    static constexpr double FirstLine = 8; // below the page header
    static constexpr double LastLine = 54;
    static constexpr double RightLimit = 90;

    inline static const std::string TextHeader = "03-03-2019 [SITE.FTF]; Quintave Report for OUT.TXT\r\n \r\n";
};
