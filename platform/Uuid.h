#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavelo::platform {

/// A universally unique identifier, 128 bits. A plain value; the default is all zero.
class Uuid final {
 public:
  Uuid() = default;

  /// A new random identifier (version 4). Any thread.
  static Uuid random();

  /// Reads the 36-character form, in either case; absent for anything else.
  static std::optional<Uuid> parse(std::string_view text);

  /// The 36-character form, in upper case.
  std::string string() const;

  bool operator==(const Uuid&) const = default;

 private:
  std::array<std::uint8_t, 16> bytes_{};
};

}  // namespace tavelo::platform
