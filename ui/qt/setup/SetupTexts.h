#pragma once

/// What the set-up window says, UTF-8; always Vietnamese. `%1` stands for what is put in. An ampersand marks
/// the key that, with Alt, reaches a control; no key is used twice.
namespace tavelo::setuptexts {

inline constexpr const char* title = "Thiết lập Tavelo";
inline constexpr const char* introduction =
    "Khi bốn dòng dưới đây chuyển sang màu xanh, bạn nói được ở mọi nơi gõ được chữ. Mỗi lựa chọn được lưu "
    "ngay.";
inline constexpr const char* close = "&Xong";
inline constexpr const char* startWithSession = "&Khởi động cùng phiên làm việc";
inline constexpr const char* tryHere = "&Nói thử ở đây:";
inline constexpr const char* tryHint = "Bấm vào ô này, giữ %1 và nói một câu, rồi nhả phím.";

// Said of a line by its mark, for those who do not see it.
inline constexpr const char* markDone = "%1: xong";
inline constexpr const char* markWorking = "%1: đang chạy";
inline constexpr const char* markMissing = "%1: chưa xong";

inline constexpr const char* variableDecides =
    "Biến môi trường %1 quyết định ở đây; muốn chọn trong cửa sổ này, hãy bỏ biến đó.";
inline constexpr const char* notSaved = "Không lưu được lựa chọn: %1.";

// The microphone.
inline constexpr const char* microphone = "Micrô";
inline constexpr const char* microphoneLabel = "&Micrô:";
inline constexpr const char* level = "Mức âm";
inline constexpr const char* defaultMicrophone = "Mặc định của hệ thống (%1)";
inline constexpr const char* microphoneGone = "%1 (không có ở đây)";
inline constexpr const char* lookingForMicrophones = "Đang tìm micrô…";
inline constexpr const char* noSoundServer =
    "Không kết nối được với dịch vụ âm thanh. Hãy cài PipeWire hoặc PulseAudio rồi đăng nhập lại.";
inline constexpr const char* noMicrophone =
    "Không thấy micrô nào. Hãy cắm micrô, hoặc bật nó trong cài đặt âm thanh.";
inline constexpr const char* cannotRecord = "Không thu âm được: %1 Hãy chọn micrô khác.";
inline constexpr const char* speakNow = "Hãy nói vài tiếng: vạch mức âm phải chuyển động.";
inline constexpr const char* nothingHeard =
    "Chưa nghe thấy gì. Hãy nói to hơn, kiểm tra nút tắt tiếng, hoặc chọn micrô khác.";
inline constexpr const char* microphoneWorks = "Tavelo nghe được bạn.";
inline constexpr const char* chosenIsGone = "Micrô đã chọn không có ở đây, nên Tavelo dùng micrô mặc định.";

// The recogniser.
inline constexpr const char* recognizer = "Bộ nhận dạng";
inline constexpr const char* modelLabel = "Mô &hình:";
inline constexpr const char* model = "Mô hình";
inline constexpr const char* modelFacts = "%1 MB phải tải · %2 · %3";
inline constexpr const char* modelKind = "loại %1";
inline constexpr const char* modelLicence = "giấy phép: %1";
inline constexpr const char* modelMerit = "Điểm mạnh: %1.";
inline constexpr const char* fetch = "&Tải về";
inline constexpr const char* fetchAgain = "&Tải lại";
inline constexpr const char* pause = "Tạm &dừng";
inline constexpr const char* resume = "Tiếp tụ&c";
inline constexpr const char* cancel = "Hủ&y tải";
inline constexpr const char* progress = "Tiến độ tải";
inline constexpr const char* fetchingLibrary = "Thư viện: %1";
inline constexpr const char* fetchingModel = "Mô hình: %1";
inline constexpr const char* megabytesOf = "%1 / %2 MB";
inline constexpr const char* megabytes = "%1 MB";
inline constexpr const char* fromFolder = "&Lấy từ thư mục…";
inline constexpr const char* chooseFolder = "Thư mục có hai tệp đã tải";
inline constexpr const char* choose = "Chọn";
inline constexpr const char* abandon = "Thôi";
inline constexpr const char* lookIn = "Trong:";
inline constexpr const char* folder = "Thư mục:";
inline constexpr const char* server = "Địa chỉ máy chủ";
inline constexpr const char* serverLabel = "H&oặc máy chủ:";
inline constexpr const char* serverExample = "ws://tên-máy:2700";
inline constexpr const char* useServer = "Thử &và dùng";
inline constexpr const char* noRecognizer = "Hãy chọn mô hình rồi bấm “Tải về”, hoặc nhập địa chỉ máy chủ.";
inline constexpr const char* looking = "Đang xem máy này đã có những gì…";
inline constexpr const char* fetching = "Đang tải về. Bạn có thể đóng cửa sổ này; việc tải vẫn tiếp tục.";
inline constexpr const char* paused = "Đã tạm dừng. Bấm “Tiếp tục” để tải nốt.";
inline constexpr const char* unpacking = "Đang kiểm tra và giải nén…";
inline constexpr const char* fetchFailed = "Việc tải không thành. Xem lý do bên dưới.";
inline constexpr const char* loading = "Đang nạp mô hình…";
inline constexpr const char* modelWorks = "Mô hình đã sẵn sàng. Giọng nói không rời khỏi máy này.";
inline constexpr const char* modelFails = "Mô hình không dùng được (%1). Hãy tải lại hoặc chọn mô hình khác.";
inline constexpr const char* trying = "Đang thử máy chủ…";
inline constexpr const char* serverWorks = "Máy chủ trả lời. Giọng nói của bạn được gửi tới %1.";
inline constexpr const char* serverFails =
    "Máy chủ không dùng được (%1). Hãy kiểm tra địa chỉ, hoặc tải mô hình về máy.";
inline constexpr const char* machineFails = "Máy này không cài được mô hình: %1.";
inline constexpr const char* publisherFails = "Không lấy được tệp từ nhà phát hành: %1.";
inline constexpr const char* byHand =
    "Làm bằng tay: trên một máy vào được mạng, tải hai tệp này, đặt chúng vào một thư mục rồi bấm “Lấy từ "
    "thư "
    "mục…”:";
inline constexpr const char* noHome = "không có thư mục cá nhân";
inline constexpr const char* fetched = "Mô hình đã được cài. Bạn có thể nói ngay.";
inline constexpr const char* fetchFailedOutside =
    "Việc tải mô hình không thành. Hãy mở cửa sổ thiết lập để xem lý do.";

// The hold key.
inline constexpr const char* holdKey = "Phím giữ để nói";
inline constexpr const char* changeKey = "Đổi &phím";
inline constexpr const char* keepKey = "&Giữ phím cũ";
inline constexpr const char* noKeys =
    "Phiên làm việc này không cho Tavelo thấy phím. Hãy đăng xuất rồi đăng nhập vào phiên X11.";
inline constexpr const char* pressKey = "Hãy nhấn phím mà bạn muốn giữ khi nói.";
inline constexpr const char* keyTypes = "%1 dùng để gõ chữ nên không thể là phím giữ. Hãy nhấn phím khác.";
inline constexpr const char* keyIsModifier =
    "%1 được dùng cùng phím khác suốt ngày nên không thể là phím giữ. Hãy nhấn phím khác, ví dụ Ctrl phải.";
inline constexpr const char* keyCommands =
    "%1 đã có việc khác nên không thể là phím giữ. Hãy nhấn phím khác, ví dụ Ctrl phải.";
inline constexpr const char* keyLocks =
    "%1 bật tắt một chế độ mỗi lần nhấn nên không thể là phím giữ. Hãy nhấn phím khác.";
inline constexpr const char* keyUnknown = "Bàn phím không gọi được tên phím này. Hãy nhấn phím khác.";
inline constexpr const char* tryKey = "Hãy giữ thử %1: dòng này sẽ chuyển sang màu xanh.";
inline constexpr const char* keyWorks = "Giữ %1 để nói, nhả %1 để chèn.";

// Accessibility.
inline constexpr const char* accessibility = "Trợ năng";
inline constexpr const char* accessibilityPurpose =
    "Nhờ trợ năng, Tavelo đặt văn bản thẳng vào ô bạn đang gõ, và không nghe khi con trỏ ở ô mật khẩu.";
inline constexpr const char* enable = "&Bật trợ năng";
inline constexpr const char* accessibilityMissing =
    "Máy này không có dịch vụ trợ năng, nên văn bản chỉ được dán. Hãy cài gói at-spi2-core rồi đăng nhập "
    "lại.";
inline constexpr const char* accessibilityOff =
    "Trợ năng đang tắt, nên văn bản chỉ được dán. Bấm “Bật trợ năng”.";
inline constexpr const char* accessibilityOn = "Trợ năng đang bật.";
inline constexpr const char* restartThese =
    "Trợ năng đang bật. Hãy mở lại các ứng dụng này để Tavelo thấy chúng: %1. Cho đến lúc đó, văn bản được "
    "dán vào đấy.";

}  // namespace tavelo::setuptexts
