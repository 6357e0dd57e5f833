#include "commands/DesktopCommands.h"

namespace tavelo {

DesktopCommands desktopCommands() { return {}; }

}  // namespace tavelo
