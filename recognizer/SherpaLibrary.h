#pragma once

#include <memory>
#include <string>

#include "recognizer/Guarded.h"
#include "recognizer/SharedLibrary.h"
#include "recognizer/SherpaInterface.h"

namespace tavelo::recognition::sherpa {

/// The library's functions.
struct Functions {
  const char* (*version)() = nullptr;

  const Recognizer* (*createOffline)(const OfflineConfig*) = nullptr;
  void (*destroyOffline)(const Recognizer*) = nullptr;
  const Stream* (*createOfflineStream)(const Recognizer*) = nullptr;
  void (*destroyOfflineStream)(const Stream*) = nullptr;
  void (*acceptOffline)(const Stream*, std::int32_t rate, const float* samples, std::int32_t count) = nullptr;
  void (*decodeOffline)(const Recognizer*, const Stream*) = nullptr;
  const Result* (*offlineResult)(const Stream*) = nullptr;
  void (*destroyOfflineResult)(const Result*) = nullptr;

  const Recognizer* (*createOnline)(const OnlineConfig*) = nullptr;
  void (*destroyOnline)(const Recognizer*) = nullptr;
  const Stream* (*createOnlineStream)(const Recognizer*) = nullptr;
  void (*destroyOnlineStream)(const Stream*) = nullptr;
  void (*acceptOnline)(const Stream*, std::int32_t rate, const float* samples, std::int32_t count) = nullptr;
  void (*endOnline)(const Stream*) = nullptr;
  std::int32_t (*isReady)(const Recognizer*, const Stream*) = nullptr;
  void (*decodeOnline)(const Recognizer*, const Stream*) = nullptr;
  const Result* (*onlineResult)(const Recognizer*, const Stream*) = nullptr;
  void (*destroyOnlineResult)(const Result*) = nullptr;
  std::int32_t (*isEndpoint)(const Recognizer*, const Stream*) = nullptr;
  void (*reset)(const Recognizer*, const Stream*) = nullptr;
};

/// sherpa-onnx, loaded at run time since the program also works without it. Any thread.
class Library final {
 public:
  /// The library, or why it cannot be used.
  struct Opening {
    std::unique_ptr<const Library> library;
    std::string failure;
  };

  /// Loads `file` and makes sure that we know its structures.
  static Opening open(const std::string& file);

  const Functions& functions() const { return functions_; }
  const std::string& version() const { return version_; }

 private:
  Library() = default;
  std::string resolve(const std::string& file);

  std::unique_ptr<const SharedLibrary> file_;
  Functions functions_;
  std::string version_;
};

/// Owns something of the library's. Must not outlive it.
template <class Object>
using Owned = std::unique_ptr<const Object, void (*)(const Object*)>;

}  // namespace tavelo::recognition::sherpa
