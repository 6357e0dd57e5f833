#include "commands/InputFile.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "commands/CommandFailure.h"

namespace tavelo {
namespace {

struct CloseFile {
  void operator()(std::FILE* file) const {
    if (file != stdin) std::fclose(file);
  }
};

}  // namespace

std::string readInput(const std::string& file) {
  const std::unique_ptr<std::FILE, CloseFile> input(file == "-" ? stdin : std::fopen(file.c_str(), "rb"));
  if (!input) throw CommandFailure(file + ": " + std::strerror(errno));
  std::string content;
  std::array<char, 65536> chunk{};
  while (const std::size_t read = std::fread(chunk.data(), 1, chunk.size(), input.get())) {
    content.append(chunk.data(), read);
  }
  if (std::ferror(input.get()) != 0) throw CommandFailure(file + ": " + std::strerror(errno));
  return content;
}

}  // namespace tavelo
