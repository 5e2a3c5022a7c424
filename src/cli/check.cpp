// quintave-cli check: what loading reports would ask, refuse, cut or replace.
#include "cli/commands.h"
#include "cli/double_quotes.h"
#include "cli/files.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/rooms.h"
#include "model/cells.h"
#include "model/field_model.h"
#include "model/field_tables.h"
#include "model/store.h"
#include "model/text_files.h"
#include "platform/characters.h"
#include "platform/codepage.h"
#include "report/notices.h"
#include "report/reader.h"

#include <algorithm>

namespace {

// The report being checked, and the worst that was found in any.
std::string Checked;
int Status = NothingFound;

// Several instances of a field are meant.
bool InstancesMeant = false;

void Raise(int status) { Status = std::max(Status, status); }

void TellFound(long line, std::string_view text) {
    TellFinding(Checked, line, text);
    Raise(SomethingFound);
}

Answer TellNotice(const LoadNotice &notice) {
    const bool asks = notice.What == Notice::OverwriteFields || notice.What == Notice::OverwriteGroups;
    if (notice.What == Notice::Damaged && !IsReportFault(notice.Error)) {
        TellMessage(Checked, 0, notice.Text);
        Raise(FileFault);
    } else if (notice.What != Notice::ValuesCut && !(asks && InstancesMeant)) { // each cut value is told by its line
        TellFound(notice.Line, notice.Text);
    }
    return GoOn(notice);
}

constexpr LoadFront Findings{.Tell = TellNotice, .WantsLines = true};

// The element's help line begins with one of the words (upper case), letters in either case.
bool IsRequired(Integer element, const std::vector<std::string> &words) {
    const std::string help = UpperCase(FieldExtra[element][HelpLine]);
    return std::any_of(words.begin(), words.end(), [&](const std::string &word) {
        if (!help.starts_with(word)) return false;
        // The word must end there: neither a letter nor a digit follows. A letter has two cases.
        const std::string behind(FirstCharacters(help.substr(word.size()), 1));
        return behind == LowerCase(behind) && (behind.empty() || behind[0] < '0' || behind[0] > '9');
    });
}

void TellEmpty(Integer element, const std::string &where) {
    TellFound(0, "The field " + TitlePath(element) + where +
                     " is empty! Its help line reads: " + FieldExtra[element][HelpLine]);
}

// The members of each occurrence that holds anything; of a group without any, the group itself.
void TellEmptyMembers(Integer head, const std::vector<std::string> &words) {
    Cells cells;
    ReadStore(head, cells);
    if (IsBlank(cells)) {
        if (IsRequired(head, words)) TellEmpty(head, "");
        return;
    }
    const GroupMembers &members = Members(head);
    std::string room;
    for (std::size_t k = 0; k < CountIn(cells); ++k) {
        if (IsBlank(OccurrenceIn(cells, members, k))) continue;
        for (std::size_t i = 0; i < members.size(); ++i)
            if (IsRequired(members[i].Element, words) && IsBlank(MemberIn(cells, members, k, i, room)))
                TellEmpty(members[i].Element, ", occurrence " + std::to_string(k + 1) + ",");
    }
}

void TellEmptyFields(const std::vector<std::string> &words) {
    for (const Integer e : Elements()) {
        if (IsGroupStart(e))
            TellEmptyMembers(e, words);
        else if (HasRow(e) && IsRequired(e, words) && IsBlank(ValueOf(e)))
            TellEmpty(e, "");
    }
}

void CheckReport(const std::string &path, const std::vector<std::string> &words) {
    Checked = path;
    const Integer fault = FaultOf([&] {
        ClearEntries();
        const std::string bytes = ReadInput(path);
        ItemInput report = ReportText(bytes);
        SplitPath(path, ReportFileDir, ReportFileName);
        const LoadResult result = ReadReport(report, Findings);
        if (const long line = CuttingLine(bytes); line != 0) TellFound(line, CutByEndMark);
        for (const QuotedValue &value : FindDoubleQuotes(report)) TellFound(value.Line, DoubleQuoteText(value.Title));
        const bool toItsEnd = result == LoadResult::Whole || result == LoadResult::Partial;
        if (toItsEnd && !words.empty()) TellEmptyFields(words);
    });
    if (fault != 0) Raise(TellFileError(path, fault));
}

// The words of --require, upper case.
std::vector<std::string> WantedWords(const Arguments &arguments) {
    std::vector<std::string> words;
    const auto given = arguments.Given.find("require");
    if (given == arguments.Given.end()) return words;
    for (const std::string &word : given->second) {
        if (word.empty()) throw UsageError{"--require needs a word"};
        words.push_back(UpperCase(NameText(word)));
    }
    return words;
}

} // namespace

int CheckReports(const Arguments &arguments) {
    const std::vector<std::string> wanted = WantedWords(arguments);
    if (!LoadTemplateOf(arguments)) return FileFault;
    InstancesMeant = arguments.Has("add");
    std::size_t done = 0;
    for (const std::string &path : arguments.Files) {
        CheckReport(path, wanted);
        ShowProgress(++done, arguments.Files.size());
    }
    return Status;
}
