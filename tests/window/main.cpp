// The window's tests run offscreen, each in a process of its own with an application of its own, started as the program
// starts it.
#include "platform/program.h"

#include <gtest/gtest.h>

#include <QByteArray>

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", QByteArray("offscreen"));
    StartProgram(argc, argv);
    return RUN_ALL_TESTS();
}
