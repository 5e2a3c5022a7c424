// The program at work without a window (workplace.h).
#include "workplace.h"

#include "form/main_window.h"
#include "main/commands.h"
#include "main/layout.h"
#include "main/start_up.h"
#include "model/field_model.h"
#include "platform/console/answers.h"
#include "platform/files.h"
#include "report/load_command.h"
#include "report/reader.h"

#include <stdexcept>

void StartOn(std::string_view records) {
    WriteTemplateIn(records);
    UnlockDirectory();
    Quintave = QuintaveForm();
    ConnectMainWindow();
    SetContainers(MainLayout());
    if (!LoadMainWindow({.Resources = Folder(), .Report = ""})) throw std::runtime_error("start");
    ActivateMainWindow();
    LogoOff_Click();
}

void LoadReportIn(const std::string &name) {
    ReportFileDir = Folder();
    ReportFileName = name;
    FileMark = FirstLoad;
    Dialogs.Messages.clear();
    Dialogs.Answers.assign(1, NoAnswer);
    if (LoadReportFile() != LoadResult::Whole) throw std::runtime_error("load");
    Dialogs.Answers.clear();
}
