// The main window's controls (main_window.h).
#include "main/main_window.h"

#include "model/field_model.h"

QuintaveForm Quintave;

Control &ActiveRows() { return Quintave.List1.at(static_cast<std::size_t>(ActiveList)); }

Control &ActiveChoices() { return Quintave.List2.at(static_cast<std::size_t>(ActiveList)); }

Control &OtherBox(Integer list) { return Quintave.Text2.at(static_cast<std::size_t>(list) + 2); }

Control &ValueBox(Integer typeCode) { return Quintave.Text1.at(static_cast<std::size_t>(ActiveList - typeCode)); }
