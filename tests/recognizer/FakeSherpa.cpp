// A library with sherpa-onnx's C interface. FAKE_SHERPA_VERSION is what it calls itself, FAKE_SHERPA what it
// does: "refuse", "exit" or "hang" when a model is loaded, "throw" or "stop" when it decodes more than 1.5 s,
// "moved" reads structures of another layout. What it hears is how many tenths of a second it was given; it
// takes no less than 0.6 s.
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include <unistd.h>

#include "recognizer/SherpaInterface.h"

using namespace tavelo::recognition::sherpa;

namespace tavelo::recognition::sherpa {
struct Recognizer {};
struct Stream {
  int samples = 0;
  std::string text;
};
}  // namespace tavelo::recognition::sherpa

namespace {

bool is(const std::string& behaviour) {
  const char* wanted = std::getenv("FAKE_SHERPA");
  return wanted != nullptr && behaviour == wanted;
}

const char* orEmpty(const char* text) { return text != nullptr ? text : ""; }

Recognizer* create() {
  std::puts("this line must not reach the client");
  std::fflush(stdout);
  if (is("exit")) _exit(255);
  while (is("hang")) pause();
  return is("refuse") ? nullptr : new Recognizer;
}

}  // namespace

#define FAKE extern "C" __attribute__((visibility("default")))

FAKE const char* SherpaOnnxGetVersionStr() {
  const char* version = std::getenv("FAKE_SHERPA_VERSION");
  return version != nullptr ? version : "1.13.8";
}

FAKE const Recognizer* SherpaOnnxCreateOfflineRecognizer(const OfflineConfig* config) {
  if (config->debug != 0) {
    std::fprintf(stderr,
                 "(sampling_rate=%d, feature_dim=%d), (encoder_filename=\"%s\", decoder_filename=\"%s\", "
                 "joiner_filename=\"%s\"), tokens=\"%s\", num_threads=%d, debug=True, provider=\"%s\", "
                 "model_type=\"%s\"\n",
                 config->sampleRate, config->featureDimension, config->transducer.encoder,
                 config->transducer.decoder, config->transducer.joiner, is("moved") ? "" : config->tokens,
                 config->threads, config->provider, config->modelType);
    return nullptr;
  }
  return create();
}

FAKE const Recognizer* SherpaOnnxCreateOnlineRecognizer(const OnlineConfig* config) {
  std::fprintf(
      stderr,
      "(sampling_rate=%d, feature_dim=%d), (encoder=\"%s\", decoder=\"%s\", joiner=\"%s\"), provider=\"%s\", "
      "tokens=\"%s\", num_threads=%d, debug=True, model_type=\"%s\", min_trailing_silence=%g, "
      "min_trailing_silence=%g, min_utterance_length=%g, enable_endpoint=True, max_active_paths=%d, "
      "decoding_method=\"%s\"\n",
      config->sampleRate, config->featureDimension, config->transducer.encoder, config->transducer.decoder,
      config->transducer.joiner, config->provider, config->tokens, config->threads, config->modelType,
      static_cast<double>(config->silenceWithoutWords), static_cast<double>(config->silenceAfterWords),
      static_cast<double>(config->longestSegment), config->activePaths, orEmpty(config->decodingMethod));
  return config->debug != 0 ? nullptr : create();
}

FAKE void SherpaOnnxDestroyOfflineRecognizer(const Recognizer* recognizer) { delete recognizer; }
FAKE void SherpaOnnxDestroyOnlineRecognizer(const Recognizer* recognizer) { delete recognizer; }
FAKE const Stream* SherpaOnnxCreateOfflineStream(const Recognizer* /*recognizer*/) { return new Stream; }
FAKE const Stream* SherpaOnnxCreateOnlineStream(const Recognizer* /*recognizer*/) { return new Stream; }
FAKE void SherpaOnnxDestroyOfflineStream(const Stream* stream) { delete stream; }
FAKE void SherpaOnnxDestroyOnlineStream(const Stream* stream) { delete stream; }

FAKE void SherpaOnnxAcceptWaveformOffline(Stream* stream, int rate, const float* /*samples*/, int count) {
  stream->samples += count * 10 / rate;
}
FAKE void SherpaOnnxOnlineStreamAcceptWaveform(Stream* stream, int rate, const float* /*samples*/,
                                               int count) {
  stream->samples += count * 10 / rate;
}

FAKE void SherpaOnnxDecodeOfflineStream(const Recognizer* /*recognizer*/, Stream* stream) {
  if (stream->samples < 6) throw std::runtime_error("too short");
  if (stream->samples > 15) {
    if (is("throw")) throw std::runtime_error("bad sound");
    while (is("stop")) pause();
  }
  stream->text = " ĐỘ DÀI " + std::to_string(stream->samples);
}

FAKE int SherpaOnnxIsOnlineStreamReady(const Recognizer* /*recognizer*/, const Stream* /*stream*/) {
  return 0;
}
FAKE void SherpaOnnxDecodeOnlineStream(const Recognizer* /*recognizer*/, const Stream* /*stream*/) {}
FAKE void SherpaOnnxOnlineStreamInputFinished(Stream* /*stream*/) {}
FAKE int SherpaOnnxOnlineStreamIsEndpoint(const Recognizer* /*recognizer*/, const Stream* stream) {
  return stream->samples >= 20 ? 1 : 0;
}
FAKE void SherpaOnnxOnlineStreamReset(const Recognizer* /*recognizer*/, Stream* stream) {
  stream->samples = 0;
}

FAKE const Result* SherpaOnnxGetOfflineStreamResult(const Stream* stream) {
  return new Result{stream->text.c_str()};
}
FAKE void SherpaOnnxDestroyOfflineRecognizerResult(const Result* result) { delete result; }
FAKE const Result* SherpaOnnxGetOnlineStreamResult(const Recognizer* /*recognizer*/, Stream* stream) {
  stream->text = "DÒNG " + std::to_string(stream->samples);
  return new Result{stream->text.c_str()};
}
FAKE void SherpaOnnxDestroyOnlineRecognizerResult(const Result* result) { delete result; }
