#include "ui/qt/setup/MicrophoneSetup.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "platform/Platform.h"

namespace tavelo {
namespace {

constexpr platform::AudioBus bus = 0;
constexpr std::uint32_t bufferFrames = 1024;

double levelOf(const platform::AudioBuffer& buffer) {
  int highest = 0;
  for (const auto sample : buffer.samples) highest = std::max(highest, std::abs(int{sample}));
  return std::min(1.0, highest / 32767.0);
}

}  // namespace

MicrophoneSetup::MicrophoneSetup(const SetupDesktop& desktop)
    : desktop_(desktop), mainQueue_(platform::current().mainQueue), audio_(platform::current().audio) {
  listenAnew();
  look();
}

MicrophoneSetup::~MicrophoneSetup() { stop(); }

void MicrophoneSetup::look() {
  desktop_.listSoundSources(lifetime_.guard([this](const SoundSourceList& list) { found(list); }));
  mainQueue_.asyncAfter(lookInterval, lifetime_.guard([this] { look(); }));
}

void MicrophoneSetup::found(const SoundSourceList& list) {
  facts_.isAnswered = true;
  facts_.list = list;
  // Opening waits for the sound server, so only one that has just answered is asked.
  if (list.sources.empty()) {
    stop();
  } else if (!engine_) {
    record();
  }
  if (onChange) onChange();
}

void MicrophoneSetup::record() {
  engine_ = audio_.makeEngine();
  engine_->installTap(bus, bufferFrames, engine_->inputFormat(bus), [this](const auto& buffer) {
    const double heard = levelOf(buffer);
    auto before = level_.load();
    while (heard > before && !level_.compare_exchange_weak(before, heard)) {
    }
  });
  engine_->prepare();
  const auto error = engine_->start();
  facts_.error = error ? error->localizedDescription : std::string{};
  // The next look tries again.
  if (error) stop();
}

void MicrophoneSetup::stop() {
  if (!engine_) return;
  engine_->stop();
  engine_->removeTap(bus);
  engine_.reset();
}

double MicrophoneSetup::takeLevel() {
  const double level = level_.exchange(0);
  if (level >= heardLevel && !std::exchange(facts_.hasHeard, true) && onChange) onChange();
  return level;
}

std::string MicrophoneSetup::choose(const std::string& name) {
  auto problem = desktop_.chooseMicrophone(name);
  if (!problem.empty()) return problem;
  stop();
  listenAnew();
  if (!facts_.list.sources.empty()) record();
  if (onChange) onChange();
  return {};
}

void MicrophoneSetup::listenAnew() {
  facts_.chosen = desktop_.microphone();
  facts_.hasHeard = facts_.isSilent = false;
  facts_.error.clear();
  level_ = 0;
  mainQueue_.asyncAfter(patience, lifetime_.guard([this, listening = ++listenings_] {
    if (listening != listenings_) return;
    facts_.isSilent = true;
    if (onChange) onChange();
  }));
}

}  // namespace tavelo
