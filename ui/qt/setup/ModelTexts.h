#pragma once

#include <string>

#include "models/KnownModels.h"

namespace tavelo {

/// What the set-up window says of a model, in Vietnamese, UTF-8. Any thread.
struct ModelText {
  /// For the list; the name to type if nobody has thought of another one.
  std::string title;
  /// Size, kind and licence.
  std::string facts;
  /// What speaks for it.
  std::string merit;
};
ModelText textOf(const models::KnownModel& model);

}  // namespace tavelo
