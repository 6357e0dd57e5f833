#include "app/DesktopCommands.h"

namespace tavelo {

DesktopCommands desktopCommands() { return {}; }

}  // namespace tavelo
