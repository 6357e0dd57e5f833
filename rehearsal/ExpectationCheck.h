#pragma once

#include <string>
#include <vector>

#include "rehearsal/RehearsalServices.h"
#include "rehearsal/Story.h"
#include "rehearsal/StoryStage.h"

namespace tavelo::rehearsal {

/// What is not as expected, one line each: what was wanted and what was found. `delegate` may be null when
/// the program has quit; its windows then count as closed.
std::vector<std::string> findDeviations(const Expectation& expectation, StoryStage& stage,
                                        AppDelegate<RehearsalServices>* delegate);

}  // namespace tavelo::rehearsal
