#include "platform/TurnBudget.h"

#include <algorithm>

namespace tavelo::platform {

TurnBudget::TurnBudget(MainQueue& mainQueue, const Clock& clock) : mainQueue_(mainQueue), clock_(clock) {}

Uptime TurnBudget::allowance() const {
  return std::min(callLimit, std::max(turnLimit - spent(), Uptime::zero()));
}

Uptime TurnBudget::spent() const {
  return waitingSince_ ? spent_ + (clock_.uptime() - *waitingSince_) : spent_;
}

void TurnBudget::renewLater() {
  if (renewalIsPosted_) return;
  renewalIsPosted_ = true;
  mainQueue_.async(lifetime_.guard([this] {
    renewalIsPosted_ = false;
    spent_ = Uptime::zero();
    ++turn_;
  }));
}

TurnBudget::Wait::Wait(TurnBudget& budget)
    : budget_(budget), start_(budget.clock_.uptime()), isOutermost_(!budget.waitingSince_) {
  budget_.renewLater();
  if (isOutermost_) budget_.waitingSince_ = start_;
}

TurnBudget::Wait::~Wait() {
  if (!isOutermost_) return;
  budget_.spent_ += elapsed();
  budget_.waitingSince_.reset();
}

Uptime TurnBudget::Wait::elapsed() const { return budget_.clock_.uptime() - start_; }

}  // namespace tavelo::platform
