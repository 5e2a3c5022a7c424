// What both fronts' dialogues share (dialogs.h).
#include "platform/dialogs.h"

std::string PickFile(CommonDialog &dialog, void (*show)(CommonDialog &)) {
    const Integer fault = FaultOf([&] { show(dialog); });
    if (fault == 0) return dialog.FileName;
    MsgBox("Error: " + ErrorText(fault), CriticalIcon, "Quintave");
    return "";
}
