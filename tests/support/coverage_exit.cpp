// In a build that counts the lines passed: a program that a signal ends writes its counts down before it goes.
#include <cstdlib>

extern "C" void __gcov_dump();
extern "C" [[noreturn]] void __real__Exit(int status);

extern "C" [[noreturn]] void __wrap__Exit(int status) {
    __gcov_dump();
    __real__Exit(status);
}
