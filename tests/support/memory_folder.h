// Folders of tests in memory, for tests that write thousands of files: putting each on a disk would take minutes.
#pragma once

#include <cstdlib>
#include <filesystem>

// To be a test's first base, so that it comes before the folder. Without such memory the folder lies where it always
// does.
struct InMemory {
    InMemory() {
        if (std::filesystem::is_directory("/dev/shm")) setenv("TMPDIR", "/dev/shm", 1);
    }
};
