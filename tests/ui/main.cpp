#include "ui/tallyrunapplication.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // Test discovery runs this binary too, outside CTest's environment.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    TallyrunApplication application(argc, argv);
    // What reaches the event loop is a fault of the screen under test: fail it rather than wait
    // on a modal box nobody can click.
    application.setMessagePresenter(
        [](const QString& message) { ADD_FAILURE() << "Reached the event loop: " << qPrintable(message); });
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
