// The table of commands, and which procedure runs when something happens to a control (commands.h).
#include "main/commands.h"

#include "form/main_window.h"
#include "groups/open_group.h"
#include "groups/table_commands.h"
#include "help/help_window.h"
#include "main/given_report.h"
#include "main/history.h"
#include "main/recovery.h"
#include "main/session.h"
#include "main/start_up.h"
#include "main/template_command.h"
#include "model/field_model.h"
#include "print/print_panel.h"
#include "report/load_command.h"
#include "report/save_command.h"
#include "screen/command_keys.h"
#include "screen/field_list.h"
#include "screen/instances.h"
#include "screen/selection.h"
#include "screen/value_entry.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace {

void GrpCommands_Click() { SetFocus(Quintave.TblFldNum); }

void KeyList_Click() {
    constexpr std::size_t Column = 10;
    std::string text = NL + "Keys";
    bool inGroup = false;
    for (const KeyLine &line : KeyLines()) {
        if (line.InGroupOnly && !inGroup) text += NL + NL + "In a group";
        inGroup = line.InGroupOnly;
        text += NL + "  " + line.Key + std::string(Column - line.Key.size(), ' ') + line.Does;
    }
    OpenHelpOn(text);
}

constexpr std::array CommandTable{
    Command{"CommandAdd", &Quintave.CommandAdd, OpenCaption,
            "Open a saved report, or merge one into what is on the screen", CommandAdd_Click},
    Command{"CommandTemplate", &Quintave.CommandTemplate, "^Field Template", "Work with another template",
            CommandTemplate_Click},
    Command{"CommandPrint", &Quintave.CommandPrint, "^Print", "Print to the printer or to a text file",
            CommandPrint_Click},
    Command{"CommandQuit", &Quintave.CommandQuit, "^Quit", "End the program", CommandQuit_Click},
    Command{"CommandReset", &Quintave.CommandReset, "^Reset/Clear", "Empty all fields", CommandReset_Click, false,
            false},
    Command{"CommandSave", &Quintave.CommandSave, "^Save", "Save the report", CommandSave_Click},
    Command{"CommandSaveAs", &Quintave.CommandSaveAs, "SaveAs", "Save the report under another name",
            CommandSaveAs_Click},
    Command{"CommandMoreHelp", &Quintave.CommandMoreHelp, "More Help", "Show the help text of this field",
            CommandMoreHelp_Click},
    Command{"KeyList", &Quintave.KeyList, "", "Show the keys of all commands", KeyList_Click, false, false, F1Key},
    Command{"UndoKey", &Quintave.UndoKey, "", "Undo the last change of the entries", Undo_Click, false, false, 'Z'},
    Command{"RedoKey", &Quintave.RedoKey, "", "Do again what was undone last", Redo_Click, false, false, 'Y'},
    Command{"FIAdd", &Quintave.FIAdd, "Add", "Add an instance of this field", FIAdd_Click},
    Command{"FIDel", &Quintave.FIDel, "Delete", "Delete the instance that is shown", FIDel_Click},
    Command{"FldChange", &Quintave.FldChange[Bottom], "^Bottom", "Go to the last occurrence", FldChange_Click, true},
    Command{"TblFldDelete", &Quintave.TblFldDelete, "^Delete", "Delete this occurrence", TblFldDelete_Click, true},
    Command{"GrpExit", &Quintave.GrpExit, "^Exit From Group", "Go back to the list of fields", GrpExit_Click, true},
    Command{"GrpCommands", &Quintave.GrpCommands, "^Group", "Go to the box with the occurrence's number",
            GrpCommands_Click, true, false},
    Command{"TblFldInsert", &Quintave.TblFldInsert, "^Insert", "Insert an empty occurrence before this one",
            TblFldInsert_Click, true},
    Command{"FldChange", &Quintave.FldChange[Next], "^Next",
            "Go to the next occurrence; after the last one, to a new one", FldChange_Click, true},
    Command{"FldChange", &Quintave.FldChange[Top], "^Top", "Go to the first occurrence", FldChange_Click, true},
    Command{"FldChange", &Quintave.FldChange[Previous], "^V-Prev", "Go to the occurrence before this one",
            FldChange_Click, true},
    // The start-up frame and the print panel: nothing runs behind them, so keys are not handed on.
    Command{"LogoOff", &Quintave.LogoOff, "Use Quintave", "Begin to work", LogoOff_Click, false, false},
    Command{"LogoQuit", &Quintave.LogoQuit, "QUIT", "End the program", LogoQuit_Click, false, false},
    Command{"PrintFrameIndent", &Quintave.PrintFrameIndent, NoIndent,
            "Choose the next way to indent sections and fields", PrintFrameIndent_Click, false, false},
    Command{"PrintFrameToggler", &Quintave.PrintFrameToggler, OnTitleLine, "Choose where the data start",
            PrintFrameToggler_Click, false, false},
    Command{"PrintFramePrint", &Quintave.PrintFramePrint[ToPrinter], "PRINT (to default printer)",
            "Print on the default printer", PrintFramePrint_Click, false, false},
    Command{"PrintFramePrint", &Quintave.PrintFramePrint[ToFile], "PRINT (one copy to a file)", "Write a text file",
            PrintFramePrint_Click, false, false},
    Command{"PrintFrameCancel", &Quintave.PrintFrameCancel, "Cancel ", "Go back without printing",
            PrintFrameCancel_Click, false, false},
};

