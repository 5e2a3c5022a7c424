// What a test says of the messages that were shown.
#pragma once

#include "platform/console/answers.h"
#include "support/screen_test.h"

#include <gtest/gtest.h>

// One message was shown since the list was last emptied, and it is this one. Empties the list.
inline void ExpectOneMessage(const std::string &title, const std::string &text, int style) {
    ASSERT_EQ(Dialogs.Messages.size(), 1U);
    EXPECT_EQ(Dialogs.Messages[0].Title, title);
    EXPECT_EQ(Dialogs.Messages[0].Text, text);
    EXPECT_EQ(Dialogs.Messages[0].Style, style);
    Dialogs.Messages.clear();
}

// The message about a template that cannot be read, and the line where it goes wrong; 0 where it was not read at all.
inline void ExpectUnreadableTemplate(const std::string &name, const std::string &error, int line) {
    ExpectOneMessage("ERROR LOADING " + name,
                     "Error: " + error +
                         "\r\nError reading this Fields Template File! (file damaged? choice list or group not ended? "
                         "file locked? wrong privileges?). Correct the problem and try again, or pick another Fields "
                         "Template File." +
                         (line > 0 ? "\r\n\r\nLook at line " + std::to_string(line) + " first." : ""),
                     CriticalIcon);
}

// The message about a work file that cannot be used.
inline void ExpectWorkFileError(const std::string &error) {
    ExpectOneMessage("Quintave",
                     "Error: " + error +
                         "\r\nError using a work file in the resource directory! (read only file or drive? full drive? "
                         "file locked? wrong privileges?). Correct the problem and try again.",
                     CriticalIcon);
}

inline void ExpectWrongHeader() {
    ExpectOneMessage("Quintave", "This is not a valid Fields Template File!\n\r\n\rPlease Try Again.", OkOnly);
}
