#pragma once

#include "language/Text.h"

/// What the doctor says; see Texts.h.
namespace tavelo::language::words {

inline constexpr Text fine{"fine", "ổn"};
inline constexpr Text limited{"limited", "hạn chế"};
inline constexpr Text broken{"broken", "lỗi"};
/// Before a command that mends something.
inline constexpr Text doThis{"do: ", "chạy: "};

// The services.
inline constexpr Text display{"display", "màn hình"};
inline constexpr Text rawKeys{"raw keys", "phím bấm"};
inline constexpr Text holdKey{"hold key", "phím giữ để nói"};
inline constexpr Text accessibilityBus{"accessibility bus", "dịch vụ trợ năng"};
inline constexpr Text accessibility{"accessibility", "trợ năng"};
inline constexpr Text windowManager{"window manager", "trình quản lý cửa sổ"};
inline constexpr Text statusArea{"status area", "khay trạng thái"};
inline constexpr Text clipboard{"clipboard", "bảng nhớ tạm"};
inline constexpr Text soundInput{"sound input", "micrô"};
inline constexpr Text recogniser{"recogniser", "bộ nhận dạng"};
inline constexpr Text runningProgram{"running program", "bản đang chạy"};
inline constexpr Text runningProgramIsOlder{"older than the installed one: start it again",
                                            "cũ hơn bản đã cài: hãy khởi động lại"};
inline constexpr Text historyFolder{"history folder", "thư mục lịch sử"};

// The display server.
inline constexpr Text waylandSession{
    "a Wayland session shows its keys to nobody: log out, and choose an X11 (Xorg) session at the log-in "
    "screen",
    "phiên Wayland không cho chương trình nào thấy phím bấm: hãy đăng xuất, rồi chọn phiên X11 (Xorg) ở màn "
    "hình đăng nhập"};
inline constexpr Text noDisplay{
    "no X11 display: start this from a terminal on the desktop, or set DISPLAY (“:0” in most cases)",
    "không có màn hình X11: hãy chạy lệnh này trong cửa sổ dòng lệnh trên màn hình đồ họa, hoặc đặt biến "
    "DISPLAY (thường là “:0”)"};
inline constexpr Text keysSeen{"every key is seen, whoever has the focus",
                               "thấy mọi phím, dù bạn đang ở cửa sổ nào"};
inline constexpr Text oldServer{
    "the X server lacks XInput 2.2: use an Xorg server, not a bare VNC one",
    "máy chủ X thiếu XInput 2.2: hãy dùng máy chủ Xorg thay cho máy chủ VNC đơn thuần"};
inline constexpr Text noX11Session{"none without an X11 session", "không thấy được khi không có phiên X11"};
/// Follows a colon or a semicolon.
inline constexpr Text chooseHoldKey{
    "set TAVELO_FN_KEY to a key that you have, for example Pause, F8 or Menu; Control-Alt-V works meanwhile",
    "hãy đặt TAVELO_FN_KEY là một phím mà bàn phím của bạn có, ví dụ Pause, F8 hoặc Menu; trong lúc này vẫn "
    "dùng được Ctrl-Alt-V"};
inline constexpr Text unknownHoldKey{"no key is called “{0}” ({3}), so it is {1}; {2}",
                                     "không có phím nào tên là “{0}” ({3}), nên vẫn là {1}; {2}"};
inline constexpr Text wouldBeHeld{"{0} would be held", "sẽ là {0}"};
inline constexpr Text holdKeyMissing{"{0}, but this keyboard has none: {1}",
                                     "{0}, nhưng bàn phím này không có phím đó: {1}"};
inline constexpr Text holdKeyFound{"{0} ({1}); TAVELO_FN_KEY names another",
                                   "{0} ({1}); muốn dùng phím khác thì đặt TAVELO_FN_KEY"};
inline constexpr Text noneWithoutDisplay{"none without a display", "không có khi không có màn hình"};
inline constexpr Text noWindowManager{
    "none, or one that tells nothing: text may miss its window when you change windows meanwhile; start one, "
    "for example openbox",
    "không có, hoặc không cho biết gì: văn bản có thể lạc sang cửa sổ khác nếu bạn đổi cửa sổ trong lúc nói; "
    "hãy chạy một trình, ví dụ openbox"};
inline constexpr Text unnamedWindowManager{"runs", "đang chạy"};
inline constexpr Text noActiveWindow{
    "{0}: does not say which window is active (_NET_ACTIVE_WINDOW), so the one with the focus counts",
    "{0}: không cho biết cửa sổ nào ở phía trước (_NET_ACTIVE_WINDOW), nên cửa sổ đang nhận phím được dùng "
    "thay"};
inline constexpr Text noClipboard{"cannot be reached, so nothing can be pasted",
                                  "không dùng được, nên không dán được gì"};
inline constexpr Text clipboardKept{"reached; a clipboard manager keeps it",
                                    "dùng được; có trình quản lý bảng nhớ tạm giữ lại nội dung"};
inline constexpr Text clipboardReached{"reached", "dùng được"};

// What all Linux desktops have.
inline constexpr Text busAnswers{"answers", "trả lời"};
inline constexpr Text busIsSilent{
    "does not answer, so text goes in by pasting only: install at-spi2-core and log in again",
    "không trả lời, nên văn bản chỉ được đưa vào bằng cách dán: hãy cài at-spi2-core rồi đăng nhập lại"};
inline constexpr Text accessibilityOn{"on", "đang bật"};
inline constexpr Text offWithoutBus{"off while the bus does not answer",
                                    "tắt, vì dịch vụ trợ năng không trả lời"};
inline constexpr Text accessibilityOff{
    "off: choose “Cấp quyền...” in Tavelo's menu, then restart your applications",
    "đang tắt: hãy chọn “Cấp quyền...” trong menu của Tavelo, rồi mở lại các ứng dụng của bạn"};
inline constexpr Text menuShown{"shows the menu", "hiện menu của Tavelo"};
inline constexpr Text noStatusArea{
    "none: run “tavelo” once more to open the menu; on GNOME, the AppIndicator extension brings one",
    "không có: chạy “tavelo” lần nữa để mở menu; trên GNOME, phần mở rộng AppIndicator sẽ thêm khay này"};
inline constexpr Text microphoneOpens{"{0} opens ({1})", "mở được {0} ({1})"};
inline constexpr Text noSuchSource{
    "there is no source “{0}” ({1}), so {2} opens; “pactl list short sources” prints their names",
    "không có nguồn âm thanh “{0}” ({1}), nên dùng {2}; “pactl list short sources” in ra tên các nguồn"};
inline constexpr Text noMicrophone{
    "“{0}”: plug a microphone in, choose it in the sound settings, and see that the sound server (PulseAudio "
    "or PipeWire) runs",
    "“{0}”: hãy cắm micrô, chọn nó trong phần cài đặt âm thanh, và xem dịch vụ âm thanh (PulseAudio hoặc "
    "PipeWire) có chạy không"};
inline constexpr Text noRecogniserAtAll{
    "none{0}: run “tavelo get-model”, or set TAVELO_RECOGNIZER to the address of a Vosk server, such as "
    "ws://host:2700",
    "chưa có{0}: hãy chạy “tavelo get-model”, hoặc đặt TAVELO_RECOGNIZER là địa chỉ của một máy chủ Vosk, ví "
    "dụ ws://host:2700"};
inline constexpr Text recogniserLoads{
    "{0}: the model is still loading; dictations are kept until it is ready",
    "{0}: mô hình còn đang được nạp; lời bạn đọc được giữ lại đến khi nạp xong"};
inline constexpr Text failedBefore{"; it works now, but failed {0}",
                                   "; bây giờ chạy được, nhưng đã có lỗi {0}"};
inline constexpr Text recogniserFails{"{0}: {1}; start it, or correct what names it",
                                      "{0}: {1}; hãy khởi động nó, hoặc sửa lại chỗ khai báo nó"};
inline constexpr Text historyNotKept{
    "{0}: {1}, so dictations are not kept: make it a folder that you may write to",
    "{0}: {1}, nên các lần đọc không được lưu: hãy làm cho nó thành thư mục mà bạn ghi được"};

// What recognises, and where.
inline constexpr Text onThisMachine{"on this machine", "trên máy này"};
inline constexpr Text withModel{"on this machine, with {0}", "trên máy này, với {0}"};
inline constexpr Text withModelAndLibrary{"on this machine, with {0} and {1}",
                                          "trên máy này, với {0} và {1}"};
inline constexpr Text byServer{"by the server at {0}", "bằng máy chủ ở {0}"};

}  // namespace tavelo::language::words
