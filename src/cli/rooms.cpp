// Working the rooms (rooms.h).
#include "cli/rooms.h"

#include "cli/files.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/work_folder.h"
#include "main/events.h"
#include "main/layout.h"
#include "main/session.h"
#include "model/field_model.h"
#include "model/template_file.h"
#include "model/work_files.h"
#include "platform/console/answers.h"
#include "platform/files.h"

#include <algorithm>
#include <filesystem>

namespace {

constexpr int MostTitles = 20; // in a path that is told

} // namespace

bool LoadTemplate(const std::string &path, const std::string &bytes) {
    ConnectMainWindow();
    SetContainers(MainLayout());
    ResourceDir = WorkFolder();
    HoldWorkFiles();
    std::string directory;
    std::string name;
    SplitPath(path, directory, name);
    // A copy in a directory of its own: the template may come through a pipe, and work files are deleted by pattern.
    directory = ResourceDir + "template/";
    std::error_code ignored; // the copy's error will tell
    std::filesystem::create_directory(directory, ignored);
    OutputFile copy(directory + name, OutputFile::Access::Own);
    copy.Write(bytes);
    copy.Close(false);
    return LoadTemplateAt(directory, name);
}

bool LoadTemplateOf(const Arguments &arguments) {
    static std::string path;
    path = arguments.Last("template");
    if (path.empty()) throw UsageError{"missing --template FILE.ftf"};
    const std::vector<std::string> &files = arguments.Files;
    if (path == "-" && std::count(files.begin(), files.end(), "-") > 0) throw UsageError{std::string(InputReadOnce)};
    Dialogs.Reply = [](const ShownMessage &message) {
        TellMessage(path, 0, message.Text);
        return DefaultAnswer(message.Style);
    };
    bool loaded = false;
    const Integer fault = FaultOf([&] { loaded = LoadTemplate(path, ReadInput(path)); });
    if (fault != 0) TellFileError(path, fault);
    return loaded;
}

long CuttingLine(std::string_view bytes) {
    using namespace std::string_view_literals;
    const std::size_t mark = bytes.find('\x1A');
    if (mark == std::string_view::npos || bytes.find_first_not_of(" \t\r\n\x1A\0"sv, mark) == std::string_view::npos)
        return 0;
    LinePlace counted;
    return LineAt(counted, bytes, mark);
}

void EmptyEntries() {
    DataChanged = False; // nobody is to be asked
    CommandReset_Click();
}

Integer ToldError(const ShownMessage &message) {
    constexpr std::string_view Start = "Error: ";
    return message.Text.starts_with(Start) ? ToInteger(NumericValue(message.Text.substr(Start.size()))) : Integer{0};
}

bool IsReportFault(Integer number) { return number == Overflow || number == TypeMismatch || number == InputPastEnd; }

std::string TitlePath(Integer element) {
    std::string path = FieldTitle[element];
    Integer level = LevelOf(element);
    int titles = 1;
    for (Integer e = ToInteger(element - 1); e > 0 && level > 0; --e) {
        if (IsGroupEnd(e) || LevelOf(e) >= level) continue;
        level = LevelOf(e); // a title without a value also ends the headings before it
        const Integer group = IsGroupStart(e) ? e : FieldGroup[e];
        const bool encloses = (IsSection(e) || group == e) && (group == 0 || group == FieldGroup[element]);
        if (!encloses) continue;
        if (++titles > MostTitles) return "... / " + path;
        path.insert(0, FieldTitle[e] + " / ");
    }
    return path;
}
