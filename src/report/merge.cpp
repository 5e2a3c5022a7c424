// The questions of a load (merge.h).
#include "report/merge.h"

#include "model/field_model.h"
#include "platform/dialogs.h"

Integer MergeFlag = Undecided;
void (*OnReplacedValue)(Integer element) = nullptr;

namespace {

void Ask(const std::string &question) {
    MergeFlag = MsgBox(question, YesNo, OverwriteTitle) == YesAnswer ? Overwrite : AddInstances;
}

} // namespace

void StartMerge() { MergeFlag = AllowInstances != False ? Undecided : Overwrite; }

void AskOverwriteFields() {
    if (MergeFlag != Undecided) return;
    Ask("Either this file contains multiple field instances, or you are loading data over existing screen information. "
        "Would you like to OVERWRITE information?" +
        NL + NL + "        YES - Overwrite(replace) existing information." + NL +
        "        NO - Add new instances to existing fields." + NL + NL +
        "Note that a YES answer will cause multiple field instances in the file being added to be overwritten by each "
        "other!");
}

void AskOverwriteGroups() {
    if (MergeFlag != Undecided) return;
    Ask("You are loading data over existing screen information. Would you like to OVERWRITE information?" + NL + NL +
        "        YES - Overwrite(replace) existing information." + NL +
        "        NO - Add new instances to existing groups.");
}

bool MayDropRecord(const std::string &title) {
    return MsgBox("No matching field title was found for the file field " + title + "!" + NL + NL +
                      "This field and its data are NOT being loaded into Quintave!" + NL + NL +
                      "Do you want to continue loading fields?",
                  YesNo, "WARNING - Field Not Found in List!") == YesAnswer;
}
