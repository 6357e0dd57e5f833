#pragma once

#include <memory>

#include "platform/FileManager.h"
#include "platform/MainQueue.h"
#include "platform/Speech.h"

namespace tavelo {

/// The user's files, for commands that run without a platform.
std::unique_ptr<platform::FileManager> makeCommandFileManager();

/// The configured speech recogniser, delivering on `mainQueue`, which must outlive it.
std::unique_ptr<platform::Speech> makeCommandSpeech(platform::MainQueue& mainQueue);

}  // namespace tavelo
