#pragma once

namespace tavelo {

/// The version, and the commit if this is not a release: "1.0.0-rc1 (0123abcd)".
const char* programVersion();

}  // namespace tavelo
