#pragma once

#include <istream>
#include <string>

#include "recognizer/model/ModelFolder.h"

namespace tavelo::recognition {

/// Whether a sherpa-onnx model's files can be given to the library, which ends the process on some bad ones.
/// Any thread; never throws. A plain value.
struct ModelCheck {
  /// Why not: an English sentence without a full stop. Empty when the files are good.
  std::string problem;
  /// Whether the encoder is made for streaming recognition, with its network's name, which is empty for
  /// others.
  bool streaming = false;
  std::string streamingNetwork;

  /// Reads the files of a folder whose kind is `sherpaOnnx`.
  static ModelCheck check(const ModelFolder& model);
};

/// Checks a table of tokens: each line has a symbol and a number, and the numbers below `vocabulary` are all
/// there. Returns what is wrong; empty when nothing is.
std::string checkTokens(std::istream& table, long vocabulary);

}  // namespace tavelo::recognition
