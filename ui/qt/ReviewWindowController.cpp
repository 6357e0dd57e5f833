#include "ui/qt/ReviewWindowController.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "ui/qt/ReviewTextView.h"
#include "ui/qt/WindowPlacement.h"

namespace tavelo {
namespace {

constexpr QSize contentSize{560, 280};
constexpr int inset = 16;
constexpr int rowSpacing = 12;
constexpr int buttonSpacing = 8;

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
  window_->setWindowTitle("Xem lại văn bản");
  textView_->setObjectName("review.text");
  textView_->setAccessibleName("Văn bản");

  const auto button = [this](const QString& title, void (ReviewWindowController::*action)()) {
    auto* made = new QPushButton(title, window_.get());
    // A click on a button must not take the focus from the text.
    made->setFocusPolicy(Qt::TabFocus);
    QObject::connect(made, &QPushButton::clicked, window_.get(), [this, action] { (this->*action)(); });
    return made;
  };
  auto* row = new QHBoxLayout;
  row->setSpacing(buttonSpacing);
  row->addStretch();
  row->addWidget(button("Hủy", &ReviewWindowController::cancel), 0, Qt::AlignVCenter);
  row->addWidget(button("Chèn", &ReviewWindowController::insert), 0, Qt::AlignVCenter);

  auto* column = new QVBoxLayout(window_.get());
  column->setContentsMargins(inset, inset, inset, inset);
  column->setSpacing(rowSpacing);
  column->addWidget(textView_);
  column->addLayout(row);
  window_->resize(contentSize);
  textView_->setFocus();
}

void ReviewWindowController::show(const std::string& text, std::function<void(const std::string&)> onInsert) {
  ++reviews_;
  onInsert_ = std::move(onInsert);
  textView_->setText(text);
  if (const auto screen = screenWithPointer(currentScreenLayout())) {
    window_->move(centredPosition(screen->visibleFrame, window_->frameGeometry().size()));
  }
  window_->showNormal();
  window_->raise();
  window_->activateWindow();
}

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
