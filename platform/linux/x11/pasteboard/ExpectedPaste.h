#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

namespace tavelo::linuxdesktop {

/// What the target of the latest paste command has fetched of our text, and what it may fetch still. Knows no
/// X server: it is told what happens, and when. One thread.
///
/// A target that reads late still gets the text after the user's contents have covered it, up to 60 s after
/// the command: when it has not fetched it before, or has a dialog open that came up when it fetched. When a
/// second command followed, the second paste gets nothing.
///
/// The reads of one paste are one: in however many formats, and again within a second, since a terminal looks
/// at the text first. Only when a second command followed, a paste is over when a format is asked for again.
class ExpectedPaste final {
 public:
  using Instant = std::chrono::steady_clock::time_point;

  /// What a request of the target gets: what is on the clipboard, the text of the paste command, or nothing.
  enum class Serving : std::uint8_t { clipboard, text, nothing };

  /// A paste command goes out while our text is on the clipboard.
  void begin(Instant now);
  /// A second command follows for the same text.
  void expectSecond() { secondFollows_ = true; }
  /// The text is taken off the clipboard. Without effect if none is expected.
  void cover() { isCovered_ = began_.has_value(); }
  /// Another text of ours replaces the text, or somebody else has taken the clipboard.
  void end() { *this = {}; }

  bool isExpected() const { return began_.has_value(); }
  bool isCovered() const { return isCovered_; }
  /// When the target has nothing more to get; absent if none is expected.
  std::optional<Instant> endsAt() const;

  /// Whether a dialog that comes up now does so because of the paste.
  bool mayBringUpDialog(Instant now) const;
  /// Such a dialog is open, or is no longer.
  void setDialogOpen(bool open, Instant now);

  /// What the target gets that asks for a list of formats.
  Serving listing(Instant now) const;
  /// What the target gets that asks for this format.
  Serving fetch(std::uint32_t format, Instant now);

 private:
  bool mayStillPasteTwice(Instant now) const;
  /// Whether the target may read the text in spite of the cover.
  bool isLate(Instant now) const;
  bool asks(Instant now) const;

  std::optional<Instant> began_;
  /// When the latest paste began to read.
  std::optional<Instant> lastFetch_;
  bool isCovered_ = false;
  bool dialogIsOpen_ = false;
  std::optional<Instant> dialogClosed_;
  bool secondFollows_ = false;
  /// The formats that the current paste has read, and those that the second paste was refused.
  std::vector<std::uint32_t> read_;
  std::vector<std::uint32_t> refused_;
};

}  // namespace tavelo::linuxdesktop
