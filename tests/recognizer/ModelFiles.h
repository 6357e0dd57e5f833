#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <stdlib.h>

namespace tavelo::recognition {

using Metadata = std::vector<std::pair<std::string, std::string>>;

/// One field of a protocol-buffer message that has bytes.
inline std::string field(unsigned number, std::string_view bytes) {
  std::string text;
  for (std::uint64_t value : {std::uint64_t{number << 3U | 2U}, std::uint64_t{bytes.size()}}) {
    for (; value >= 0x80; value >>= 7U) text += static_cast<char>(value | 0x80U);
    text += static_cast<char>(value);
  }
  return text += bytes;
}

/// The container of a model with this metadata, and a network that nothing can run.
inline std::string onnx(const Metadata& metadata) {
  std::string file = std::string{"\x08\x08"} + field(7, "graph");
  for (const auto& [key, value] : metadata) file += field(14, field(1, key) + field(2, value));
  return file;
}

inline const Metadata encoderData{{"model_type", "zipformer2"}};
inline const Metadata decoderData{{"vocab_size", "3"}, {"context_size", "2"}};
inline const Metadata joinerData{{"joiner_dim", "5"}};
inline constexpr const char* tokensText = "<blk> 0\n▁A 1\nB 2\n";

/// A folder with a sound model, which a test may spoil; it goes with the object.
class ModelFiles final {
 public:
  ModelFiles() : folder_(std::filesystem::temp_directory_path() / "tavelo-model-XXXXXX") {
    std::string name = folder_;
    folder_ = ::mkdtemp(name.data()) != nullptr ? name : std::string{};
    write("encoder.int8.onnx", onnx(encoderData));
    write("decoder.onnx", onnx(decoderData));
    write("joiner.int8.onnx", onnx(joinerData));
    write("tokens.txt", tokensText);
  }
  ~ModelFiles() { std::filesystem::remove_all(folder_); }
  ModelFiles(const ModelFiles&) = delete;
  ModelFiles& operator=(const ModelFiles&) = delete;

  const std::filesystem::path& folder() const { return folder_; }
  void write(const std::string& name, std::string_view bytes) const {
    std::ofstream{folder_ / name, std::ios::binary} << bytes;
  }
  void remove(const std::string& name) const { std::filesystem::remove_all(folder_ / name); }

 private:
  std::filesystem::path folder_;
};

}  // namespace tavelo::recognition
