#include "recognizer/SherpaEngine.h"

#include <utility>

#include "language/Language.h"
#include "language/Texts.h"
#include "recognizer/SherpaOffline.h"
#include "recognizer/SherpaOnline.h"
#include "recognizer/model/ModelCheck.h"

namespace tavelo::recognition {

EngineLoading loadSherpa(const std::string& library, const ModelFolder& model) {
  const auto check = ModelCheck::check(model);
  if (!check.problem.empty()) return {nullptr, check.problem};
  auto opening = sherpa::Library::open(library);
  if (!opening.library) return {nullptr, opening.failure};
  auto loading = check.streaming
                     ? sherpa::OnlineEngine::load(std::move(opening.library), model, check.streamingNetwork)
                     : sherpa::OfflineEngine::load(std::move(opening.library), model);
  if (!loading.engine)
    loading.failure = language::say(language::words::sherpaRefuses, {model.folder.string(), loading.failure});
  return loading;
}

}  // namespace tavelo::recognition
