// The resource directory of the user's own, filled from the installed one that nobody may write in.
#pragma once

#include <string>

// The user's own resource directory, made and filled where it is not: each file of the installed directory is given to
// it once, so what the user changed or deleted stays so, and what a later version brings comes too. Where that fails
// the user is told. "" where no home is known.
std::string UserResources(const std::string &installed);
