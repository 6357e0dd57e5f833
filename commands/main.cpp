#include "commands/CommandLine.h"
#include "commands/DesktopCommands.h"

int main(int argc, char** argv) { return tavelo::runCommandLine(argc, argv, tavelo::desktopCommands()); }
