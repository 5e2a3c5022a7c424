// Loading a Fields Template File onto the screen, at the start and through the template command. Reading the file:
// model/template_reader.h; the tables it fills: model/field_tables.h.
#pragma once

#include "platform/runtime.h"

#include <string>

// On the first activation of the main window: checks the header of the template that the resource table names, which is
// TemplateDir & TemplateName, and loads it. A wrong header ends the program after its message: false.
bool LoadFirstTemplate();

// Checks the header of a template, which may turn instances off, and loads it. Where that fails the old one stays,
// after the message: false.
bool LoadTemplateAt(const std::string &directory, const std::string &name);

// A template is loaded, be it empty, or at the start one is there to be loaded.
bool TemplateIsThere();

// Loads TemplateDir & TemplateName; a file that does not exist empties the model. A template that cannot be read to its
// end, or whose work files cannot be written, is refused with a message: false, and nothing has changed.
bool LoadTemplateFile();

// Event of CommandTemplate: offers to save, empties the entries and asks for another template.
void CommandTemplate_Click();

// The caption of editframe while no report was loaded or saved.
void ShowTemplateCaption();
