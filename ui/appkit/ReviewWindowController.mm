#include "ui/appkit/ReviewWindowController.h"

#include <utility>

#import "ui/appkit/AppKitValues.h"
#import "ui/appkit/ReviewWindow.h"

namespace tavelo {

struct ReviewWindowController::Window {
  TaveloReviewWindow* controller;
};

ReviewWindowController::ReviewWindowController() {
  ReviewActions actions{.insert = [this] { insert(); },
                        .dismiss =
                            [this] {
                              if (onDismiss) onDismiss();
                            }};
  window_ = std::make_unique<Window>(Window{[[TaveloReviewWindow alloc] initWithActions:std::move(actions)]});
}

ReviewWindowController::~ReviewWindowController() { [window_->controller disconnect]; }

void ReviewWindowController::show(const std::string& text, std::function<void(const std::string&)> onInsert) {
  ++reviews_;
  onInsert_ = std::move(onInsert);
  [window_->controller showText:toAppKit(text)];
}

void ReviewWindowController::insert() {
  // The callback may begin another review. That replaces `onInsert_`, and the window must stay open for it.
  const auto review = reviews_;
  if (const auto callback = onInsert_) callback(fromAppKit(window_->controller.textView.string));
  if (review == reviews_) [window_->controller closeAfterInsertion];
}

}  // namespace tavelo
