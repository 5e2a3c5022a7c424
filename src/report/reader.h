// Reading a report into the entries, record by record.
#pragma once

#include "platform/items.h"
#include "platform/runtime.h"

struct LoadFront; // report/notices.h

// How far a load came. Refused: nothing of the file was placed. Stopped: by the user or by an error, what was placed
// stays. Partial: it came to its end, but something of the file is not in the entries.
enum class LoadResult { Refused, Stopped, Partial, Whole };

// Reads a report on top of the entries. Where values meet, the front is asked once whether to overwrite or to add
// instances. Choice lists are those looked up before; ForgetChoices() where their files may have changed.
LoadResult ReadReport(ItemInput &input, const LoadFront &front);
