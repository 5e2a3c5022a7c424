// The rooms at work without a window: a template in the model, reports loaded one after the other.
#pragma once

#include "platform/items.h"

#include <string>
#include <string_view>

struct Arguments;
struct ShownMessage;

// Loads the template of this path and these bytes, its work files into the program's own directory. False after the
// message of what refuses it, which goes to the procedure that answers messages (platform/console/answers.h).
bool LoadTemplate(const std::string &path, const std::string &bytes);

// The template that --template names; false after the message of what keeps it from being used.
bool LoadTemplateOf(const Arguments &arguments);

// The line of the end mark (1A hex) that keeps something behind it from being read; 0 where there is none.
long CuttingLine(std::string_view bytes);
inline constexpr std::string_view CutByEndMark = "The byte 1A ends the file here: what stands behind it is not read";

// No entries, as after Reset.
void EmptyEntries();

// The error that a message about a load tells of; 0 for any other message.
Integer ToldError(const ShownMessage &message);

// The report itself is at fault, and not the file or the disk.
bool IsReportFault(Integer number);

// "Citation / Title" of an element, its enclosing sections and group first.
std::string TitlePath(Integer element);
