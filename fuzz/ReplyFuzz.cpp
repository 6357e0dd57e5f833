#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/Require.h"
#include "platform/recognizer/RunningTranscript.h"
#include "platform/recognizer/VoskReply.h"
#include "unicode/Unicode.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tavelo;
  using recognizer::ReplyArrays;
  using recognizer::VoskReply;
  const std::string_view json(reinterpret_cast<const char*>(data), size);
  const auto reply = VoskReply::parse(json, ReplyArrays::firstElementCounts);
  const auto strict = VoskReply::parse(json, ReplyArrays::refused);
  fuzz::require(!strict || reply, "what one kind of server may send, all may");
  if (!reply) return 0;
  fuzz::require(reply->partial || reply->text, "a reply has a transcript");
  recognizer::RunningTranscript transcript;
  if (reply->text) transcript.endUtterance(*reply->text);
  if (reply->partial) transcript.setPartial(*reply->partial);
  fuzz::require(unicode::isWellFormed(transcript.text()), "a transcript is well-formed");
  return 0;
}
