// Several instances of one field: they share the field's value, joined by "|".
#pragma once

#include "platform/runtime.h"

#include <string>
#include <string_view>

// The instance of that number (from 1) in a value; "" past the last.
std::string InstanceText(std::string_view value, std::int32_t number);

// The value with a text as the instance of that number; past the last it becomes one more.
std::string WithInstance(std::string_view value, std::int32_t number, const std::string &text);

// The number of instances in a value: one more than it has "|".
Integer InstanceCount(std::string_view value);

// The instance controls back to one instance.
void ResetInstanceControls();

// The instance controls for a row: its count of instances, and whether there are such controls for it at all.
void ShowInstanceControls(Integer element, Integer mode);

// Load not 0: shows the instance whose number FILabel(1) tells in the entry controls. Otherwise stores: Delete True
// removes that instance, any other value puts TmpStr in its place; the row is rewritten.
void ShowFieldInstance(Integer Delete, Integer Load);

// Events of the instance controls: another instance behind the last, the shown one removed, another one shown.
void FIAdd_Click();
void FIDel_Click();
void FIScroll_Change();
