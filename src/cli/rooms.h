// The rooms at work without a window: a template in the model, reports loaded one after the other.
#pragma once

#include "platform/dialogs.h"
#include "platform/items.h"
#include "platform/runtime.h"

#include <string>
#include <string_view>

struct Arguments;
struct LoadNotice;

// Loads the template of this path and these bytes, its work files into memory. What refuses it; "" where it was loaded.
std::string LoadTemplate(const std::string &path, const std::string &bytes);

// The template that --template names; false after the message of what keeps it from being used.
bool LoadTemplateOf(const Arguments &arguments);

// The line of the end mark (1A hex) that keeps something behind it from being read; 0 where there is none.
long CuttingLine(std::string_view bytes);
inline constexpr std::string_view NotUtf8Here =
    "This file says that it is UTF-8, and in this line it is not. What is no UTF-8 was read as Windows-1252.";
inline constexpr std::string_view CutByEndMark = "The byte 1A ends the file here: what stands behind it is not read";

// The answer that goes on with everything else in the report, by the buttons of the notice.
Answer GoOn(const LoadNotice &notice);

// The report itself is at fault, and not the file or the disk.
bool IsReportFault(Integer number);

// "Citation / Title" of an element, its enclosing sections and group first.
std::string TitlePath(Integer element);
