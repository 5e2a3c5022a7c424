// The command that opens a report or merges it into the entries, and the report loaded at the start.
#pragma once

#include <string>

// Event of CommandAdd.
void CommandAdd_Click();

// Loads the report named as the program's argument, else the one the resource table names, else none.
void LoadStartFile(const std::string &argument);
