#include "platform/linux/x11/pasteboard/ExpectedPaste.h"

#include <algorithm>

namespace tavelo::linuxdesktop {
namespace {

/// Two commands that waited in a busy application are obeyed one right after the other. What comes later is
/// a paste of the user's own.
constexpr std::chrono::seconds secondPasteTime{4};
/// From the command until the target counts as lost.
constexpr std::chrono::seconds latestTime{60};
/// Between the reads of one paste; and from the end of a dialog to the read that it led to.
constexpr std::chrono::seconds readTime{1};
/// From a read to the dialog that asks whether to paste that.
constexpr std::chrono::seconds dialogTime{3};

bool has(const std::vector<std::uint32_t>& formats, std::uint32_t format) {
  return std::ranges::find(formats, format) != formats.end();
}

}  // namespace

void ExpectedPaste::begin(Instant now) {
  end();
  began_ = now;
}

bool ExpectedPaste::mayStillPasteTwice(Instant now) const {
  return secondFollows_ && lastFetch_ && now - *lastFetch_ <= secondPasteTime;
}

bool ExpectedPaste::mayBringUpDialog(Instant now) const {
  return lastFetch_ && now - *lastFetch_ <= dialogTime;
}

void ExpectedPaste::setDialogOpen(bool open, Instant now) {
  if (dialogIsOpen_ && !open) dialogClosed_ = now;
  dialogIsOpen_ = open;
}

bool ExpectedPaste::asks(Instant now) const {
  return dialogIsOpen_ || (dialogClosed_ && now - *dialogClosed_ <= readTime);
}

bool ExpectedPaste::isLate(Instant now) const {
  if (!lastFetch_ || asks(now)) return true;
  return refused_.empty() && now - *lastFetch_ <= readTime;
}

std::optional<ExpectedPaste::Instant> ExpectedPaste::endsAt() const {
  if (!began_) return std::nullopt;
  const auto latest = *began_ + latestTime;
  if (!isCovered_ || !lastFetch_ || dialogIsOpen_) return latest;
  auto end = *lastFetch_ + (secondFollows_ ? secondPasteTime : dialogTime);
  if (dialogClosed_) end = std::max(end, *dialogClosed_ + readTime);
  return std::min(end, latest);
}

ExpectedPaste::Serving ExpectedPaste::listing(Instant now) const {
  if (!began_) return Serving::clipboard;
  return !isCovered_ || isLate(now) || mayStillPasteTwice(now) ? Serving::text : Serving::clipboard;
}

ExpectedPaste::Serving ExpectedPaste::fetch(std::uint32_t format, Instant now) {
  if (!began_) return Serving::clipboard;
  const bool again = has(read_, format);
  if (mayStillPasteTwice(now) && (again || !refused_.empty())) {
    if (!has(refused_, format)) {
      refused_.push_back(format);
      return Serving::nothing;
    }
    // The third paste is the user's.
    secondFollows_ = false;
  }
  if (isCovered_ && !isLate(now)) return Serving::clipboard;
  if (again) read_.clear();
  read_.push_back(format);
  // Whoever reads again and again does not put the end off.
  if (!lastFetch_ || now - *lastFetch_ > readTime) lastFetch_ = now;
  return Serving::text;
}

}  // namespace tavelo::linuxdesktop