// Everything else that can happen to a control.
constexpr std::array Others{
    Connection{"FIScroll", Event::Change, FIScroll_Change},
    Connection{"FIScroll", Event::KeyDown, Command_KeyDown},
    Connection{"GivenTimer", Event::Timer, GivenTimer_Timer},
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
    Connection{"List2", Event::ForeignKey, List2_ForeignKey},
    Connection{"PrintIndent", Event::LostFocus, PrintIndent_LostFocus},
    Connection{"PrintIndent", Event::KeyPress, PrintIndent_KeyPress},
    Connection{"RecoveryTimer", Event::Timer, RecoveryTimer_Timer},
    Connection{"TblFldNum", Event::Click, TblFldNum_Click},
    Connection{"TblFldNum", Event::GotFocus, TblFldNum_GotFocus},
    Connection{"TblFldNum", Event::LostFocus, TblFldNum_LostFocus},
    Connection{"TblFldNum", Event::KeyDown, TblFldNum_KeyDown},
    Connection{"Text1", Event::Change, Text1_Change},
    Connection{"Text1", Event::GotFocus, Text1_GotFocus},
    Connection{"Text1", Event::LostFocus, Text1_LostFocus},
    Connection{"Text1", Event::KeyDown, Text1_KeyDown},
    Connection{"Text1", Event::KeyPress, Text1_KeyPress},
    Connection{"Text1", Event::Pasted, Box_Pasted},
    Connection{"Text2", Event::Change, Text2_Change},
    Connection{"Text2", Event::GotFocus, Text2_GotFocus},
    Connection{"Text2", Event::LostFocus, Text2_LostFocus},
    Connection{"Text2", Event::KeyDown, Text2_KeyDown},
    Connection{"Text2", Event::KeyPress, Text2_KeyPress},
    Connection{"Text2", Event::Pasted, Box_Pasted},
    Connection{"Timer1", Event::Timer, Timer1_Timer},
};

// Each event of a control stands there once, with a procedure that takes what the event hands over.
constexpr bool IsStrictlySorted() {
    return std::adjacent_find(Others.begin(), Others.end(),
                              [](const Connection &a, const Connection &b) { return !(a < b); }) == Others.end();
}

constexpr bool IsNoCommands(const Connection &c) {
    return std::none_of(CommandTable.begin(), CommandTable.end(), [&](const Command &command) {
        return command.Name == c.Name && (c.On == Event::Click || c.On == Event::KeyDown);
    });
}

constexpr bool IsOneOfItsKind(const Command &command) {
    return std::none_of(CommandTable.begin(), CommandTable.end(), [&](const Command &other) {
        const bool sameKey = KeyOf(command) != 0 && KeyOf(command) == KeyOf(other);
        return &command != &other && (command.Of == other.Of || sameKey);
    });
}

constexpr bool RunsAsClick(const Command &command) {
    return std::holds_alternative<PlainHandler>(command.Run) || std::holds_alternative<IndexHandler>(command.Run);
}

constexpr bool TakesItsArguments(const Connection &c) {
    switch (c.On) {
    case Event::KeyDown: return std::holds_alternative<KeyDownHandler>(c.Run);
    case Event::KeyPress: return std::holds_alternative<KeyPressHandler>(c.Run);
    case Event::ForeignKey:
    case Event::Pasted: return std::holds_alternative<TextHandler>(c.Run);
    default: return std::holds_alternative<PlainHandler>(c.Run) || std::holds_alternative<IndexHandler>(c.Run);
    }
}

static_assert(IsStrictlySorted());
static_assert(std::all_of(Others.begin(), Others.end(), IsNoCommands));
static_assert(std::all_of(Others.begin(), Others.end(), TakesItsArguments));
static_assert(std::all_of(CommandTable.begin(), CommandTable.end(), IsOneOfItsKind));
static_assert(std::all_of(CommandTable.begin(), CommandTable.end(), RunsAsClick));

std::vector<Connection> AllConnections() {
    std::vector<Connection> all(Others.begin(), Others.end());
    for (const Command &command : CommandTable) {
        all.push_back({command.Name, Event::Click, command.Run});
        if (command.HandsKeysOn) all.push_back({command.Name, Event::KeyDown, Command_KeyDown});
    }
    std::stable_sort(all.begin(), all.end()); // the buttons of a control array have one handler
    return all;
}

std::vector<Shortcut> Shortcuts() {
    std::vector<Shortcut> shortcuts;
    for (const Command &command : CommandTable)
        if (KeyOf(command) != 0) shortcuts.push_back({KeyOf(command), command.InGroupOnly, command.Of});
    return shortcuts;
}

} // namespace

std::span<const Command> Commands() { return CommandTable; }

std::vector<KeyLine> KeyLines() {
    std::map<std::pair<bool, Integer>, KeyLine> sorted;
    for (const Command &command : CommandTable) {
        const Integer key = KeyOf(command);
        const std::string name = key == F1Key ? "F1" : std::string(1, static_cast<char>(key));
        if (key != 0)
            sorted[{command.InGroupOnly, key}] = {"Ctrl+" + name, std::string(command.Hint), command.InGroupOnly};
    }
    std::vector<KeyLine> lines;
    lines.reserve(sorted.size());
    for (const auto &[key, line] : sorted) lines.push_back(line);
    return lines;
}

void ConnectMainWindow() {
    static const std::vector<Connection> connections = AllConnections();
    static const std::vector<Shortcut> shortcuts = Shortcuts();
    for (const Command &command : CommandTable) {
        SetCaption(*command.Of, command.Caption);
        command.Of->Hint = command.Hint;
    }
    ConnectEvents(connections);
    ConnectShortcuts(shortcuts);
    ConnectSteps(RecordStep);
}
