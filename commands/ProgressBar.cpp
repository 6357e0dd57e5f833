#include "commands/ProgressBar.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <utility>

#include <unistd.h>

namespace tavelo {
namespace {

constexpr std::size_t width = 30;

}  // namespace

ProgressBar::ProgressBar() : isTerminal_(isatty(STDERR_FILENO) != 0) {}

void ProgressBar::show(double part, std::string_view what) {
  if (!isTerminal_) return;
  const double whole = std::isfinite(part) ? std::clamp(part, 0.0, 1.0) : 0.0;
  const auto done = static_cast<std::size_t>(whole * width);
  std::string line = "[" + std::string(done, '#') + std::string(width - done, ' ') + "] " +
                     std::to_string(static_cast<int>(whole * 100)) + " % ";
  line += what;
  if (line == shown_) return;
  std::fprintf(stderr, "\r\033[K%s", line.c_str());
  shown_ = std::move(line);
}

void ProgressBar::clear() {
  if (shown_.empty()) return;
  std::fputs("\r\033[K", stderr);
  shown_.clear();
}

}  // namespace tavelo
