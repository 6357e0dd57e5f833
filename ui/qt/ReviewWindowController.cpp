#include "ui/qt/ReviewWindowController.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "ui/Texts.h"
#include "ui/qt/QtGeometry.h"
#include "ui/qt/ReviewTextView.h"

namespace tavelo {
namespace {

/// A window whose close button calls a function instead of closing it.
class ReviewWindow final : public QWidget {
 public:
  explicit ReviewWindow(std::function<void()> onClose)
      : QWidget(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                             Qt::WindowSystemMenuHint | Qt::WindowMaximizeButtonHint |
                             Qt::WindowCloseButtonHint),
        onClose_(std::move(onClose)) {
    // The program keeps running without windows.
    setAttribute(Qt::WA_QuitOnClose, false);
  }

 protected:
  void closeEvent(QCloseEvent* event) override {
    event->ignore();
    onClose_();
  }

 private:
  std::function<void()> onClose_;
};

}  // namespace

ReviewWindowController::ReviewWindowController()
    : window_(std::make_unique<ReviewWindow>([this] { cancel(); })),
      textView_(new ReviewTextView(window_.get())) {
  buildContent();
}

ReviewWindowController::~ReviewWindowController() = default;

void ReviewWindowController::buildContent() {
  window_->setObjectName("review");
  window_->setWindowTitle(texts::reviewTitle);
  textView_->setObjectName("review.text");
  textView_->setAccessibleName(texts::reviewedText);

  const auto button = [this](const char* title, void (ReviewWindowController::*action)()) {
    auto* made = new QPushButton(title, window_.get());
    // A click on a button must not take the focus from the text.
    made->setFocusPolicy(Qt::TabFocus);
    QObject::connect(made, &QPushButton::clicked, window_.get(), [this, action] { (this->*action)(); });
    return made;
  };
  auto* row = new QHBoxLayout;
  row->setSpacing(measures::reviewButtonSpacing);
  row->addStretch();
  row->addWidget(button(texts::cancel, &ReviewWindowController::cancel), 0, Qt::AlignVCenter);
  row->addWidget(button(texts::insert, &ReviewWindowController::insert), 0, Qt::AlignVCenter);

  auto* column = new QVBoxLayout(window_.get());
  constexpr int inset = measures::reviewInset;
  column->setContentsMargins(inset, inset, inset, inset);
  column->setSpacing(measures::reviewRowSpacing);
  column->addWidget(textView_);
  column->addLayout(row);
  window_->resize(toQt(measures::reviewSize));
  textView_->setFocus();
}

void ReviewWindowController::show(const std::string& text, std::function<void(const std::string&)> onInsert) {
  ++reviews_;
  onInsert_ = std::move(onInsert);
  textView_->setText(text);
  if (const auto screen = screenWithPointer(currentScreenLayout())) {
    // Without the frame, which is not known before the first showing: every review begins at the same place.
    const QSizeF size = window_->size();
    window_->move(toQt(centredPosition(screen->visibleFrame, {size.width(), size.height()})));
  }
  window_->showNormal();
  window_->raise();
  window_->activateWindow();
}

bool ReviewWindowController::isShown() const { return window_->isVisible(); }

void ReviewWindowController::insert() {
  // The callback may begin another review. That replaces `onInsert_`, and the window must stay open for it.
  const auto review = reviews_;
  if (const auto callback = onInsert_) callback(textView_->text());
  if (review == reviews_) window_->hide();
}

void ReviewWindowController::cancel() {
  window_->hide();
  if (onDismiss) onDismiss();
}

}  // namespace tavelo
