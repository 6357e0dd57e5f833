#pragma once

/// The settings: keys of the settings file, and environment variables of the same name.
namespace tavelo::settings::names {

/// The key to hold: a keysym such as "Pause", or a key such as "RCTL".
inline constexpr const char* holdKey = "TAVELO_FN_KEY";
/// The address of a server that recognises speech.
inline constexpr const char* recognizer = "TAVELO_RECOGNIZER";
/// The folder of a speech model.
inline constexpr const char* model = "TAVELO_MODEL";
/// The same under its older name, which counts if the newer one is not set.
inline constexpr const char* voskModel = "TAVELO_VOSK_MODEL";
/// The libraries that read models.
inline constexpr const char* sherpaLibrary = "TAVELO_SHERPA_LIBRARY";
inline constexpr const char* voskLibrary = "TAVELO_VOSK_LIBRARY";
/// A sound source, as the sound server calls it.
inline constexpr const char* microphone = "TAVELO_MICROPHONE";
/// Web folders to fetch models and their library from.
inline constexpr const char* modelsUrl = "TAVELO_MODELS_URL";
inline constexpr const char* libraryUrl = "TAVELO_LIBRARY_URL";

}  // namespace tavelo::settings::names
