#include "platform/simulated/RecognitionScript.h"

#include <utility>

namespace tavelo::simulated {

RecognitionStep RecognitionStep::partial(platform::Seconds after, std::string transcript) {
  return {after, std::move(transcript), false, std::nullopt};
}

RecognitionStep RecognitionStep::finalResult(platform::Seconds after, std::string transcript) {
  return {after, std::move(transcript), true, std::nullopt};
}

RecognitionStep RecognitionStep::failure(platform::Seconds after, std::string error) {
  return {after, std::nullopt, false, std::move(error)};
}

}  // namespace tavelo::simulated
