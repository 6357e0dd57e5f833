#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace tavelo::recognition {

/// Takes what is heard in one dictation. Decoding thread.
class Listener {
 public:
  virtual ~Listener() = default;

  /// The text of the current segment, as the engine gives it.
  virtual void heard(std::string_view text) = 0;

  /// The current segment is fixed with this text. It ended at the sample `until`, counted from the
  /// dictation's begin.
  virtual void closed(std::string_view text, std::uint64_t until) = 0;
};

/// The decoding of one dictation. Decoding thread. Must not outlive its engine and its listener.
///
/// Both functions return why the dictation cannot go on, in English; empty when it can. Call neither after a
/// failure.
class Dictation {
 public:
  virtual ~Dictation() = default;

  /// Decodes the next piece of mono sound. If `moreWaits`, nobody misses an answer to this one.
  virtual std::string accept(std::span<const std::int16_t> samples, bool moreWaits) = 0;

  /// Decodes the rest and closes the last segment.
  virtual std::string finish() = 0;
};

/// A speech library with a model loaded. Decoding thread.
class Engine {
 public:
  virtual ~Engine() = default;

  /// As in the protocol: "sherpa-onnx" or "vosk".
  virtual std::string_view name() const = 0;
  /// The library's version; empty when it does not say.
  virtual std::string version() const = 0;

  /// Begins a dictation of mono sound at `sampleRate` Hz. Null when the library cannot.
  virtual std::unique_ptr<Dictation> begin(std::uint32_t sampleRate, Listener& listener) = 0;
};

/// An engine, or why there is none: an English sentence without a full stop.
struct EngineLoading {
  std::unique_ptr<Engine> engine;
  std::string failure;
};

}  // namespace tavelo::recognition
