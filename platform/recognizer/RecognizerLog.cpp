#include "platform/recognizer/RecognizerLog.h"

#include <array>
#include <chrono>
#include <ctime>
#include <system_error>

#include "platform/posix/PosixFileManager.h"

namespace tavelo::recognizer {
namespace {

constexpr std::chrono::hours age{7 * 24};

std::string localTime() {
  const std::time_t now = std::time(nullptr);
  std::tm fields{};
  localtime_r(&now, &fields);
  std::array<char, 32> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &fields);
  return text.data();
}

}  // namespace

void RecognizerLog::record(const std::string& reason, const std::string& log) const {
  if (!file_) return;
  posix::PosixFileManager files;
  if (files.createDirectory(file_->parent_path()))
    files.writeAtomically(*file_, localTime() + ": " + reason + "\n" + log);
}

std::string RecognizerLog::latest() const {
  if (!file_) return {};
  std::error_code error;
  const auto written = std::filesystem::last_write_time(*file_, error);
  if (error || std::filesystem::file_time_type::clock::now() - written > age) return {};
  const auto text = posix::PosixFileManager{}.contents(*file_).value_or("");
  return text.substr(0, text.find('\n'));
}

}  // namespace tavelo::recognizer
