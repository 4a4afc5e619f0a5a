#include "support/guitestmain.h"

int main(int argc, char** argv)
{
    return runWithGuiApplication(argc, argv);
}
