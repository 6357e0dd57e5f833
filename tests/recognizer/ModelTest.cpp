#include <functional>
#include <sstream>

#include <gmock/gmock.h>

#include "recognizer/model/ModelCheck.h"
#include "recognizer/model/ModelFolder.h"
#include "recognizer/model/OnnxFile.h"
#include "tests/recognizer/ModelFiles.h"

namespace tavelo::recognition {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using Kind = ModelFolder::Kind;

TEST(ModelFolder, PrefersSmallNetworksAndFilesThatBelongTogether) {
  const ModelFiles files;
  files.write("encoder.onnx", "");
  files.write("decoder.int8.onnx", "");
  files.write("encoder-epoch-9-avg-1.onnx", "");
  files.write("stream-encoder.onnx", "");
  auto model = ModelFolder::read(files.folder());
  EXPECT_EQ(model.kind, Kind::sherpaOnnx);
  EXPECT_EQ(model.encoder, files.folder() / "encoder.int8.onnx");
  EXPECT_EQ(model.decoder, files.folder() / "decoder.onnx");

  for (const auto* name : {"decoder-epoch-9-avg-1.onnx", "joiner-epoch-9-avg-1.int8.onnx"})
    files.write(name, "");
  EXPECT_EQ(ModelFolder::read(files.folder()).encoder, model.encoder);
  files.remove("joiner.int8.onnx");
  model = ModelFolder::read(files.folder());
  EXPECT_EQ(model.encoder, files.folder() / "encoder-epoch-9-avg-1.onnx");
  EXPECT_EQ(model.joiner, files.folder() / "joiner-epoch-9-avg-1.int8.onnx");

  files.remove("encoder-epoch-9-avg-1.onnx");
  EXPECT_THAT(ModelFolder::read(files.folder()).problem, HasSubstr("do not belong together"));
}

TEST(ModelFolder, TellsVoskFromAFolderWithoutAModel) {
  const ModelFiles files;
  files.remove("tokens.txt");
  EXPECT_THAT(ModelFolder::read(files.folder()).problem, HasSubstr("has no tokens.txt"));
  for (const auto* name : {"encoder.int8.onnx", "decoder.onnx", "joiner.int8.onnx"}) files.remove(name);
  EXPECT_THAT(ModelFolder::read(files.folder()).problem, HasSubstr("holds no speech model"));
  std::filesystem::create_directory(files.folder() / "am");
  EXPECT_EQ(ModelFolder::read(files.folder()).kind, Kind::vosk);
  EXPECT_THAT(ModelFolder::read(files.folder() / "none").problem, HasSubstr("is not a folder"));
}

std::string checked(const ModelFiles& files) {
  return ModelCheck::check(ModelFolder::read(files.folder())).problem;
}

TEST(ModelCheck, RefusesWhatEndsTheLibrarysProcess) {
  const std::string whole = onnx(encoderData);
  struct Row {
    const char* file;
    std::string bytes;
    const char* reason;
  };
  const std::string streaming = "encoder.int8.onnx";
  const std::vector<Row> rows{
      {"encoder.int8.onnx", "", "encoder.int8.onnx is not a whole ONNX file"},
      {"encoder.int8.onnx", whole.substr(0, whole.size() - 1), "not a whole ONNX file"},
      {"encoder.int8.onnx", whole + "x", "not a whole ONNX file"},
      {"joiner.int8.onnx", field(14, field(1, "a") + field(2, "b")),
       "joiner.int8.onnx is not a whole ONNX file"},
      {"joiner.int8.onnx", onnx({{"a", std::string(100'000, 'x')}}), "not a whole ONNX file"},
      {"encoder.int8.onnx", onnx({}), "has no metadata"},
      {"encoder.int8.onnx", onnx(joinerData), "is no encoder"},
      {"encoder.int8.onnx", onnx(decoderData), "is no encoder"},
      {"decoder.onnx", onnx(encoderData), "is no decoder"},
      {"decoder.onnx", onnx({{"vocab_size", "many"}, {"context_size", "2"}}), "no usable vocab_size"},
      {"decoder.onnx", onnx({{"vocab_size", "99999999999"}, {"context_size", "2"}}), "no usable vocab_size"},
      {"decoder.onnx", onnx({{"vocab_size", "3"}, {"context_size", "0"}}), "no usable context_size"},
      {"joiner.int8.onnx", onnx(decoderData), "is no joiner"},
      {"encoder.int8.onnx", onnx({{"decode_chunk_len", "0"}, {"T", "90"}, {"model_type", "zipformer2"}}),
       "no usable decode_chunk_len"},
      {"encoder.int8.onnx", onnx({{"decode_chunk_len", "4"}, {"T", "90"}}), "no usable model_type"},
      {"encoder.int8.onnx", onnx({{"decode_chunk_len", "4"}, {"T", "90"}, {"model_type", "lstm"}}),
       "no usable num_encoder_layers"},
      {"tokens.txt", "", "no symbol for 0 of 3"},
      {"tokens.txt", "a 0\nb 1\n", "no symbol for 2 of 3"},
      {"tokens.txt", "a 0\nb 1\nc x\n", "line 3 is not a symbol and a number"},
      {"tokens.txt", "a 0\nb 1 2\nc 2\n", "line 2 is not"},
      {"tokens.txt", "a\nb\nc\n", "line 1 is not"},
      {"tokens.txt", std::string(10'000, 'a'), "endless line"},
  };
  for (const auto& row : rows) {
    const ModelFiles files;
    files.write(row.file, row.bytes);
    EXPECT_THAT(checked(files), HasSubstr(row.reason)) << row.file << ": " << row.reason;
  }
  const ModelFiles files;
  files.remove("tokens.txt");
  ASSERT_EQ(mkfifo((files.folder() / "tokens.txt").c_str(), 0600), 0);
  EXPECT_THAT(checked(files), HasSubstr("tokens.txt cannot be read"));
}

TEST(ModelCheck, AcceptsWhatTheLibraryCanRead) {
  for (const auto* tokens : {tokensText, "\xEF\xBB\xBF<blk> 0\r\n\r\n▁A 1\r\nB +2\r\n",
                             "3\na 0\nb 1\nc 2\nd 2\ne -5\n", "a 0\nb 1\nc 2\nd 99999999999999999999\n"}) {
    const ModelFiles files;
    files.write("tokens.txt", tokens);
    EXPECT_THAT(checked(files), IsEmpty()) << tokens;
  }
  const ModelFiles files;
  files.write("encoder.int8.onnx",
              onnx({{"decode_chunk_len", "32"}, {"T", "45"}, {"model_type", "zipformer2"}}));
  const auto check = ModelCheck::check(ModelFolder::read(files.folder()));
  EXPECT_TRUE(check.streaming);
  EXPECT_EQ(check.streamingNetwork, "zipformer2");
}

}  // namespace
}  // namespace tavelo::recognition
