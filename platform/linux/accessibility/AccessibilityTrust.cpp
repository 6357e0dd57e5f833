#include "platform/linux/accessibility/AccessibilityTrust.h"

#include <utility>

#include "platform/linux/session/SessionType.h"

namespace tavelo::linuxdesktop {
namespace {

constexpr const char* title = "Tavelo cần quyền trợ năng";
constexpr const char* waylandText =
    "Phiên làm việc này dùng Wayland, nơi Tavelo không nhận được phím bấm và không chèn được văn bản. "
    "Hãy đăng xuất rồi đăng nhập vào phiên X11.";
constexpr const char* noBusText =
    "Máy này không có dịch vụ trợ năng (AT-SPI). Hãy cài gói at-spi2-core rồi đăng nhập lại.";
constexpr const char* switchedOnText =
    "Tavelo vừa bật trợ năng. Các ứng dụng đang chạy có thể cần được khởi động lại để Tavelo chèn được "
    "văn bản vào đó.";
constexpr const char* noKeysText = "Máy chủ X này không cho Tavelo nhận phím bấm (cần XInput 2.2).";

}  // namespace

AccessibilityTrust::AccessibilityTrust(AccessibilityBus& bus, platform::UserNotifications& notifications,
                                       std::function<bool()> hasRawKeyEvents)
    : bus_(bus), notifications_(notifications), hasRawKeyEvents_(std::move(hasRawKeyEvents)) {}

AccessibilityTrust::Facts AccessibilityTrust::facts() {
  return {.isWaylandSession = isWaylandSession(),
          .busAnswers = bus_.isAnswering(),
          .isEnabled = bus_.isEnabled(),
          .hasRawKeyEvents = hasRawKeyEvents_()};
}

void AccessibilityTrust::prompt(const Facts& facts) {
  if (facts.isWaylandSession) return notifications_.post(title, waylandText);
  if (!facts.busAnswers) return notifications_.post(title, noBusText);
  if (!facts.isEnabled) {
    bus_.enable();
    notifications_.post(title, switchedOnText);
  }
  if (!facts.hasRawKeyEvents) notifications_.post(title, noKeysText);
}

void AccessibilityTrust::announceUnsuitableSession() {
  if (isWaylandSession()) notifications_.post(title, waylandText);
}

}  // namespace tavelo::linuxdesktop
