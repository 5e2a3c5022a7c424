// The window's tests run offscreen, each in a process of its own with an application of its own, started as the program
// starts it.
#include "platform/program.h"

#include <gtest/gtest.h>

#include <QByteArray>

// The leak check of the sanitizers asks for this by name: the font library keeps what it has read until the end.
extern "C" const char *__lsan_default_suppressions();
extern "C" const char *__lsan_default_suppressions() { return "leak:libfontconfig\n"; }

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", QByteArray("offscreen"));
    StartProgram(argc, argv);
    return RUN_ALL_TESTS();
}
