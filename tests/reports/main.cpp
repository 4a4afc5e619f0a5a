#include <QGuiApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // Test discovery runs this binary too, outside CTest's environment.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Fonts and PDF pages need the GUI application, though nothing is shown.
    QGuiApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
