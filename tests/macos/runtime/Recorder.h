#pragma once

#include <cstdint>
#include <functional>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace tavelo::fakes {

/// A call of a method that its fake class only declares.
class Call {
 public:
  Call(std::string text, void* receiver, std::vector<void*> arguments, void* result)
      : text(std::move(text)), receiver(receiver), arguments_(std::move(arguments)), result_(result) {}

  /// For example "-[AVAudioEngine prepare]" or "+[NSEvent removeMonitor:<Monitor>]".
  const std::string text;
  void* const receiver;

  template <class T>
  T argument(std::size_t index) const {
    return *static_cast<T*>(arguments_.at(index));
  }

  /// Gives the result, which is otherwise nil or zero, or the receiver for an initialiser. Objects are plain
  /// pointers that must outlive the caller's use.
  template <class T>
  void give(T value) {
    if constexpr (std::is_integral_v<T> || std::is_enum_v<T>) {
      *static_cast<std::uint64_t*>(result_) = static_cast<std::uint64_t>(value);
    } else {
      *static_cast<T*>(result_) = value;
    }
  }

 private:
  const std::vector<void*> arguments_;
  void* const result_;
};

/// Answers calls of the method with this selector, in place of nothing. An empty function removes the answer.
/// Any thread.
void answer(const std::string& selector, std::function<void(Call&)> function);

/// Everything recorded since the last call, in order, and forgets it. Any thread.
std::vector<std::string> takeCalls();

/// Adds a line. Any thread.
void record(std::string text);

/// Adds the call of a C function, with its arguments.
template <class... Arguments>
void recordFunction(const char* name, const Arguments&... arguments) {
  std::ostringstream text;
  const char* separator = "";
  text << name << "(";
  ((text << std::exchange(separator, ", ") << arguments), ...);
  text << ")";
  record(text.str());
}

/// An object as it appears in the record.
std::string describe(const void* object);

/// Runs `function` at the end of the test, for what a fake holds until then.
void atEndOfTest(std::function<void()> function);

/// Forgets answers and records, and runs what was left for the end of the test.
void resetRecorder();

}  // namespace tavelo::fakes
