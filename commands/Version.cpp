#include "commands/Version.h"

namespace tavelo {

const char* programVersion() { return TAVELO_VERSION; }

}  // namespace tavelo
