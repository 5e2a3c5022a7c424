// The tables of the field model, sized and filled from a template that was read. Reading it: template_reader.h; what
// the screen shows of it: main/template_command.h.
#pragma once

#include "model/template_reader.h"
#include "platform/runtime.h"

#include <string>
#include <vector>

// Puts a template in the place of the one before, TemplateName in TemplateDir naming it: no entries, the field list in
// view. choiceWidth gives the width of a choice list in twips, more than 0; null where nobody shows one.
void FillTables(const TemplateContent &content, Integer (*choiceWidth)(const std::vector<std::string> &choices));

// Empties all entries: rows, choices and the stores of groups. The error of the first store that could not be blanked,
// all others being blank then; 0 for none.
Integer ClearEntries();
