// A screen test that saves and opens reports in its folder.
#pragma once

#include "model/work_files.h"
#include "report/load_command.h"
#include "report/save_command.h"
#include "support/screen_test.h"

#include <gmock/gmock.h>

// Messages compare and print by their three parts.
inline bool operator==(const ShownMessage &a, const ShownMessage &b) {
    return a.Title == b.Title && a.Text == b.Text && a.Style == b.Style;
}

inline void PrintTo(const ShownMessage &message, std::ostream *out) {
    *out << "[" << message.Title << "] (" << message.Style << ") " << message.Text;
}

inline const std::string ReportHeader = "0,\"QuintaveV2\",\"SITE.FTF\"\r\n";

// A report: the header line and these lines, ended by CR LF.
inline std::string ReportText(const std::vector<std::string> &lines) { return ReportHeader + Lines(lines); }

// The messages of the report commands as they are to be shown.
inline ShownMessage WriteMessage(const std::string &error) {
    return {"Quintave",
            "Error: " + error +
                "\r\nError writing to this file! (read only file or drive? full drive? file locked? wrong privileges?)."
                " Correct the problem and try again, or 'SaveAs' to a different file name or location.",
            CriticalIcon};
}

inline ShownMessage LoadMessage(const std::string &name, const std::string &error) {
    return {"ERROR LOADING " + name,
            "Error:  " + error +
                "\r\n\r\n\r\nQuintave Data Fields may have been corrupted!\r\n\r\n"
                "You might want to `RESET' and start over!",
            CriticalIcon};
}

inline ShownMessage InvalidFormatMessage() {
    return {"INVALID FILE FORMAT",
            "This File is not properly identified as a version 2 Quintave file!\r\n\r\n"
            "File load procedure has been CANCELLED!",
            CriticalIcon};
}

inline ShownMessage NotFoundMessage(const std::string &title) {
    return {"WARNING - Field Not Found in List!",
            "No matching field title was found for the file field " + title +
                "!\r\n\r\nThis field and its data are NOT being loaded into Quintave!\r\n\r\n"
                "Do you want to continue loading fields?",
            YesNo};
}

inline ShownMessage FieldMergeMessage() {
    return {"Overwrite or 'Add To'",
            "Either this file contains multiple field instances, or you are loading data over existing screen "
            "information. Would you like to OVERWRITE information?\r\n\r\n"
            "        YES - Overwrite(replace) existing information.\r\n"
            "        NO - Add new instances to existing fields.\r\n\r\n"
            "Note that a YES answer will cause multiple field instances in the file being added to be overwritten by "
            "each other!",
            YesNo + SecondIsDefault};
}

inline ShownMessage GroupMergeMessage() {
    return {"Overwrite or 'Add To'",
            "You are loading data over existing screen information. Would you like to OVERWRITE information?\r\n\r\n"
            "        YES - Overwrite(replace) existing information.\r\n"
            "        NO - Add new instances to existing groups.",
            YesNo + SecondIsDefault};
}

inline ShownMessage TooDeepMessage(const std::string &level, const std::string &title, const std::string &deepest) {
    return {"Bad Nesting Level",
            "The nesting level (" + level + " ) of this field (" + title +
                " ) exceeds that allowed by the Fields Template File (" + deepest + ")\r\n\r\nPress OK to continue",
            OkCancel + InformationIcon};
}

inline ShownMessage ClosedListMessage(const std::string &title, const std::string &text) {
    return {"WARNING - Field Data Not Found in List!",
            "No matching list option was found for the field " + title +
                ", and this is a closed list (i.e., no 'Other...' option)!\r\n\r\nYour existing field data ( '" + text +
                "' ) is NOT being loaded for this field!",
            ExclamationIcon};
}

class ReportTest : public ScreenTest {
protected:
    // Adds a file of the folder through the Add command.
    void Add(const std::string &name) {
        Dialogs.Texts.push_back(folder.Path() + name);
        CommandAdd_Click();
    }

    // Adds a report of these lines.
    void Load(const std::vector<std::string> &lines) {
        folder.Write("A.rpx", ReportText(lines));
        Add("A.rpx");
    }

    // The lines that Save As writes behind the header line.
    std::string Saved() {
        const std::string bytes = SaveAs("saved.rpx");
        EXPECT_TRUE(bytes.starts_with(ReportHeader));
        return bytes.substr(std::min(ReportHeader.size(), bytes.size()));
    }

    // Forgets the messages and questions so far.
    static void Forget() {
        Dialogs.Messages.clear();
        Dialogs.Asked.clear();
        Dialogs.Answers.clear();
        Dialogs.Texts.clear();
    }
};
