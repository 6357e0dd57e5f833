#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <sys/types.h>

#include "platform/posix/FileDescriptor.h"

namespace tavelo::posix {

/// A program that runs beside ours, with pipes to its standard input, output and error. It inherits nothing
/// else. Never blocks: the pipes' ends here are non-blocking. Use it on one thread, which must block SIGPIPE.
class ChildProcess final {
 public:
  /// Starts `program`. Null if that fails; then `failure` says why, in English.
  static std::unique_ptr<ChildProcess> start(const std::filesystem::path& program,
                                             const std::vector<std::string>& arguments, std::string& failure);

  /// Closes the pipes, kills the process and takes its status, so that nothing of it is left.
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// What we write to, and what we read from.
  int input() const { return input_.get(); }
  int output() const { return output_.get(); }
  int errors() const { return errors_.get(); }

  /// Kills the process if it still runs, and says how it ended, in English.
  std::string end();

 private:
  ChildProcess() = default;

  pid_t process_ = 0;
  FileDescriptor input_;
  FileDescriptor output_;
  FileDescriptor errors_;
};

/// A pipe whose ends no other program inherits. Both are -1 if there are no more descriptors.
struct Pipe {
  FileDescriptor readEnd;
  FileDescriptor writeEnd;

  static Pipe open();
};

/// Makes reads and writes return at once.
void makeNonBlocking(int descriptor);

}  // namespace tavelo::posix
