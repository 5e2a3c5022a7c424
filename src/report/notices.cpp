// The texts of a load (notices.h).
#include "report/notices.h"

#include "model/field_model.h"
#include "model/text_files.h"
#include "platform/codepage.h"

#include <string_view>

Integer MergeFlag = Undecided;

namespace {

// The load that began last: who is told, what is read, and where its present record begins. Nothing is told once it has
// ended.
const LoadFront *Front = nullptr;
const ItemInput *Report = nullptr;
std::size_t RecordAt = 0;
bool LeftOut = false;
LinePlace Counted;

constexpr std::string_view OverwriteTitle = "Overwrite or 'Add To'";
constexpr std::string_view NotFoundTitle = "WARNING - Field Not Found in List!";
constexpr std::string_view RefusedTitle = "WARNING - Field Data Not Found in List!";
constexpr std::string_view CutTitle = "WARNING - Field Data Cut!";

long LineOf(std::size_t at) {
    if (at < Counted.At) Counted = {};
    return LineAt(Counted, Report->Bytes, at);
}

Answer Tell(Notice what, std::string_view title, const std::string &text, int style, Integer element = 0,
            Integer error = 0) {
    if (what == Notice::TooDeep || what == Notice::NotInTemplate || what == Notice::NotInList ||
        what == Notice::ValueCut)
        NoteLeftOut();
    const long line = Front->WantsLines ? LineOf(RecordAt) : 0;
    return Front->Tell({what, std::string(title), text, style, element, error, line});
}

// No adds, and nothing is lost: it is what Enter answers.
void Decide(Notice question, const std::string &text) {
    MergeFlag = Tell(question, OverwriteTitle, text, YesNo + SecondIsDefault) == YesAnswer ? Overwrite : AddInstances;
}

} // namespace

void BeginNotices(const LoadFront &front, const ItemInput &input) {
    Front = &front;
    Report = &input;
    RecordAt = 0;
    LeftOut = false;
    Counted = {};
    MergeFlag = AllowInstances != False ? Undecided : Overwrite;
}

void NoteLeftOut() { LeftOut = true; }

bool LeftSomethingOut() { return LeftOut; }

void NoteRecord(std::size_t at) {
    RecordAt = at;
    if (Front->Progress != nullptr) Front->Progress(at);
}

void NotePlaced(Integer row) {
    if (Front->Placed != nullptr) Front->Placed(row);
}

void TellNotAReport() {
    Tell(Notice::NotAReport, "INVALID FILE FORMAT",
         "This File is not properly identified as a version 2 Quintave file!" + NL + NL +
             "File load procedure has been CANCELLED!",
         CriticalIcon);
}

void TellDamaged(Integer error) {
    Tell(Notice::Damaged, "ERROR LOADING " + NameText(ReportFileName),
         "Error:  " + ErrorText(error) + NL + NL + NL + "Quintave Data Fields may have been corrupted!" + NL + NL +
             "You might want to `RESET' and start over!",
         CriticalIcon, 0, error);
}

void TellEncoding() {
    const long line = LineNotUtf8(*Report);
    RecordAt = line > 0 ? Report->NotUtf8At : 0;
    if (line > 0)
        Tell(Notice::NotUtf8, "WARNING - Not All of It Is UTF-8!",
             "This file says that it is UTF-8, and in line " + std::to_string(line) +
                 " it is not. What is no UTF-8 was read as Windows-1252.",
             ExclamationIcon);
    else if (Report->LooksUtf8)
        Tell(Notice::LooksUtf8, "WARNING - This File Looks Like UTF-8!",
             "This file is read as Windows-1252, because it does not say that it is UTF-8. Where you see two or more "
             "strange characters in the place of one, let the second item of its first line end in" +
                 std::string(Utf8Mark) + " and open it again.",
             InformationIcon);
}

bool MaySkipTooDeep(Integer level, const std::string &title) {
    return Tell(Notice::TooDeep, "Bad Nesting Level",
                "The nesting level (" + std::to_string(level) + " ) of this field (" + title +
                    " ) exceeds that allowed by the Fields Template File (" + std::to_string(DeepestLevel) + ")" + NL +
                    NL + "Press OK to continue",
                OkCancel + InformationIcon) == OkAnswer;
}

bool MayDropRecord(const std::string &title) {
    return Tell(Notice::NotInTemplate, NotFoundTitle,
                "No matching field title was found for the file field " + title + "!" + NL + NL +
                    "This field and its data are NOT being loaded into Quintave!" + NL + NL +
                    "Do you want to continue loading fields?",
                YesNo) == YesAnswer;
}

void TellNotInList(Integer element, const std::string &text) {
    Tell(Notice::NotInList, RefusedTitle,
         "No matching list option was found for the field " + Trim(FieldTitle[element]) +
             ", and this is a closed list (i.e., no 'Other...' option)!" + NL + NL + "Your existing field data ( '" +
             text + "' ) is NOT being loaded for this field!",
         ExclamationIcon, element);
}

void AskOverwriteFields() {
    if (MergeFlag != Undecided) return;
    Decide(Notice::OverwriteFields,
           "Either this file contains multiple field instances, or you are loading data over existing screen "
           "information. Would you like to OVERWRITE information?" +
               NL + NL + "        YES - Overwrite(replace) existing information." + NL +
               "        NO - Add new instances to existing fields." + NL + NL +
               "Note that a YES answer will cause multiple field instances in the file being added to be "
               "overwritten by each other!");
}

void AskOverwriteGroups() {
    if (MergeFlag != Undecided) return;
    Decide(Notice::OverwriteGroups,
           "You are loading data over existing screen information. Would you like to OVERWRITE information?" + NL + NL +
               "        YES - Overwrite(replace) existing information." + NL +
               "        NO - Add new instances to existing groups.");
}

void TellValueCut(Integer member) {
    Tell(Notice::ValueCut, CutTitle,
         "The data of the field " + FieldTitle[member] +
             " did not fit into their Repeating Group and were cut to the " + std::to_string(LengthOf(member)) +
             " characters that the Fields Template File allows!",
         ExclamationIcon, member);
}

void TellValuesCut(std::size_t members, Integer first) {
    Tell(Notice::ValuesCut, CutTitle,
         "The data of " + std::to_string(members) +
             " field(s) did not fit into their Repeating Group and were cut to the length that the Fields Template "
             "File allows!" +
             NL + NL + "First field: " + FieldTitle[first],
         ExclamationIcon, first);
}

void TellValueReplaced(Integer element) {
    const std::string &title = FieldTitle[element];
    std::string text = "The field " + title + " takes one value: this one replaces that before it!";
    if (IsGroupStart(element))
        text = "The occurrences of the group " + title + " replace those before them!";
    else if (LevelOf(element) == 0 && AllowInstances != False)
        text = "The field " + title + " held another value before: this one replaces it!";
    Tell(Notice::ValueReplaced, "", text, OkOnly, element);
}
