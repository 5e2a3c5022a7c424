// The controls of several instances of one field, which share its value. The value as a text: instance_text.h.
#pragma once

#include "platform/runtime.h"

#include <string>

// The instance controls back to one instance.
void ResetInstanceControls();

// The instance controls for a row: whether there are such controls for it at all, and where they begin again, its count
// of instances.
void ShowInstanceControls(Integer element, bool restart);

// What becomes of the instance shown: its text is stored, it is removed, it is loaded into the entry controls.
enum class InstanceAct { Store, Delete, Load };

// A store and a removal rewrite the row.
void ShowFieldInstance(InstanceAct act, const std::string &text = "");

// Shows another one of the instances that the selected row's value has; what is shown is not stored.
void ShowInstance(Integer number);

// Events of the instance controls: another instance behind the last, the shown one removed, another one shown.
void FIAdd_Click();
void FIDel_Click();
void FIScroll_Change();
