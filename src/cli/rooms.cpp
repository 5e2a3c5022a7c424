// Working the rooms (rooms.h).
#include "cli/rooms.h"

#include "cli/files.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "model/field_model.h"
#include "model/field_tables.h"
#include "model/template_reader.h"
#include "model/text_files.h"
#include "model/work_files.h"
#include "platform/files.h"
#include "report/choice_matching.h"
#include "report/notices.h"
#include "report/title_index.h"

#include <algorithm>

namespace {

constexpr int MostTitles = 20; // in a path that is told

} // namespace

std::string LoadTemplate(const std::string &path, const std::string &bytes) {
    HoldWorkFiles();
    SplitPath(path, TemplateDir, TemplateName);
    ItemInput input = TemplateText(bytes);
    std::string suffix;
    if (!ReadTemplateHeader(input, suffix)) return std::string(WrongHeaderText);
    input.At = 0;
    TemplateContent content;
    const Integer fault = FaultOf([&] { content = ReadTemplate(std::move(input)); });
    if (fault != 0) return UnreadableText(fault);
    ReplaceWorkFiles(content);
    FillTables(content, nullptr);
    AllowInstances = Truth(!TurnsInstancesOff(suffix));
    BuildTitleIndex();
    ForgetChoices();
    return "";
}

bool LoadTemplateOf(const Arguments &arguments) {
    const std::string path = arguments.Last("template");
    if (path.empty()) throw UsageError{"missing --template FILE.ftf"};
    const std::vector<std::string> &files = arguments.Files;
    if (path == "-" && std::count(files.begin(), files.end(), "-") > 0) throw UsageError{std::string(InputReadOnce)};
    std::string refusal;
    const Integer fault = FaultOf([&] { refusal = LoadTemplate(path, ReadInput(path)); });
    if (fault != 0) TellFileError(path, fault);
    if (!refusal.empty()) TellMessage(path, 0, refusal);
    return fault == 0 && refusal.empty();
}

long CuttingLine(std::string_view bytes) {
    using namespace std::string_view_literals;
    const std::size_t mark = bytes.find('\x1A');
    if (mark == std::string_view::npos || bytes.find_first_not_of(" \t\r\n\x1A\0"sv, mark) == std::string_view::npos)
        return 0;
    LinePlace counted;
    return LineAt(counted, bytes, mark);
}

Answer GoOn(const LoadNotice &notice) {
    if (notice.What == Notice::OverwriteFields || notice.What == Notice::OverwriteGroups) return NoAnswer;
    return notice.What == Notice::NotInTemplate ? YesAnswer : OkAnswer;
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
