#pragma once

#include <QGuiApplication>

#include <gtest/gtest.h>

// The main of a test executable that draws: fonts, images, PDF and printing need the GUI
// application, though nothing is shown.
inline int runWithGuiApplication(int argc, char** argv)
{
    // Test discovery runs the binary too, outside CTest's environment.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
