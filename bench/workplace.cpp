// The program at work for a measurement (workplace.h).
#include "workplace.h"

#include "main/events.h"
#include "main/layout.h"
#include "main/main_window.h"
#include "main/start_up.h"
#include "model/field_model.h"
#include "platform/console/answers.h"
#include "platform/files.h"
#include "report/reader.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

// The folder of this process; removed at its end.
struct TemporaryFolder {
    TemporaryFolder() {
        Path = (std::filesystem::temp_directory_path() / "quintave-bench-XXXXXX").string();
        if (mkdtemp(Path.data()) == nullptr) throw std::runtime_error("no temporary folder");
        Path += "/";
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(Path, ignored);
    }
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    std::string Path;
};

} // namespace

const std::string &Folder() {
    static const TemporaryFolder folder;
    return folder.Path;
}

void WriteIn(const std::string &name, std::string_view bytes) {
    std::ofstream(Folder() + name, std::ios::binary) << bytes;
}

void StartOn(std::string_view records) {
    WriteIn("quintave.tbl", "\"\",\"BENCH.FTF\",\"-1\"\r\n");
    WriteIn("BENCH.FTF",
            "\"QUINTAVE FIELDS TEMPLATE FILE\",\"QuintaveV2\",\"\",\"\",\"\",\"\"\r\n" + std::string(records));
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
