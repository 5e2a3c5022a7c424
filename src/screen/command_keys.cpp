// The table of Ctrl shortcuts (command_keys.h).
#include "screen/command_keys.h"

#include "groups/open_group.h"
#include "groups/table_commands.h"
#include "main/main_window.h"
#include "main/session.h"
#include "model/field_model.h"
#include "model/template_file.h"
#include "print/print_panel.h"
#include "report/load_command.h"
#include "report/save_command.h"
#include "screen/value_entry.h"

#include <algorithm>
#include <array>

namespace {

void FocusOccurrenceNumber() { SetFocus(Quintave.TblFldNum); }
void ToPreviousOccurrence() { FldChange_Click(Previous); }
void ToTopOccurrence() { FldChange_Click(Top); }
void ToNextOccurrence() { FldChange_Click(Next); }
void ToBottomOccurrence() { FldChange_Click(Bottom); }

struct Shortcut {
    Integer Key;
    bool InGroupOnly;
    void (*Run)();
};

constexpr std::array<Shortcut, 14> Shortcuts{{
    {'A', false, CommandAdd_Click},
    {'B', true, ToBottomOccurrence},
    {'D', true, TblFldDelete_Click},
    {'E', true, GrpExit_Click},
    {'F', false, CommandTemplate_Click},
    {'G', true, FocusOccurrenceNumber},
    {'I', true, TblFldInsert_Click},
    {'N', true, ToNextOccurrence},
    {'P', false, CommandPrint_Click},
    {'Q', false, CommandQuit_Click},
    {'R', false, CommandReset_Click},
    {'S', false, CommandSave_Click},
    {'T', true, ToTopOccurrence},
    {'V', true, ToPreviousOccurrence},
}};

} // namespace

void HandleCommandKey(Integer &KeyCode) {
    if (KeyCode == EnterCode) {
        CtrlHeld = EnterCode;
        return;
    }
    const Integer key = KeyCode;
    const auto *const shortcut =
        std::find_if(Shortcuts.begin(), Shortcuts.end(), [&](const Shortcut &s) { return s.Key == key; });
    if (shortcut == Shortcuts.end() || (shortcut->InGroupOnly && ActiveList != GroupList)) return;
    KeyCode = 0;
    CommitPendingEdit();
    shortcut->Run();
}

void Command_KeyDown(Integer /*Index*/, Integer &KeyCode, Integer Shift) {
    if (Shift == CtrlMask) HandleCommandKey(KeyCode);
}
