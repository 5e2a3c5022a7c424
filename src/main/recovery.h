// Unsaved entries that outlive the program: kept in the resource directory while work goes on, and offered at the next
// start. They are removed where they were saved or the user gave them up. What is kept: recovery_entries.h.
#pragma once

#include <string>

// At the start, before any work file is deleted: offers what an earlier session has left. `report` is the file that the
// start would open, which stays unopened then. True where the entries are back, and their template with them, or where
// the program was ended before the answer: nothing else is to be loaded then.
bool OfferRecovery(const std::string &report);

// Event of RecoveryTimer: keeps the entries where they changed, not more often than every ten seconds.
void RecoveryTimer_Timer();

// A question or a file dialogue is about to open, over which the timer keeps nothing: keeps the entries as they are
// now, all of them whole.
void KeepBeforeAsking();

// Removes what was kept where there are no unsaved entries any more.
void SettleRecovery();

// The user does not want the entries to be saved. They are gone only when the program ends without a further change: a
// session of the desktop that is about to end may go on.
void GiveUpEntries();

// The program ends. Unsaved entries that nobody was asked about, as when a signal ends it, are kept.
void EndRecovery();
