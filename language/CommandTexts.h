#pragma once

#include "language/Text.h"

/// What the command line says; see Texts.h.
namespace tavelo::language::words {

// Files and streams.
inline constexpr Text cannotBeRead{"{0}: cannot be read", "{0}: không đọc được"};
inline constexpr Text cannotBeWritten{"{0}: cannot be written", "{0}: không ghi được"};
inline constexpr Text standardOutput{"standard output: {0}", "đầu ra chuẩn: {0}"};
inline constexpr Text notAFolder{"{0} is no folder", "{0} không phải là thư mục"};

// The running program.
inline constexpr Text notRunning{"it is not running", "chương trình chưa chạy"};
inline constexpr Text noAnswer{"the running program does not answer",
                               "chương trình đang chạy nhưng không trả lời"};
inline constexpr Text runningWithoutAnswer{"it is already running, and does not answer",
                                           "chương trình đã chạy từ trước, nhưng không trả lời"};
inline constexpr Text menuIsOpen{"Tavelo is already running; its menu is open.\n",
                                 "Tavelo đang chạy rồi; menu của nó đã được mở.\n"};
inline constexpr Text setupIsOpen{"Tavelo is already running; its set-up window is open.\n",
                                  "Tavelo đang chạy rồi; cửa sổ thiết lập của nó đã được mở.\n"};
inline constexpr Text noScreen{"there is no desktop to start on (is DISPLAY right?)",
                               "không có màn hình đồ họa để khởi động (biến DISPLAY có đúng không?)"};
inline constexpr Text noDesktopInBuild{
    "this build has no desktop; “tavelo --help” lists what it can do",
    "bản này không có phần màn hình đồ họa; “tavelo --help” liệt kê những gì nó làm được"};
inline constexpr Text noQtInBuild{
    "this build has no Qt, so it can fetch no models; the one with a desktop can",
    "bản này không có Qt nên không tải được mô hình; bản có màn hình đồ họa thì tải được"};
inline constexpr Text noRuntimeFolder{"there is no runtime folder of your own (XDG_RUNTIME_DIR)",
                                      "không có thư mục làm việc của riêng bạn (XDG_RUNTIME_DIR)"};
inline constexpr Text notYourFolder{"{0}: not a folder that you alone may write to",
                                    "{0}: không phải là thư mục mà chỉ mình bạn ghi được"};
inline constexpr Text pathTooLong{"{0}: the path is too long for a socket",
                                  "{0}: đường dẫn quá dài, không tạo được socket"};

// history
inline constexpr Text notAHistory{"{0}: is not a history of dictations",
                                  "{0}: không phải là lịch sử các lần đọc"};
inline constexpr Text onlyAllOfDamaged{
    "{0}: is not a history of dictations; “--forget all” deletes all that is in it",
    "{0}: không phải là lịch sử các lần đọc; “--forget all” xóa mọi thứ trong đó"};
inline constexpr Text forgotNothing{"There is nothing to forget.\n", "Không có gì để quên.\n"};
inline constexpr Text forgotOne{"Forgot the newest dictation.\n", "Đã quên lần đọc mới nhất.\n"};
inline constexpr Text forgotNewest{"Forgot the newest {0} dictations.\n", "Đã quên {0} lần đọc mới nhất.\n"};
inline constexpr Text forgotAll{"Forgot every dictation.\n", "Đã quên mọi lần đọc.\n"};
inline constexpr Text stillInFile{"{0}: cannot be written, so the texts are still in it",
                                  "{0}: không ghi được, nên các văn bản vẫn còn trong đó"};
inline constexpr Text cannotForget{
    "the running program does not forget: it hangs, or is an older version; quit it and run this again",
    "chương trình đang chạy không quên được: nó bị treo, hoặc là bản cũ; hãy thoát nó rồi chạy lại lệnh này"};
inline constexpr Text badCount{"Value {0} is neither a number from 1 on nor “all”",
                               "{0} không phải là một số từ 1 trở lên, cũng không phải “all”"};

// transcribe and rehearse
inline constexpr Text recognizerUnusable{"the recogniser cannot be used: {0}",
                                         "không dùng được bộ nhận dạng: {0}"};
inline constexpr Text noRecognizer{"there is none", "chưa có bộ nhận dạng nào"};
inline constexpr Text noWordsForIt{"its words are not among the transcripts",
                                   "bản chép không có lời của tệp này"};
inline constexpr Text lineWithoutTab{"line {0} has no tab", "dòng {0} không có dấu tab"};
inline constexpr Text lineNamesItAgain{"line {0} names a recording for the second time",
                                       "dòng {0} nhắc lại một bản ghi âm đã có ở trên"};
inline constexpr Text noSoundFile{"no sound file that can be read", "không phải là tệp âm thanh đọc được"};
inline constexpr Text brokenSoundFile{"damaged, or of a kind that cannot be read",
                                      "tệp bị hỏng, hoặc thuộc loại không đọc được"};
inline constexpr Text strangeRate{"a sample rate of {0} Hz", "tần số lấy mẫu {0} Hz"};
inline constexpr Text strangeChannels{"{0} channels", "{0} kênh"};
inline constexpr Text noSoundInIt{"there is no sound in it", "trong đó không có âm thanh"};
inline constexpr Text tooLong{"longer than two hours", "dài hơn hai giờ"};
inline constexpr Text heard{"{0}\n  raw    {1}\n  text   {2}\n", "{0}\n  nghe được  {1}\n  văn bản    {2}\n"};
inline constexpr Text timeTaken{"  time   {0} s of sound in {1} s\n",
                                "  thời gian  {0} giây âm thanh trong {1} giây\n"};
inline constexpr Text wrongWords{
    "  words  {0} of {1} wrong ({2} %): {3} replaced, {4} missing, {5} added\n",
    "  số từ      sai {0} trên {1} ({2} %): {3} bị thay, {4} bị thiếu, {5} bị thừa\n"};
inline constexpr Text loadingModel{"Loading the model", "Đang nạp mô hình"};
inline constexpr Text waitingFor{"{0}, {1} s", "{0}, {1} giây"};
inline constexpr Text mayTakeMinutes{"{0}; this may take minutes", "{0}; có thể mất vài phút"};
inline constexpr Text placeAmong{"{0} of {1}, ", "{0}/{1}, "};
inline constexpr Text transcribedOf{"{0} of {1} recordings transcribed\n",
                                    "đã chép {0} trên {1} bản ghi âm\n"};

// --help. The names of options stay what they are.
inline constexpr Text aboutProgram{"Tavelo: spoken Vietnamese, as text, where you are typing.",
                                   "Tavelo: lời nói tiếng Việt thành chữ, ngay nơi bạn đang gõ."};
inline constexpr Text aboutNormalize{"Print the finished text of a raw transcript",
                                     "In văn bản hoàn chỉnh từ một bản chép lời thô"};
inline constexpr Text aboutNormalizeFile{"The transcript, UTF-8; standard input when absent or -",
                                         "Bản chép lời, UTF-8; nếu không có hoặc là - thì đọc đầu vào chuẩn"};
inline constexpr Text aboutHistory{"List recent dictations, newest first",
                                   "Liệt kê các lần đọc gần đây, mới nhất trước"};
inline constexpr Text aboutLimit{"How many at most", "Nhiều nhất bao nhiêu lần"};
inline constexpr Text aboutHistoryJson{"Print the entries as the history file holds them",
                                       "In các mục đúng như trong tệp lịch sử"};
inline constexpr Text aboutForget{
    "Forget the newest N dictations, or all; without a value, the newest one",
    "Quên N lần đọc mới nhất, hoặc tất cả (all); nếu không ghi gì thì quên lần mới nhất"};
inline constexpr Text aboutRehearse{"Play a story on a simulated desktop and check how it ends",
                                    "Diễn một kịch bản trên màn hình mô phỏng và kiểm tra kết quả"};
inline constexpr Text aboutStory{"The story, a JSON file", "Kịch bản, một tệp JSON"};
inline constexpr Text aboutAudio{
    "Speak this WAV file into the story's microphone, in real time, and recognise it with the "
    "configured recogniser",
    "Phát tệp WAV này vào micrô của kịch bản, theo thời gian thực, và nhận dạng bằng bộ nhận dạng "
    "đã thiết lập"};
inline constexpr Text aboutReleaseAfter{
    "Seconds of silence between the last sample and the release of the key",
    "Số giây im lặng từ mẫu âm cuối đến lúc nhả phím"};
inline constexpr Text aboutSetup{"Open the set-up window, in the running program if there is one",
                                 "Mở cửa sổ thiết lập, trong bản đang chạy nếu có"};
inline constexpr Text aboutRestart{"Have the running program start again, once no dictation is under way",
                                   "Bảo bản đang chạy khởi động lại, khi không còn lần đọc nào dang dở"};
inline constexpr Text aboutTranscribe{"Print what the configured recogniser hears in recordings",
                                      "In những gì bộ nhận dạng đã thiết lập nghe được trong các bản ghi âm"};
inline constexpr Text aboutRecordings{"Recordings: WAV of any rate and number of channels",
                                      "Các bản ghi âm: WAV, tần số và số kênh bất kỳ"};
inline constexpr Text aboutAgainst{
    "Count wrong words: lines with the name of a recording, a tab and what is said in it",
    "Đếm số từ sai: mỗi dòng có tên bản ghi âm, một dấu tab và lời đã nói trong đó"};
inline constexpr Text aboutJson{"Print one JSON document", "In ra một tài liệu JSON"};
inline constexpr Text aboutGetModel{"Fetch a speech model and the library for it",
                                    "Tải một mô hình nhận dạng và thư viện của nó"};
inline constexpr Text aboutModelName{"A name from --list, or vi_VN for the one that we recommend",
                                     "Một tên trong --list, hoặc vi_VN cho mô hình mà chúng tôi khuyên dùng"};
inline constexpr Text aboutList{"List the models: name, size, kind, licence",
                                "Liệt kê các mô hình: tên, dung lượng, loại, giấy phép"};
inline constexpr Text aboutReplace{"Fetch again what is already installed", "Tải lại những gì đã cài"};
inline constexpr Text aboutModelSum{"The SHA-256 checksum that the model's archive must have",
                                    "Mã kiểm SHA-256 mà tệp nén của mô hình phải có"};
inline constexpr Text aboutLibrarySum{"The SHA-256 checksum that the library's archive must have",
                                      "Mã kiểm SHA-256 mà tệp nén của thư viện phải có"};
inline constexpr Text aboutFrom{"Take the archives from this folder instead of the network",
                                "Lấy các tệp nén từ thư mục này thay vì tải qua mạng"};
inline constexpr Text aboutInsertLast{
    "Have the running program insert its last text where the focus is in 3 seconds",
    "Bảo bản đang chạy chèn lại văn bản gần nhất vào chỗ bạn đang gõ sau 3 giây"};
inline constexpr Text aboutListen{"Have the running program begin or end a dictation",
                                  "Bảo bản đang chạy bắt đầu hoặc kết thúc một lần đọc"};
inline constexpr Text aboutAction{"start, stop, toggle or cancel",
                                  "start (bắt đầu), stop (dừng), toggle (đổi) hoặc cancel (hủy)"};
inline constexpr Text aboutDoctor{
    "Check every service that a dictation needs on this desktop, and say what to do",
    "Kiểm tra mọi thứ cần cho việc đọc trên máy này, và chỉ cách sửa"};
inline constexpr Text aboutDoctorJson{
    "Print one JSON document for support, in English, without anything dictated",
    "In ra một tài liệu JSON để gửi khi cần trợ giúp, bằng tiếng Anh, không có gì bạn đã đọc"};
inline constexpr Text aboutHelp{"Print this help message and exit", "In phần trợ giúp này rồi thoát"};
inline constexpr Text aboutVersion{"Display program version information and exit",
                                   "In phiên bản của chương trình rồi thoát"};
inline constexpr Text usageLabel{"Usage", "Cách dùng"};
inline constexpr Text optionsInUsage{"OPTIONS", "TÙY CHỌN"};
inline constexpr Text subcommandInUsage{"SUBCOMMAND", "LỆNH"};
inline constexpr Text rangeLabel{"INT in [{0} - {1}]", "{0} đến {1}"};
inline constexpr Text secondsLabel{"FLOAT in [{0} - {1}]", "{0} đến {1}"};
inline constexpr Text requiredLabel{"REQUIRED", "BẮT BUỘC"};
inline constexpr Text positionalsLabel{"Positionals", "Đối số"};
inline constexpr Text optionsLabel{"Options", "Tùy chọn"};
inline constexpr Text subcommandsLabel{"Subcommands", "Các lệnh"};
inline constexpr Text needsLabel{"Needs", "cần"};
inline constexpr Text excludesLabel{"Excludes", "trừ"};

// Wrong usage. In English the library for command lines says what is wrong.
inline constexpr Text usageUnexpected{"{0} was not expected", "không hiểu “{0}”"};
inline constexpr Text usageMissing{"{0} is required", "còn thiếu {0}"};
inline constexpr Text usageBadValue{"{0}: the value is not right", "{0}: giá trị không đúng"};
inline constexpr Text usageConflict{"{0} excludes another option",
                                    "{0} không đi cùng một tùy chọn khác trong lệnh"};
inline constexpr Text usageNeeds{"{0} requires another option", "{0} cần thêm một tùy chọn khác"};
inline constexpr Text usageWrong{"the command line is not right", "dòng lệnh không đúng"};
inline constexpr Text seeHelp{"tavelo: {0}\nRun with --help for more information.\n",
                              "tavelo: {0}\nChạy với --help để xem cách dùng.\n"};

// Failures of the system; in English the system's own words.
inline constexpr Text systemFailure{"error {0} of the system", "lỗi hệ thống số {0}"};

// Failures of the network; in English the network library's own words.
inline constexpr Text connectionRefused{"Connection refused", "máy đó từ chối kết nối"};
inline constexpr Text hostNotFound{"Host not found", "không tìm thấy máy đó"};
inline constexpr Text connectionClosed{"Connection closed", "máy đó đóng kết nối"};
inline constexpr Text connectionTimedOut{"Connection timed out", "máy đó không trả lời"};
inline constexpr Text notSecure{"TLS handshake failed",
                                "không lập được kết nối an toàn (chứng chỉ không đúng)"};
inline constexpr Text noNetwork{"Network unreachable", "không vào được mạng"};
inline constexpr Text proxyFailed{"Proxy failed", "máy chủ trung gian (proxy) không cho qua"};
inline constexpr Text badRedirect{"Redirected to nowhere", "bị chuyển đến một địa chỉ không dùng được"};
inline constexpr Text networkFailure{"Network error {0}", "lỗi mạng số {0}"};

}  // namespace tavelo::language::words
