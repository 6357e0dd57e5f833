#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace tavelo::recordings {

/// What was said in recordings: lines with a recording's name, a tab and its words. A plain value.
class Transcripts final {
 public:
  /// Reads such lines, or says in one clause what is wrong with them.
  static std::variant<Transcripts, std::string> parse(std::string_view lines);

  /// What was said in the recording. The name may be the path as it stands here, the name of the file, or
  /// that without its extension; it may be composed or decomposed (a Mac's file names are). Absent if none of
  /// them is there.
  std::optional<std::string> find(const std::filesystem::path& recording) const;

 private:
  std::map<std::string, std::string> texts_;
};

}  // namespace tavelo::recordings
