// Temporary reports (temporary_report.h).
#include "report/temporary_report.h"

#include "model/field_model.h"
#include "platform/files.h"
#include "report/save_command.h"

std::string TemporaryReportName() {
    std::string name;
    for (int n = 2; n <= 101; ++n) {
        name = "!quin!" + std::to_string(n + 100).substr(1) + ".$$$";
        if (!NameTaken(ResourceDir + name)) return name;
    }
    return "!quin!99.$$$";
}

bool WriteTemporaryReport(const std::string &name) {
    const std::string formerDir = ReportFileDir;
    const std::string formerName = ReportFileName;
    ReportFileDir = ResourceDir;
    ReportFileName = name;
    const bool written = WriteReportFile();
    ReportFileDir = formerDir;
    ReportFileName = formerName;
    return written;
}
