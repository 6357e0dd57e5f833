#pragma once

#include <string>

#include "models/KnownModels.h"

namespace tavelo {

/// What the set-up window says of a model, in Vietnamese, UTF-8. Any thread.
struct ModelText {
  /// For the list.
  std::string title;
  /// Size, kind and licence.
  std::string facts;
  /// What speaks for it.
  std::string merit;
  /// Whether the table has Vietnamese words for it; otherwise they are the model's own.
  bool isTranslated = false;
};
ModelText textOf(const models::KnownModel& model);

}  // namespace tavelo
