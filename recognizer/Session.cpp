#include "recognizer/Session.h"

#include <exception>
#include <utility>

#include <nlohmann/json.hpp>

#include "recognizer/CleanText.h"

namespace tavelo::recognition {
namespace {

using Json = nlohmann::ordered_json;

/// The rates that a microphone or a recording may have. The library divides by the rate, and far from these
/// it does not end.
constexpr std::uint32_t lowestRate = 8000;
constexpr std::uint32_t highestRate = 192'000;

/// How often the client hears how much sound was taken: a sign of life while more waits, and always soon
/// enough for it to send more.
constexpr std::uint32_t secondsToldWhileMoreWaits = 2;
constexpr std::uint32_t secondsToldOtherwise = 10;

/// A line must stay below 1 MiB, also when JSON writes six bytes for one.
constexpr std::size_t longestText = 128UL * 1024;

std::string toLine(const Json& object) {
  return object.dump(-1, ' ', /*ensure_ascii=*/false, Json::error_handler_t::replace) + '\n';
}

}  // namespace

void Session::step() {
  const auto work = inbox_.take();
  if (work.serial != serial_) begin(work);
  if (!dictation_) return;
  tellTaken(work);
  std::string failure;
  try {
    if (!work.samples.empty()) failure = dictation_->accept(work.samples, work.moreWaits);
    if (failure.empty() && work.ended) failure = dictation_->finish();
  } catch (const std::exception& error) {
    failure = error.what();
  }
  if (!failure.empty()) return fail(failure);
  if (!work.ended) return;
  outbox_.lasting(serial_, toLine({{"dictation", number_}, {"final", true}}));
  dictation_.reset();
}

void Session::begin(const Inbox::Work& work) {
  dictation_.reset();
  serial_ = work.serial;
  number_ = work.dictation;
  text_.clear();
  taken_ = toldTaken_ = 0;
  if (serial_ == 0) return;
  if (work.sampleRate < lowestRate || work.sampleRate > highestRate)
    return fail("sound at " + std::to_string(work.sampleRate) + " Hz cannot be recognised");
  try {
    dictation_ = engine_.begin(work.sampleRate, *this);
  } catch (const std::exception& error) {
    return fail(error.what());
  }
  if (!dictation_) fail("the library cannot begin a recognition");
}

/// Tells the client, which sends only so much ahead, that it may send more.
void Session::tellTaken(const Inbox::Work& work) {
  taken_ += work.samples.size();
  if (work.ended) return;
  const std::uint64_t seconds = work.moreWaits ? secondsToldWhileMoreWaits : secondsToldOtherwise;
  if (taken_ - toldTaken_ < seconds * work.sampleRate) return;
  toldTaken_ = taken_;
  outbox_.lasting(serial_, toLine({{"dictation", number_}, {"taken", taken_}}));
  // The line may have taken the place of a text.
  text_.clear();
}

void Session::heard(std::string_view text) {
  std::string plain = cleaned(text.substr(0, longestText));
  if (plain == text_) return;
  text_ = std::move(plain);
  outbox_.replaceable(serial_, toLine({{"dictation", number_}, {"text", text_}}));
}

void Session::closed(std::string_view text, std::uint64_t until) {
  text_.clear();
  outbox_.lasting(
      serial_,
      toLine({{"dictation", number_}, {"closed", cleaned(text.substr(0, longestText))}, {"until", until}}));
}

void Session::fail(const std::string& reason) {
  dictation_.reset();
  outbox_.lasting(serial_, toLine({{"dictation", number_}, {"failed", cleaned(reason)}}));
}

std::string loadingLine() { return toLine({{"state", "loading"}}); }

std::string readyLine(const Engine& engine) {
  return toLine({{"state", "ready"}, {"engine", engine.name()}, {"version", engine.version()}});
}

std::string failedLine(std::string_view reason) {
  return toLine({{"state", "failed"}, {"reason", cleaned(reason)}});
}

}  // namespace tavelo::recognition
