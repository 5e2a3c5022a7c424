// The way back: every step that changed entries can be undone, and done again. Recorded where a step ends
// (platform/controls.h), by looking for what is different, so that no command knows of it. What is kept of a step are
// the former values where they differ.
//
// The name that Save writes to is the present one, also behind a save that came later, until a step is undone that
// changed it itself: a load, a reset, another template. A state is saved where it was when it arose, or was saved last
// under that name.
#pragma once

#include <string>

// Looks at the entries behind a step. The first look is at the state that nothing leads back from.
void RecordStep(const std::string &command);

// Events of the two keys: undoes the last step, or does again the one undone last. Nothing happens without one, or in
// the middle of another command; where the former state cannot be put back a message says why, and all is as before.
void Undo_Click();
void Redo_Click();

// Bytes that the steps hold, for tests.
std::size_t HistoryBytes();
