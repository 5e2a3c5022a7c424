// What quintave-cli leaves nowhere: the directory of its work files, and outputs that did not become whole. A second
// process removes them when the first one has ended, in whatever way it did.
#pragma once

#include <string>

// The directory, ending in "/", made at the first call for the user alone. Throws the error of making it.
const std::string &WorkFolder();

// A file that is to go when the program ends, if it is still there then.
void RemoveAtEnd(const std::string &path);

// Waits until everything has been removed.
void RemoveWorkFolder();
