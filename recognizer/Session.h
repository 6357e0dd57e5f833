#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "recognizer/Engine.h"
#include "recognizer/Inbox.h"
#include "recognizer/Outbox.h"

namespace tavelo::recognition {

/// Decodes the dictations of the inbox and writes what is heard to the outbox. Decoding thread.
class Session final : public Listener {
 public:
  /// The session must not outlive any of the three.
  Session(Engine& engine, Inbox& inbox, Outbox& outbox) : engine_(engine), inbox_(inbox), outbox_(outbox) {}

  /// Waits for the next piece of work and does it.
  void step();

  void heard(std::string_view text) override;
  void closed(std::string_view text, std::uint64_t until) override;

 private:
  void begin(const Inbox::Work& work);
  void tellTaken(const Inbox::Work& work);
  void fail(const std::string& reason);

  Engine& engine_;
  Inbox& inbox_;
  Outbox& outbox_;
  std::uint64_t serial_ = 0;
  std::uint32_t number_ = 0;
  std::string text_;
  /// How many samples of the dictation were taken, and how many the client was told of.
  std::uint64_t taken_ = 0;
  std::uint64_t toldTaken_ = 0;
  /// Null between dictations, and when this one failed.
  std::unique_ptr<Dictation> dictation_;
};

/// The lines that belong to no dictation.
std::string loadingLine();
std::string readyLine(const Engine& engine);
std::string failedLine(std::string_view reason);

}  // namespace tavelo::recognition
