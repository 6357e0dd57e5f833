#include "app/CommandLine.h"
#include "app/DesktopCommands.h"

int main(int argc, char** argv) { return tavelo::runCommandLine(argc, argv, tavelo::desktopCommands()); }
