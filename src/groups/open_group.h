// An open repeatable group: entering it, moving between its occurrences, leaving it. Insert, delete and jump:
// table_commands.h.
#pragma once

#include "platform/runtime.h"

#include <functional>

// Enters the group that an element starts. A group without members says so, a store that cannot be used gives its
// message; neither is entered.
void OpenGroup(Integer head);

// Event of GrpExit: stores the occurrence on screen and returns to the field list. Where it cannot be stored the group
// stays open, after the message.
void GrpExit_Click();

// GrpExit_Click where a group is open; false where it still is.
bool LeaveGroup();

// Leaves an open group without storing the occurrence on screen.
void AbandonGroup();

// Event of FldChange.
void FldChange_Click(Integer Index);

// The element that heads the open group.
Integer GroupHead();

// Puts a pending edit into the occurrence and that into the store, before another occurrence is shown.
void StoreShownOccurrence();

// Shows the loaded occurrence; the group remembers it.
void ShowLoadedOccurrence();

// Reads an occurrence and shows it.
void ShowOccurrence(Integer index);

// Rewrites the rows of the open group from GroupItems().
void ShowFieldValueLine();

// Tells the user that a work file could not be used.
void TellWorkFileError(Integer error);

// Runs a group command; an error becomes its message, and the occurrence stays on screen.
void RunGroupCommand(const std::function<void()> &command);

// Takes an open group off the screen without storing anything.
void CloseGroupScreen();
