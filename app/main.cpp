#include "app/CommandLine.h"

int main(int argc, char** argv) { return tavelo::runCommandLine(argc, argv); }
