// Finding the element that a record of a report belongs to, by its title and the titles above it. The cost of a look-up
// depends on the depth of the record alone.
#pragma once

#include "platform/runtime.h"

#include <string_view>

// What a record may belong to.
enum class Target { Field, Member, Group };

// Builds the index of the loaded template.
void BuildTitleIndex();

// A report is about to be read: no title was read yet at any level.
void ForgetTitlesRead();

// A record's title was read at a level (0 or more, at most DeepestLevel).
void NoteTitleRead(Integer level, std::string_view title);

// The first element, in template order, with this level and title: first one whose path shows, at every level from 1
// on, the titles last read; else one whose enclosing section breaks and group do, because a report leaves out what is
// empty. A Member must belong to the group that an element starts; a Field has a row of its own. 0 for none.
Integer FindElement(Integer level, std::string_view title, Target target, Integer group = 0);
