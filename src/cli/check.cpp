// quintave-cli check: what loading reports would ask, refuse, cut or replace.
#include "cli/commands.h"
#include "cli/double_quotes.h"
#include "cli/files.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/rooms.h"
#include "groups/store.h"
#include "model/field_model.h"
#include "platform/codepage.h"
#include "platform/console/answers.h"
#include "report/group_reader.h"
#include "report/merge.h"
#include "report/reader.h"

#include <algorithm>

namespace {

// The report being checked, and the worst that was found in any.
std::string Present;
int Status = NothingFound;

// Several instances of a field are meant.
bool InstancesMeant = false;

void Raise(int status) { Status = std::max(Status, status); }

void TellFound(long line, std::string_view text) {
    TellFinding(Present, line, text);
    Raise(SomethingFound);
}

// Answers a load so that it goes on with everything else in the file.
Answer AnswerLoad(const ShownMessage &message) {
    if (message.Title == CutTitle) return OkAnswer; // each value that was cut has been told of by its line
    const Integer error = ToldError(message);
    if (error != 0 && !IsReportFault(error)) {
        TellMessage(Present, 0, message.Text);
        Raise(FileFault);
    } else if (message.Title != OverwriteTitle || !InstancesMeant) {
        TellFound(RecordLine(), message.Text);
    }
    return message.Title == OverwriteTitle ? NoAnswer : DefaultAnswer(message.Style);
}

void TellCutMember(Integer member) {
    TellFound(RecordLine(), "The data of the field " + FieldTitle[member] +
                                " did not fit into their Repeating Group and were cut to the " +
                                std::to_string(FieldInfo[member][KindItem]) +
                                " characters that the Fields Template File allows!");
}

void TellReplacedValue(Integer element) {
    TellFound(RecordLine(), "The field " + FieldTitle[element] + " takes one value: this one replaces that before it!");
}

// The element's help line begins with one of the words (upper case), letters in either case.
bool IsRequired(Integer element, const std::vector<std::string> &words) {
    const std::string help = UpperCase(FieldExtra[element][HelpLine]);
    return std::any_of(words.begin(), words.end(), [&](const std::string &word) {
        if (!help.starts_with(word)) return false;
        // The word must end there: neither a letter nor a digit follows. A letter has two cases.
        const std::string behind = help.substr(word.size(), 1);
        return behind == LowerCase(behind) && (behind.empty() || behind[0] < '0' || behind[0] > '9');
    });
}

void TellEmpty(Integer element, const std::string &where) {
    TellFound(0, "The field " + TitlePath(element) + where +
                     " is empty! Its help line reads: " + FieldExtra[element][HelpLine]);
}

bool IsBlank(std::string_view cells) { return cells.find_first_not_of(' ') == std::string_view::npos; }

// The members of each occurrence that holds anything; of a group without any, the group itself.
void TellEmptyMembers(Integer head, const std::vector<std::string> &words) {
    std::string cells;
    const GroupCounts counts = ReadStore(head, cells);
    if (IsBlank(cells)) {
        if (IsRequired(head, words)) TellEmpty(head, "");
        return;
    }
    const auto length = static_cast<std::size_t>(counts.Items);
    for (std::size_t k = 0; k * length < cells.size(); ++k) {
        const std::string_view occurrence = std::string_view(cells).substr(k * length, length);
        if (IsBlank(occurrence)) continue;
        std::size_t cell = 0;
        for (Integer e = ToInteger(head + 1); e < GroupEnd(head); ++e) {
            if (!HasValue(e)) continue;
            const auto size = static_cast<std::size_t>(FieldInfo[e][KindItem]);
            if (IsRequired(e, words) && IsBlank(occurrence.substr(cell, size)))
                TellEmpty(e, ", occurrence " + std::to_string(k + 1) + ",");
            cell += size;
        }
    }
}

void TellEmptyFields(const std::vector<std::string> &words) {
    for (int number = 1; number <= NumFields; ++number) {
        const Integer e = ToInteger(number);
        if (IsGroupStart(e))
            TellEmptyMembers(e, words);
        else if (HasValue(e) && FieldRow[e] > 0 && IsRequired(e, words) &&
                 Trim(RowValue[ToInteger(FieldRow[e] - 1)]).empty())
            TellEmpty(e, "");
    }
}

void CheckReport(const std::string &path, const std::vector<std::string> &words) {
    Present = path;
    const Integer fault = FaultOf([&] {
        EmptyEntries();
        const std::string bytes = ReadInput(path);
        const ItemInput report = ItemsOf(bytes);
        const LoadResult result = LoadReport(report);
        if (const long line = CuttingLine(bytes); line != 0) TellFound(line, CutByEndMark);
        for (const QuotedValue &value : FindDoubleQuotes(report)) TellFound(value.Line, DoubleQuoteText(value.Title));
        if (result == LoadResult::Whole && !words.empty()) TellEmptyFields(words);
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
        words.push_back(UpperCase(FromUtf8(word)));
    }
    return words;
}

} // namespace

int CheckReports(const Arguments &arguments) {
    const std::vector<std::string> wanted = WantedWords(arguments);
    if (!LoadTemplateOf(arguments)) return FileFault;
    InstancesMeant = arguments.Has("add");
    Dialogs.Reply = AnswerLoad;
    OnCutMember = TellCutMember;
    OnReplacedValue = TellReplacedValue;
    std::size_t done = 0;
    for (const std::string &path : arguments.Files) {
        CheckReport(path, wanted);
        ShowProgress(++done, arguments.Files.size());
    }
    return Status;
}
