#pragma once

#include <string>
#include <vector>

#include "rehearsal/RehearsalServices.h"
#include "rehearsal/Story.h"
#include "rehearsal/StoryStage.h"

namespace tavelo::rehearsal {

/// Each deviation from the expectation in one line: what was wanted and what was found. `delegate` is null
/// after the program has quit; its windows then count as closed.
std::vector<std::string> findDeviations(const Expectation& expectation, StoryStage& stage,
                                        AppDelegate<RehearsalServices>* delegate);

}  // namespace tavelo::rehearsal
