// The one question of a load: what to do where the file and the screen both hold data.
#pragma once

#include "platform/runtime.h"

#include <string>
#include <string_view>

inline constexpr Integer Undecided = -1;
inline constexpr Integer Overwrite = 0;
inline constexpr Integer AddInstances = 1;

// Title of that question.
inline constexpr std::string_view OverwriteTitle = "Overwrite or 'Add To'";

// The user's answer for the present load; Overwrite from the start where the template turns instances off.
extern Integer MergeFlag;

// Told of each value that a later one replaces although nobody was asked; none while nobody wants to know.
extern void (*OnReplacedValue)(Integer element);

// A load begins.
void StartMerge();

// Asks where nothing was decided yet in this load; about a field that holds a value, about a group that holds data.
void AskOverwriteFields();
void AskOverwriteGroups();

// A record's title is nowhere in the template: whether to go on without it.
bool MayDropRecord(const std::string &title);
