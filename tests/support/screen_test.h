// The program on the console front, at work on a folder of the test's own. What the user would do comes from
// support/user.h, what he was asked from platform/console/answers.h.
#pragma once

#include "form/main_window.h"
#include "model/field_model.h"
#include "platform/console/answers.h"
#include "platform/dialogs.h"
#include "screen/selection.h"
#include "support/folder.h"
#include "support/user.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

// A template: header line with that version item, then the lines, all ended by CR LF.
std::string TemplateText(const std::vector<std::string> &lines, const std::string &version = "QuintaveV2");

// Lines, each ended by CR LF.
std::string Lines(const std::vector<std::string> &lines);

class ScreenTest : public testing::Test {
protected:
    ScreenTest();
    ~ScreenTest() override;

    // Starts the program in the folder with this template as SITE.FTF, past the start-up frame.
    void Start(const std::vector<std::string> &templateLines, const std::string &version = "QuintaveV2");

    // The same for a table and files that the test has written itself; leaves the start-up frame shown.
    void StartUp();

    // The row of the field list, or of the open group's list.
    static std::string Row(std::size_t index);

    // Selects a row of the list in use as a click does.
    static void Select(Integer row);

    // Selects a row and opens its entry control.
    static void Open(Integer row);

    // Types a value into a TEXT row and commits it with Enter.
    static void Enter(Integer row, const std::string &text);

    // Saves under a name in the folder and returns the report's bytes.
    std::string SaveAs(const std::string &name);

    Folder folder;

private:
    std::string formerDirectory;
};

// The last message shown, and how many there were.
const ShownMessage &LastMessage();
std::size_t MessageCount();
