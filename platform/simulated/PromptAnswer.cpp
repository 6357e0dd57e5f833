#include "platform/simulated/PromptAnswer.h"

#include <thread>
#include <utility>

namespace tavelo::simulated {

void passOn(SimulatedLoop& loop, const PromptAnswer& answer, std::function<void()> deliver) {
  switch (answer.when) {
    case PromptAnswer::When::never:
      return;
    case PromptAnswer::When::atOnce:
      if (answer.onForeignThread) {
        std::thread{std::move(deliver)}.join();
      } else {
        deliver();
      }
      return;
    case PromptAnswer::When::later:
      if (answer.onForeignThread) {
        loop.foreignAfter(answer.after, std::move(deliver));
      } else {
        loop.asyncAfter(answer.after, std::move(deliver));
      }
      return;
  }
}

}  // namespace tavelo::simulated
