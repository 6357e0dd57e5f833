#include "models/ModelFiles.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <functional>
#include <vector>

#include <elf.h>

#include "recognizer/model/ModelCheck.h"
#include "recognizer/model/ModelFolder.h"

namespace tavelo::models {
namespace {

namespace fs = std::filesystem;

/// What an ELF header says of a file for this machine.
unsigned elfMachine() {
  const auto machine = thisMachine();
  return machine == "x86_64" ? EM_X86_64 : machine == "aarch64" ? EM_AARCH64 : EM_NONE;
}

/// Whether it is a regular file, or a link to one, with something in it.
bool holdsSomething(const fs::path& file) {
  std::error_code error;
  return fs::is_regular_file(file, error) && fs::file_size(file, error) > 0 && !error;
}

/// Whether the files are there that libvosk opens, in one of its two layouts.
bool hasVoskFiles(const fs::path& folder) {
  const bool isNewLayout = holdsSomething(folder / "am/final.mdl");
  const bool isConfigured =
      isNewLayout ? holdsSomething(folder / "conf/model.conf") && holdsSomething(folder / "conf/mfcc.conf")
                  : holdsSomething(folder / "final.mdl") && holdsSomething(folder / "mfcc.conf");
  const fs::path graph = isNewLayout ? folder / "graph" : folder;
  return isConfigured && (holdsSomething(graph / "HCLG.fst") ||
                          (holdsSomething(graph / "HCLr.fst") && holdsSomething(graph / "Gr.fst")));
}

/// Whether the file is an ELF shared object for this machine that names all functions.
bool isLibraryFile(const fs::path& path, std::span<const std::string_view> functions) {
  // The bounds keep a strange file from filling the memory.
  constexpr std::uintmax_t largest = 512U << 20U;
  std::error_code error;
  const auto size = fs::is_regular_file(path, error) ? fs::file_size(path, error) : 0;
  if (error || size < sizeof(Elf64_Ehdr) || size > largest) return false;
  std::string bytes(size, '\0');
  std::ifstream file(path, std::ios::binary);
  if (!file.read(bytes.data(), static_cast<std::streamsize>(size)) || !bytes.starts_with(ELFMAG))
    return false;
  constexpr std::size_t machine = offsetof(Elf64_Ehdr, e_machine);
  const auto byte = [&bytes](std::size_t at) { return static_cast<unsigned char>(bytes[at]); };
  if ((byte(machine) | unsigned{byte(machine + 1)} << 8U) != elfMachine()) return false;
  return std::ranges::all_of(functions, [&bytes](std::string_view name) {
    const std::boyer_moore_horspool_searcher searcher(name.begin(), name.end());
    return std::search(bytes.begin(), bytes.end(), searcher) != bytes.end();
  });
}

/// `folder` and the folders below it, links left out, in a fixed order.
std::vector<fs::path> foldersIn(const fs::path& folder, bool withAll) {
  std::vector<fs::path> folders;
  std::error_code error;
  for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    if (entry->symlink_status(error).type() != fs::file_type::directory) continue;
    folders.push_back(entry->path());
    if (!withAll) entry.disable_recursion_pending();
  }
  std::ranges::sort(folders);
  folders.insert(folders.begin(), folder);
  return folders;
}

}  // namespace

std::optional<Engine> engineOfModel(const fs::path& folder) {
  using Kind = recognition::ModelFolder::Kind;
  const auto kind = recognition::ModelFolder::read(folder).kind;
  if (kind == Kind::sherpaOnnx) return Engine::sherpaOnnx;
  if (kind == Kind::vosk && hasVoskFiles(folder)) return Engine::vosk;
  return std::nullopt;
}

std::optional<fs::path> findModelFolder(const fs::path& folder, Engine engine) {
  for (const auto& each : foldersIn(folder, false)) {
    if (engineOfModel(each) == engine) return each;
  }
  return std::nullopt;
}

std::string flawOfModel(const fs::path& folder) {
  const auto model = recognition::ModelFolder::read(folder);
  if (model.kind != recognition::ModelFolder::Kind::sherpaOnnx) return {};
  std::string problem = recognition::ModelCheck::check(model).problem;
  // The folder that it names is a temporary one.
  const std::string start = folder.string() + ": ";
  return problem.starts_with(start) ? problem.substr(start.size()) : problem;
}

bool isLibrary(const fs::path& folder, Engine engine) {
  return std::ranges::all_of(libraryFiles(engine), [&folder](const LibraryFile& file) {
    return isLibraryFile(folder / file.name, file.functions);
  });
}

std::optional<fs::path> findLibraryFolder(const fs::path& folder, Engine engine) {
  for (const auto& each : foldersIn(folder, true)) {
    if (isLibrary(each, engine)) return each;
  }
  return std::nullopt;
}

std::optional<Origin> originOf(const fs::path& modelFolder) {
  std::error_code error;
  const fs::path note = modelFolder / originFileName;
  if (!fs::exists(fs::symlink_status(note, error))) return std::nullopt;
  Origin origin;
  origin.isReadable = fs::is_regular_file(note, error);
  if (!origin.isReadable) return origin;
  std::ifstream(note) >> origin.name >> origin.sha256 >> origin.compared;
  return origin;
}

}  // namespace tavelo::models
