// Reading a report file into the entry screen.
#pragma once

#include "platform/items.h"
#include "platform/runtime.h"

// How far a load came. Refused: nothing of the file was placed. Stopped: by the user or by an error, what was placed
// stays.
enum class LoadResult { Refused, Stopped, Whole };

// Reads ReportFileDir & ReportFileName on top of what is on screen. Where values meet, the user is asked once whether
// to overwrite or to add instances. CurrentField must name no row that the load could rewrite (the caller sets it).
LoadResult LoadReportFile();

// The same for a report in hand; ReportFileDir & ReportFileName still name it.
LoadResult LoadReport(ItemInput input);

// The line on which the record being placed begins, counted from 1; for those who tell of it.
long RecordLine();
