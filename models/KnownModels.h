#pragma once

#include <span>
#include <string>
#include <string_view>

#include "language/Text.h"

namespace tavelo::models {

enum class Engine { sherpaOnnx, vosk };

/// "sherpa-onnx" or "vosk".
std::string_view nameOf(Engine engine);

/// A speech model that can be fetched.
struct KnownModel {
  /// What the user types to choose it.
  std::string_view shortName;
  /// The publisher's name; its archive and the folder in it bear it.
  std::string_view name;
  std::string_view archive;
  Engine engine;
  std::string_view locale;
  /// Of the download. A round figure, for people; the server says the real one.
  int megabytes;
  /// One clause: who may use it, as far as we know.
  language::Text licence;
  /// One clause: what speaks for it.
  language::Text merit;
};

/// A shared library that recognises with the models of one engine.
struct KnownLibrary {
  /// The publisher's name for the build for this machine.
  std::string name;
  std::string archive;
  /// The folder at its publisher, without a slash at the end.
  std::string url;
  /// One clause, in the current language.
  std::string licence;
  /// Hexadecimal; empty if we do not know it.
  std::string_view sha512;
};

/// One file of a library, with functions that it must name.
struct LibraryFile {
  std::string_view name;
  std::span<const std::string_view> functions;
};

/// All models, the default one first.
std::span<const KnownModel> knownModels();

/// The model with this short or full name; null if there is none.
const KnownModel* findModel(std::string_view name);

/// The publisher's folder that holds the models of an engine, without a slash at the end.
std::string_view modelsUrl(Engine engine);

/// The name of the file in that folder that lists the checksums.
std::string_view checksumList(Engine engine);

/// The processor that this program was built for: "x86_64", "aarch64", or another name.
std::string thisMachine();

/// The library of an engine for this machine; its name is empty if nobody publishes one.
KnownLibrary libraryFor(Engine engine);

/// Its files. Without the first one there is no library; the others must be in place before it.
std::span<const LibraryFile> libraryFiles(Engine engine);

}  // namespace tavelo::models
