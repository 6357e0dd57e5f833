#include "recordings/Transcripts.h"

#include <algorithm>
#include <cstddef>

#include "language/Language.h"
#include "language/Texts.h"
#include "unicode/Unicode.h"

namespace tavelo::recordings {

std::variant<Transcripts, std::string> Transcripts::parse(std::string_view lines) {
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (lines.starts_with(byteOrderMark)) lines.remove_prefix(byteOrderMark.size());
  Transcripts transcripts;
  for (std::size_t number = 1; !lines.empty(); ++number) {
    auto line = lines.substr(0, lines.find('\n'));
    lines.remove_prefix(std::min(lines.size(), line.size() + 1));
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (line.empty()) continue;
    const auto tab = line.find('\t');
    if (tab == std::string_view::npos)
      return language::say(language::words::lineWithoutTab, {std::to_string(number)});
    if (!transcripts.texts_.emplace(unicode::inComposedForm(line.substr(0, tab)), line.substr(tab + 1))
             .second)
      return language::say(language::words::lineNamesItAgain, {std::to_string(number)});
  }
  return transcripts;
}

std::optional<std::string> Transcripts::find(const std::filesystem::path& recording) const {
  for (const auto& name : {recording, recording.filename(), recording.stem()})
    if (const auto found = texts_.find(unicode::inComposedForm(name.string())); found != texts_.end())
      return found->second;
  return std::nullopt;
}

}  // namespace tavelo::recordings
