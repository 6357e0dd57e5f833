#pragma once

#include <cstddef>
#include <exception>
#include <string>
#include <utility>

namespace tavelo::recognition {

/// Calls the library and returns what an exception says that leaves it; empty when none does.
template <class Call>
std::string guarded(Call&& call) {
  constexpr std::size_t longest = 300;
  try {
    std::forward<Call>(call)();
    return {};
  } catch (const std::exception& error) {
    const std::string said = error.what();
    return said.empty() ? "the library failed" : said.substr(0, longest);
  } catch (...) {
    return "the library failed";
  }
}

}  // namespace tavelo::recognition
