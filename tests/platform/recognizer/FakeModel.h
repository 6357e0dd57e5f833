#pragma once

#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/recognizer/VoskConfiguration.h"
#include "tests/platform/recognizer/TemporaryFolder.h"

namespace tavelo {

/// A model folder for the scripted library (FakeVosk.cpp), in its own data home.
class FakeModel final {
 public:
  explicit FakeModel(const std::string& script) {
    home_.write("Tavelo/models/vi_VN/script", script);
    mkfifo((folder() / "waiting").c_str(), 0600);
    mkfifo((folder() / "gate").c_str(), 0600);
    waiting_ = open((folder() / "waiting").c_str(), O_RDWR | O_CLOEXEC);
    gate_ = open((folder() / "gate").c_str(), O_RDWR | O_CLOEXEC);
  }
  ~FakeModel() {
    close(waiting_);
    close(gate_);
  }
  FakeModel(const FakeModel&) = delete;
  FakeModel& operator=(const FakeModel&) = delete;

  std::filesystem::path folder() const { return home_.path() / "Tavelo/models/vi_VN"; }

  recognizer::VoskConfiguration configuration(const std::string& library = TAVELO_FAKE_VOSK) const {
    return recognizer::VoskConfiguration{home_.path(), [library](const std::string& name) {
                                           return name == "TAVELO_VOSK_LIBRARY" ? library : std::string{};
                                         }};
  }

  /// Waits until the library reaches a gate; false when it does not within 20 s.
  bool waitAtGate() const {
    pollfd descriptor{waiting_, POLLIN, 0};
    char byte = 0;
    return poll(&descriptor, 1, 20'000) == 1 && read(waiting_, &byte, 1) == 1;
  }

  void openGate() const { ASSERT_EQ(write(gate_, "", 1), 1); }

  void rewrite(const std::string& script) const { home_.write("Tavelo/models/vi_VN/script", script); }

  /// The calls to the library, one a line.
  std::string calls() const { return home_.read("Tavelo/models/vi_VN/calls"); }

 private:
  TemporaryFolder home_;
  int waiting_ = -1;
  int gate_ = -1;
};

}  // namespace tavelo
