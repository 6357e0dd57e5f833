#pragma once

#include <string>

#include "platform/Names.h"
#include "ui/ProductData.h"

/// What the windows say, UTF-8. Each text stands here once, for every desktop.
namespace tavelo::texts {

inline constexpr const char* programName = "Tavelo";

// These name a key, the system or the computer, as the desktop calls it.
inline std::string releaseHoldKey(const platform::Names& names) {
  return "Nhả " + names.holdKey + " để tạo và chèn văn bản";
}
/// In its place where the key's name is too long for the line.
inline constexpr const char* releaseAnyHoldKey = "Nhả phím để tạo và chèn văn bản";
inline std::string useHoldKey(const platform::Names& names) {
  return "Giữ " + names.holdKey + " để nói, nhả " + names.holdKey + " để chèn";
}
inline std::string useFallbackKeys(const platform::Names& names) { return "Dự phòng: " + names.fallbackKeys; }
inline std::string accessibilityMissing(const platform::Names& names) {
  return "Accessibility: Cần cấp để bắt " + names.holdKey;
}
inline std::string aboutProgram(const platform::Names& names) {
  return "Tavelo là ứng dụng hỗ trợ đọc thoại và chuyển giọng nói tiếng Việt thành văn bản trên " +
         names.system + ".";
}
inline std::string aboutMaker(const platform::Names& names) {
  return std::string(product::makerName) +
         " là người sáng lập Tavelo và tạo nên ứng dụng này để phục vụ cộng đồng người dùng " +
         names.computer + " tiện hơn.";
}

// The overlay.
inline constexpr const char* recording = "Đang thu âm";
inline constexpr const char* transcribing = "Đang bóc tách văn bản";
inline constexpr const char* inserted = "Đã chèn văn bản";

inline constexpr const char* clickIntoField = "Click vào ô nhập trong 3 giây...";

// The alerts.
inline constexpr const char* permissionsMissing =
    "Cần quyền Microphone và Speech Recognition để nhận giọng nói.";
inline constexpr const char* noTextYet = "Chưa có văn bản nào được tạo trong phiên này.";

// The notifications for a text that could be put nowhere.
inline constexpr const char* notInserted = "Chưa chèn được văn bản";
inline constexpr const char* noPasteKeys =
    "Ứng dụng này không có phím dán. Văn bản ở trong bảng nhớ tạm (clipboard) thêm 60 giây để bạn tự dán, và "
    "trong lịch sử (tavelo history).";
inline constexpr const char* fieldOutOfSight =
    "Ô nhập không còn hiển thị, có thể vì bạn đã chuyển sang thẻ khác. Văn bản ở trong bảng nhớ tạm "
    "(clipboard) thêm 60 giây để bạn tự dán, và trong lịch sử (tavelo history).";
inline constexpr const char* windowLost =
    "Cửa sổ nơi bạn bắt đầu nói không trở lại phía trước. Văn bản ở trong bảng nhớ tạm (clipboard) thêm 60 "
    "giây "
    "để bạn tự dán, và trong lịch sử (tavelo history).";
inline constexpr const char* passwordFocused =
    "Con trỏ đang ở ô mật khẩu. Văn bản ở trong bảng nhớ tạm (clipboard) thêm 60 giây để bạn tự dán, và "
    "trong "
    "lịch sử (tavelo history).";
// Nobody knows whether it still comes.
inline constexpr const char* pasteUnread =
    "Ứng dụng chưa lấy văn bản để dán. Nếu văn bản không hiện ra, hãy chạy lệnh “tavelo insert-last” rồi bấm "
    "vào ô nhập trong vòng 3 giây.";

// The status item and its menu.
inline constexpr const char* statusItemLetters = "Tl";
inline constexpr const char* recordingToolTip = "Tavelo đang thu âm";
inline constexpr const char* startListening = "Bắt đầu nghe";
inline constexpr const char* stopListening = "Dừng và chèn văn bản";
inline constexpr const char* insertsDirectly = "Chèn trực tiếp: Bật";
inline constexpr const char* reviewsFirst = "Chèn trực tiếp: Tắt";
inline constexpr const char* accessibilityUnknown = "Accessibility: Chưa kiểm tra";
inline constexpr const char* accessibilityGranted = "Accessibility: Đã cấp";
inline constexpr const char* showPermissions = "Cấp quyền...";
inline constexpr const char* testInsert = "Test Insert sau 3 giây";
inline constexpr const char* insertLastText = "Dán lại text vừa tạo sau 3 giây";
inline constexpr const char* about = "Giới thiệu Tavelo";
inline constexpr const char* quit = "Thoát";
inline constexpr const char* noStatusArea =
    "Màn hình này không có khay trạng thái. Mở Tavelo lần nữa để hiện menu.";

// The notifications when the program's file has changed.
inline constexpr const char* programReplaced = "Tavelo đã được cập nhật";
inline constexpr const char* restartForNewProgram =
    "Bản đang chạy vẫn là bản cũ. Bấm “Khởi động lại”, hoặc chạy lệnh tavelo restart, để dùng bản mới.";
inline constexpr const char* restart = "Khởi động lại";
inline constexpr const char* programRemoved = "Tavelo đã được gỡ khỏi máy";
inline constexpr const char* goesOnUntilQuit = "Bản đang chạy còn hoạt động cho đến khi bạn thoát.";

// The review window.
inline constexpr const char* reviewTitle = "Xem lại văn bản";
inline constexpr const char* reviewedText = "Văn bản";
inline constexpr const char* cancel = "Hủy";
inline constexpr const char* insert = "Chèn";

// The Edit menu of a Mac.
inline constexpr const char* edit = "Sửa";
inline constexpr const char* undo = "Hoàn tác";
inline constexpr const char* redo = "Làm lại";
inline constexpr const char* cut = "Cắt";
inline constexpr const char* copy = "Sao chép";
inline constexpr const char* paste = "Dán";
inline constexpr const char* selectAll = "Chọn tất cả";

// The About panel.
inline constexpr const char* closeAbout = "Đóng";

}  // namespace tavelo::texts
