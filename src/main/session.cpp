// Reset, quit and closing (session.h).
#include "main/session.h"

#include "form/main_window.h"
#include "groups/open_group.h"
#include "groups/open_store.h"
#include "help/help_window.h"
#include "main/recovery.h"
#include "main/template_command.h"
#include "model/field_model.h"
#include "model/field_tables.h"
#include "model/work_files.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/front.h"
#include "platform/hand_over.h"
#include "report/save_command.h"
#include "screen/selected_field.h"
#include "screen/selection.h"
#include "screen/value_entry.h"

namespace {

// Saves for another command. False where the user cancelled the dialog or the report could not be written.
bool SaveBefore() {
    const Integer former = QuitSave;
    QuitSave = True;
    CommandSave_Click();
    QuitSave = former;
    return DataChanged == False;
}

void EmptyScreen() {
    ShowSelectedField(Restart, PutAwayOnly);
    FileMark = FirstLoad;
    const Integer fault = ClearEntries();
    for (Integer row = 0; row < NumRows; ++row)
        if (HasRow(RowField[row])) ShowValueInRow(row, "");
    GroupOccurrenceCount = 1;
    if (fault != 0) TellWorkFileError(fault);
    CurrentField = 0;
    LoadState = 0;
    ListTop = 0;
    ShowTemplateCaption();
    OfferMerge(false);
    SetListIndex(Quintave.List1[0], 0);
    DataChanged = False;
    SettleRecovery();
}

// The question, where there is something to lose; then the save.
bool MayReset() {
    if (DataChanged == False) return true;
    KeepBeforeAsking();
    const Answer answer = MsgBox("Do you want to SAVE these field settings before you RESET?",
                                 YesNoCancel + SecondIsDefault, "CLEAR ALL FIELDS (Reset)");
    return answer != CancelAnswer && (answer == NoAnswer || SaveBefore());
}

// Asks whether to save before the program ends. False where it is not to end.
bool MayEnd(std::string_view question, std::string_view title) {
    if (DataChanged == False) return true;
    KeepBeforeAsking();
    const Answer answer = MsgBox(question, YesNoCancel, title);
    if (answer == NoAnswer) GiveUpEntries();
    return answer != CancelAnswer && (answer == NoAnswer || SaveBefore());
}

} // namespace

void CommandReset_Click() {
    CommitPendingEdit();
    if (MayReset()) {
        if (!LeaveGroup()) AbandonGroup(); // its occurrences are emptied all the same
        EmptyScreen();
        TmpStr.clear();
    } else {
        TmpStr = "CANCELLED";
    }
    if (QuitSave != False) return;
    SetEnabled(Quintave.editframe, true);
    SetFocus(ActiveRows());
}

void CommandQuit_Click() {
    LeaveGroup(); // where its occurrence cannot be stored, and that was told, the question still comes
    CommitPendingEdit();
    if (MayEnd("Do you want to SAVE this field information before you QUIT?", "Quit Quintave"))
        EndSession();
    else
        SetFocus(ActiveRows());
}

std::string WindowTitle() {
    constexpr std::string_view Between = " - ";
    std::string title = "Quintave";
    if (Quintave.Frame5.Visible) return title;
    if (!TemplateName.empty()) title = TemplateName + std::string(Between) + title;
    if (HasRememberedName()) title = FileMark + std::string(Between) + title;
    return title;
}

bool CloseMainWindow() {
    if (!OfferSave()) return false;
    EndSession();
    return true;
}

bool OfferSave() {
    if (!Quintave.editframe.Visible) return true;
    CommitPendingEdit();
    const bool goesOn = MayEnd("Do you want to SAVE THE CHANGES you made?", "Done with SESSION");
    if (!goesOn) SetFocus(ActiveRows());
    return goesOn;
}

void EndSession() {
    EndRecovery();
    HelpQuit_Click();
    CloseStore();
    DeleteWorkFiles();
    StopListening();
    UnlockDirectory();
    EndProgram();
}

void EndOnSignal() { RunAsEvent(EndSession); }
