// Which procedure runs when something happens to a control, sorted by control and event.
#include "main/events.h"

#include "groups/open_group.h"
#include "groups/table_commands.h"
#include "help/help_window.h"
#include "main/recovery.h"
#include "main/session.h"
#include "main/start_up.h"
#include "model/template_file.h"
#include "platform/controls.h"
#include "print/print_panel.h"
#include "report/load_command.h"
#include "report/save_command.h"
#include "screen/command_keys.h"
#include "screen/field_list.h"
#include "screen/instances.h"
#include "screen/value_entry.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array Connections{
    Connection{"CommandAdd", Event::Click, CommandAdd_Click},
    Connection{"CommandAdd", Event::KeyDown, Command_KeyDown},
    Connection{"CommandMoreHelp", Event::Click, CommandMoreHelp_Click},
    Connection{"CommandMoreHelp", Event::KeyDown, Command_KeyDown},
    Connection{"CommandPrint", Event::Click, CommandPrint_Click},
    Connection{"CommandPrint", Event::KeyDown, Command_KeyDown},
    Connection{"CommandQuit", Event::Click, CommandQuit_Click},
    Connection{"CommandQuit", Event::KeyDown, Command_KeyDown},
    Connection{"CommandReset", Event::Click, CommandReset_Click}, // its keys do nothing
    Connection{"CommandSave", Event::Click, CommandSave_Click},
    Connection{"CommandSave", Event::KeyDown, Command_KeyDown},
    Connection{"CommandSaveAs", Event::Click, CommandSaveAs_Click},
    Connection{"CommandSaveAs", Event::KeyDown, Command_KeyDown},
    Connection{"CommandTemplate", Event::Click, CommandTemplate_Click},
    Connection{"CommandTemplate", Event::KeyDown, Command_KeyDown},
    Connection{"FIAdd", Event::Click, FIAdd_Click},
    Connection{"FIAdd", Event::KeyDown, Command_KeyDown},
    Connection{"FIDel", Event::Click, FIDel_Click},
    Connection{"FIDel", Event::KeyDown, Command_KeyDown},
    Connection{"FIScroll", Event::Change, FIScroll_Change},
    Connection{"FIScroll", Event::KeyDown, Command_KeyDown},
    Connection{"FldChange", Event::Click, FldChange_Click},
    Connection{"FldChange", Event::KeyDown, Command_KeyDown},
    Connection{"GrpExit", Event::Click, GrpExit_Click},
    Connection{"GrpExit", Event::KeyDown, Command_KeyDown},
    Connection{"HelpForm", Event::Resize, HelpForm_Resize},
    Connection{"HelpForm", Event::Unload, HelpForm_Unload},
    Connection{"HelpQuit", Event::Click, HelpQuit_Click},
    Connection{"List1", Event::Click, List1_Click},
    Connection{"List1", Event::DblClick, List1_DblClick},
    Connection{"List1", Event::GotFocus, List1_GotFocus},
    Connection{"List1", Event::LostFocus, List1_LostFocus},
    Connection{"List1", Event::KeyDown, List1_KeyDown},
    Connection{"List1", Event::KeyPress, List1_KeyPress},
    Connection{"List1", Event::ForeignKey, List1_ForeignKey},
    Connection{"List2", Event::Click, List2_Click},
    Connection{"List2", Event::DblClick, List2_DblClick},
    Connection{"List2", Event::GotFocus, List2_GotFocus},
    Connection{"List2", Event::LostFocus, List2_LostFocus},
    Connection{"List2", Event::KeyDown, List2_KeyDown},
    Connection{"List2", Event::KeyPress, List2_KeyPress},
    Connection{"List2", Event::MouseDown, List2_MouseDown},
    Connection{"LogoOff", Event::Click, LogoOff_Click},
    Connection{"LogoQuit", Event::Click, LogoQuit_Click},
    Connection{"PrintFrameCancel", Event::Click, PrintFrameCancel_Click},
    Connection{"PrintFrameIndent", Event::Click, PrintFrameIndent_Click},
    Connection{"PrintFramePrint", Event::Click, PrintFramePrint_Click},
    Connection{"PrintFrameToggler", Event::Click, PrintFrameToggler_Click},
    Connection{"PrintIndent", Event::LostFocus, PrintIndent_LostFocus},
    Connection{"PrintIndent", Event::KeyPress, PrintIndent_KeyPress},
    Connection{"RecoveryTimer", Event::Timer, RecoveryTimer_Timer},
    Connection{"TblFldDelete", Event::Click, TblFldDelete_Click},
    Connection{"TblFldDelete", Event::KeyDown, Command_KeyDown},
    Connection{"TblFldInsert", Event::Click, TblFldInsert_Click},
    Connection{"TblFldInsert", Event::KeyDown, Command_KeyDown},
    Connection{"TblFldNum", Event::Click, TblFldNum_Click},
    Connection{"TblFldNum", Event::GotFocus, TblFldNum_GotFocus},
    Connection{"TblFldNum", Event::LostFocus, TblFldNum_LostFocus},
    Connection{"TblFldNum", Event::KeyDown, TblFldNum_KeyDown},
    Connection{"Text1", Event::Change, Text1_Change},
    Connection{"Text1", Event::GotFocus, Text1_GotFocus},
    Connection{"Text1", Event::LostFocus, Text1_LostFocus},
    Connection{"Text1", Event::KeyDown, Text1_KeyDown},
    Connection{"Text1", Event::KeyPress, Text1_KeyPress},
    Connection{"Text1", Event::ForeignKey, Box_ForeignKey},
    Connection{"Text1", Event::ForeignPaste, Box_ForeignPaste},
    Connection{"Text2", Event::Change, Text2_Change},
    Connection{"Text2", Event::GotFocus, Text2_GotFocus},
    Connection{"Text2", Event::LostFocus, Text2_LostFocus},
    Connection{"Text2", Event::KeyDown, Text2_KeyDown},
    Connection{"Text2", Event::KeyPress, Text2_KeyPress},
    Connection{"Text2", Event::ForeignKey, Box_ForeignKey},
    Connection{"Text2", Event::ForeignPaste, Box_ForeignPaste},
    Connection{"Timer1", Event::Timer, Timer1_Timer},
};

// Each event of a control stands here once, with a procedure that takes what the event hands over.
constexpr bool IsStrictlySorted() {
    return std::adjacent_find(Connections.begin(), Connections.end(),
                              [](const Connection &a, const Connection &b) { return !(a < b); }) == Connections.end();
}

constexpr bool TakesItsArguments(const Connection &c) {
    switch (c.On) {
    case Event::KeyDown: return std::holds_alternative<KeyDownHandler>(c.Run);
    case Event::KeyPress: return std::holds_alternative<KeyPressHandler>(c.Run);
    case Event::ForeignKey: return std::holds_alternative<TextHandler>(c.Run);
    default: return std::holds_alternative<PlainHandler>(c.Run) || std::holds_alternative<IndexHandler>(c.Run);
    }
}

static_assert(IsStrictlySorted());
static_assert(std::all_of(Connections.begin(), Connections.end(), TakesItsArguments));

} // namespace

void ConnectMainWindow() { ConnectEvents(Connections); }
