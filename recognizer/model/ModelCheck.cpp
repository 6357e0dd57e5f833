#include "recognizer/model/ModelCheck.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <exception>
#include <fstream>
#include <optional>
#include <string_view>
#include <system_error>
#include <vector>

#include "language/Language.h"
#include "language/Texts.h"
#include "recognizer/model/OnnxFile.h"

namespace tavelo::recognition {
namespace {

using language::say;
namespace words = language::words;

namespace fs = std::filesystem;

/// Real vocabularies have some thousand tokens.
constexpr long largestVocabulary = 1'000'000;
constexpr std::size_t longestLine = 4096;

constexpr std::string_view asciiSpaces = " \t\r\n\v\f";

/// The networks that a streaming recogniser knows.
constexpr std::array<std::string_view, 4> streamingNetworks{"zipformer2", "zipformer", "conformer", "lstm"};

/// Takes the next word off `line`; empty at its end.
std::string_view nextWord(std::string_view& line) {
  const auto start = line.find_first_not_of(asciiSpaces);
  if (start == std::string_view::npos) return line = {};
  line.remove_prefix(start);
  const auto word = line.substr(0, line.find_first_of(asciiSpaces));
  line.remove_prefix(word.size());
  return word;
}

/// What a line of the table gives its number to.
struct TokenLine {
  bool blank = false;
  bool valid = false;
  /// Absent when the number is too large for the library, which then takes another one.
  std::optional<long> number;
};

TokenLine readLine(std::string_view line) {
  const auto first = nextWord(line);
  const auto second = nextWord(line);
  if (first.empty()) return {true, true, {}};
  if (!nextWord(line).empty()) return {};
  // A number alone stands for the space.
  std::string_view digits = second.empty() ? first : second;
  if (digits.starts_with('+')) digits.remove_prefix(1);
  long value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (end != digits.data() + digits.size() || error == std::errc::invalid_argument) return {};
  return {false, true, error == std::errc{} ? std::optional{value} : std::nullopt};
}

struct Container {
  std::optional<OnnxFile> file;
  std::string problem;
};

Container open(const fs::path& path) {
  const std::string name = path.filename().string();
  std::error_code ignored;
  if (!fs::is_regular_file(path, ignored)) return {std::nullopt, say(words::fileMissing, {name})};
  std::ifstream stream{path, std::ios::binary};
  if (!stream) return {std::nullopt, say(words::fileUnreadable, {name})};
  auto file = OnnxFile::read(stream);
  if (!file) return {std::nullopt, say(words::notOnnx, {name})};
  return {std::move(file), {}};
}

bool isBetween(const OnnxFile& file, std::string_view key, long least, long most) {
  const auto value = file.number(key);
  return value && *value >= least && *value <= most;
}

/// The name of the encoder's network; empty when a streaming recogniser does not know it.
std::string streamingNetwork(const OnnxFile& file) {
  const auto network = file.metadata.find("model_type");
  if (network == file.metadata.end()) return {};
  const auto known = std::find(streamingNetworks.begin(), streamingNetworks.end(), network->second);
  return known != streamingNetworks.end() ? network->second : std::string{};
}

/// With a wrong one of these the library crashes, never ends, or takes any memory.
std::string checkStreaming(const OnnxFile& file, const std::string& name) {
  constexpr long mostFrames = 10'000;
  constexpr long largestSize = 100'000;
  const auto lacks = [&name](const char* key) { return say(words::badEncoder, {name, key}); };
  if (!isBetween(file, "T", 1, mostFrames)) return lacks("T");
  if (!isBetween(file, "decode_chunk_len", 1, *file.number("T"))) return lacks("decode_chunk_len");
  const auto network = streamingNetwork(file);
  if (network.empty()) return lacks("model_type");
  if (network != "lstm") return {};
  for (const auto key : {"num_encoder_layers", "rnn_hidden_size", "d_model"})
    if (!isBetween(file, key, 1, largestSize)) return lacks(key);
  return {};
}

/// Why `file` cannot be the encoder; empty when it can.
std::string checkEncoder(const OnnxFile& file, const std::string& name) {
  for (const auto key : {"joiner_dim", "context_size", "vocab_size"})
    if (file.has(key)) return say(words::noEncoder, {name, key});
  if (file.has("decode_chunk_len")) return checkStreaming(file, name);
  if (file.metadata.empty()) return say(words::bareEncoder, {name});
  return {};
}

std::string checkDecoder(const OnnxFile& file, const std::string& name) {
  for (const auto key : {"vocab_size", "context_size"})
    if (!isBetween(file, key, 1, largestVocabulary)) return say(words::noDecoder, {name, key});
  return {};
}

std::string checkJoiner(const OnnxFile& file, const std::string& name) {
  return file.has("vocab_size") || file.has("decode_chunk_len") ? say(words::noJoiner, {name})
                                                                : std::string{};
}

ModelCheck checkFiles(const ModelFolder& model) {
  const auto encoder = open(model.encoder);
  const auto decoder = open(model.decoder);
  const auto joiner = open(model.joiner);
  for (const auto* part : {&encoder, &decoder, &joiner})
    if (!part->file) return {part->problem, false, {}};
  ModelCheck check;
  for (auto&& problem : {checkEncoder(*encoder.file, model.encoder.filename().string()),
                         checkDecoder(*decoder.file, model.decoder.filename().string()),
                         checkJoiner(*joiner.file, model.joiner.filename().string())}) {
    if (check.problem.empty()) check.problem = problem;
  }
  if (!check.problem.empty()) return check;
  // Asked first: opening a named pipe waits for ever.
  std::error_code ignored;
  const bool isFile = fs::is_regular_file(model.tokens, ignored);
  std::ifstream table{isFile ? model.tokens : fs::path{}, std::ios::binary};
  if (!table) return {say(words::fileUnreadable, {"tokens.txt"}), false, {}};
  check.problem = checkTokens(table, *decoder.file->number("vocab_size"));
  check.streaming = encoder.file->has("decode_chunk_len");
  if (check.streaming) check.streamingNetwork = streamingNetwork(*encoder.file);
  return check;
}

}  // namespace

std::string checkTokens(std::istream& table, long vocabulary) {
  std::vector<bool> named(static_cast<std::size_t>(vocabulary));
  std::string line(longestLine, '\0');
  for (long count = 1; table.getline(line.data(), static_cast<std::streamsize>(line.size())); ++count) {
    const auto length = static_cast<std::size_t>(table.gcount()) - (table.eof() ? 0 : 1);
    const auto read = readLine(std::string_view{line}.substr(0, length));
    if (!read.valid) return say(words::badTokenLine, {std::to_string(count)});
    if (read.number && *read.number >= 0 && *read.number < vocabulary)
      named[static_cast<std::size_t>(*read.number)] = true;
  }
  if (!table.eof()) return say(words::endlessTokenLine);
  for (long token = 0; token < vocabulary; ++token)
    if (!named[static_cast<std::size_t>(token)])
      return say(words::otherTokens, {std::to_string(token), std::to_string(vocabulary)});
  return {};
}

ModelCheck ModelCheck::check(const ModelFolder& model) {
  try {
    auto check = checkFiles(model);
    if (!check.problem.empty()) check.problem = model.folder.string() + ": " + check.problem;
    return check;
  } catch (const std::exception& error) {
    return {model.folder.string() + ": " + error.what(), false, {}};
  }
}

}  // namespace tavelo::recognition
