// The program under test on the console front (screen_test.h).
#include "support/screen_test.h"

#include "main/commands.h"
#include "main/layout.h"
#include "main/start_up.h"
#include "platform/files.h"
#include "report/save_command.h"

#include <unistd.h>

std::string Lines(const std::vector<std::string> &lines) {
    std::string text;
    for (const auto &line : lines) text += line + "\r\n";
    return text;
}

std::string TemplateText(const std::vector<std::string> &lines, const std::string &version) {
    return "\"QUINTAVE FIELDS TEMPLATE FILE\",\"" + version + "\",\"\",\"\",\"\",\"\"\r\n" + Lines(lines);
}

ScreenTest::ScreenTest() : formerDirectory(CurrentDirectory()) {
    if (chdir(folder.Path().c_str()) != 0) throw std::runtime_error("chdir");
    ConnectMainWindow();
    SetContainers(MainLayout());
}

ScreenTest::~ScreenTest() {
    UnlockDirectory();
    if (chdir(formerDirectory.c_str()) != 0) std::abort();
}

void ScreenTest::StartUp() {
    ASSERT_TRUE(LoadMainWindow({}));
    UserTicks(Quintave.Timer1);
    ActivateMainWindow();
}

void ScreenTest::Start(const std::vector<std::string> &templateLines, const std::string &version) {
    folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"-1\"\r\n");
    folder.Write("SITE.FTF", TemplateText(templateLines, version));
    StartUp();
    Press(Quintave.LogoOff);
}

std::string ScreenTest::Row(std::size_t index) { return ActiveRows().Rows.at(index); }

void ScreenTest::Select(Integer row) { ClickRow(ActiveRows(), row); }

void ScreenTest::Open(Integer row) { DoubleClickRow(ActiveRows(), row); }

void ScreenTest::Enter(Integer row, const std::string &text) {
    Open(row);
    Type(text);
    PressEnter();
}

std::string ScreenTest::SaveAs(const std::string &name) {
    Dialogs.Texts.push_back(folder.Path() + name);
    CommandSaveAs_Click();
    return folder.Read(name);
}

const ShownMessage &LastMessage() { return Dialogs.Messages.back(); }

std::size_t MessageCount() { return Dialogs.Messages.size(); }
