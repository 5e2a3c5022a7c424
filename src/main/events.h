// The one table that connects events to procedures.
#pragma once

// Puts the table in force.
void ConnectMainWindow();
