#pragma once

#include <string>
#include <string_view>

namespace tavelo {

/// A line on standard error that shows how far a command has come; nothing if that is no terminal. Clear it
/// before anything else is printed.
class ProgressBar final {
 public:
  ProgressBar();
  ~ProgressBar() { clear(); }
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  /// `part` is 0 to 1; `what` is one word or two.
  void show(double part, std::string_view what);
  void clear();

 private:
  const bool isTerminal_;
  /// What the line holds now.
  std::string shown_;
};

}  // namespace tavelo
