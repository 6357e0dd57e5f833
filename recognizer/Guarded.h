#pragma once

#include <cstddef>
#include <exception>
#include <string>
#include <utility>

namespace tavelo::recognition {

/// What an exception of a library says, short enough for a message. Long ones begin with where it was thrown.
inline std::string shortReason(std::string said) {
  constexpr std::size_t longest = 200;
  if (said.empty()) return "the library failed";
  return said.size() <= longest ? said : "… " + said.substr(said.size() - longest);
}

/// Calls the library and returns what an exception says that leaves it; empty when none does.
template <class Call>
std::string guarded(Call&& call) {
  try {
    std::forward<Call>(call)();
    return {};
  } catch (const std::exception& error) {
    return shortReason(error.what());
  } catch (...) {
    return "the library failed";
  }
}

}  // namespace tavelo::recognition
