#pragma once

#include <functional>
#include <istream>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tavelo::recognition {

/// What we read of an ONNX file: its metadata. A plain value; any thread.
///
/// We look at the container only, never into the network, so that a damaged or hostile file costs little time
/// and at most a few megabytes.
struct OnnxFile {
  std::map<std::string, std::string, std::less<>> metadata;

  /// Reads a container from the stream's position to its end. Absent unless it is whole, with a network in it
  /// and with metadata of a sensible size.
  static std::optional<OnnxFile> read(std::istream& stream);

  /// A metadata value as a number; absent when it is missing or not a plain decimal number.
  std::optional<long> number(std::string_view key) const;

  bool has(std::string_view key) const { return metadata.contains(key); }
};

}  // namespace tavelo::recognition
