#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/Require.h"
#include "platform/recognizer/ProcessReply.h"
#include "platform/recognizer/RunningTranscript.h"
#include "recognizer/vosk/VoskReply.h"
#include "unicode/Unicode.h"

namespace {

using namespace tavelo;

/// What a recogniser process says, read as its client reads it.
void readProcess(std::string_view line) {
  using Kind = recognizer::ProcessReply::Kind;
  const auto reply = recognizer::ProcessReply::parse(line);
  if (!reply) return;
  fuzz::require(unicode::isWellFormed(reply->text), "a transcript is well-formed");
  const bool ofDictation = reply->kind == Kind::text || reply->kind == Kind::closed ||
                           reply->kind == Kind::taken || reply->kind == Kind::final ||
                           reply->kind == Kind::failed;
  fuzz::require(ofDictation || reply->kind == Kind::other || reply->dictation == 0,
                "what is said of the process belongs to no dictation");
  fuzz::require(reply->kind == Kind::closed || reply->kind == Kind::taken || reply->until == 0,
                "only a segment or the sound that was taken ends somewhere");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using recognition::VoskReply;
  const std::string_view json(reinterpret_cast<const char*>(data), size);
  readProcess(json);
  const auto reply = VoskReply::parseFromServer(json);
  const auto strict = VoskReply::parse(json);
  fuzz::require(!strict || reply, "what one kind of server may send, all may");
  if (!reply) return 0;
  fuzz::require(reply->partial || reply->text, "a reply has a transcript");
  recognizer::RunningTranscript transcript;
  if (reply->text) transcript.endUtterance(*reply->text);
  if (reply->partial) transcript.setPartial(*reply->partial);
  fuzz::require(unicode::isWellFormed(transcript.text()), "a transcript is well-formed");
  return 0;
}
