// For a Mac, where the libraries would have to be in the bundle.
#include "recordings/Recording.h"

namespace tavelo::recordings {

struct Recording::Reader {
  std::string failure;
};

Recording::Opening Recording::open(const std::filesystem::path& /*file*/) {
  return {nullptr, "a Mac's Tavelo cannot read recordings"};
}

Recording::Recording(std::unique_ptr<Reader> reader) : reader_(std::move(reader)) {}
Recording::~Recording() = default;
platform::Seconds Recording::duration() const { return {}; }
std::vector<std::int16_t> Recording::read() { return {}; }
const std::string& Recording::failure() const { return reader_->failure; }

}  // namespace tavelo::recordings
