#pragma once

namespace tavelo {

/// The command line as Qt sees it: the program's name alone. Qt may change it and keeps a reference to it, so
/// it must outlive the application object.
struct DesktopArguments {
  int count = 1;
  char name[7] = "tavelo";
  char* values[2] = {name, nullptr};
};

}  // namespace tavelo
