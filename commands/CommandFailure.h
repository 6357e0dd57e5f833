#pragma once

#include <stdexcept>
#include <string>

namespace tavelo {

/// Why a command failed, in one line for standard error. Stays within the command line.
class CommandFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace tavelo
