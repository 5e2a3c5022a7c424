// Finding the choice that a text means.
#pragma once

#include "platform/runtime.h"

#include <string>
#include <string_view>
#include <vector>

// The entry means the open option (the clearing one); letters in either case, blanks around.
bool IsOther(std::string_view choice);
bool IsClear(std::string_view choice);

// The choices of a LIST element from its work file; error 53 where that is missing.
std::vector<std::string> ReadChoiceFile(Integer element);

// How many characters of a choice count: all of them, or as many as a member of a group has cells.
long ComparedLength(Integer element);

// The position of the choice that equals a text, with or without the blanks at its end, else of the open option, else
// -1; -1 for an empty text.
Integer ChoiceOf(const std::vector<std::string> &choices, std::string_view text, long comparedLength);

// The same for the text of a record and the choices of a LIST element; error 53 where its file is missing. For a member
// a whole choice counts, too, and before those that are cut to its cells. The choices are read once and kept until they
// are forgotten, so that many texts cost no more than they are.
Integer ChoiceOf(Integer element, std::string_view text);
void ForgetChoices();

// Matches a value that was loaded into a field against its choices: the position goes into FieldInfo(). A value that no
// choice of a closed list equals is refused, told and emptied with all its instances. Other elements are left
// alone; error 53 where the choice file is missing.
void MatchChoiceValue(Integer element);

// The same for the text of a record and a group member; false where it is refused.
bool MatchMemberChoice(Integer member, const std::string &text);
