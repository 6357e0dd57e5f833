#pragma once

#include "language/Text.h"

/// What fetching and installing a model says; see Texts.h.
namespace tavelo::language::words {

// The known models.
inline constexpr Text licenceUnknown{
    "not known to us: read the README in the archive before you use it at work",
    "chúng tôi không biết: hãy đọc tệp README trong gói trước khi dùng cho công việc"};
inline constexpr Text licenceApacheAndMit{"Apache-2.0; its onnxruntime: MIT",
                                          "Apache-2.0; onnxruntime đi kèm: MIT"};
inline constexpr Text meritSmallest{
    "trained on more than 6000 hours of speech, small and quick on any machine",
    "học từ hơn 6000 giờ tiếng nói, nhỏ và nhanh trên mọi máy"};
inline constexpr Text meritLarger{"the larger of the two new ones: more memory and more work",
                                  "mô hình lớn hơn trong hai mô hình mới: cần nhiều bộ nhớ và sức máy hơn"};
inline constexpr Text meritOld{"an older model; shows each word as it is heard",
                               "mô hình cũ hơn; hiện từng từ ngay khi nghe được"};
inline constexpr Text meritOldBig{"the older model with more words, and more memory",
                                  "mô hình cũ có nhiều từ hơn, và cần nhiều bộ nhớ hơn"};

// The list.
inline constexpr Text modelInList{
    "{0}\n    name     {1}\n    size     about {2} MB to fetch\n    kind     {3}, {4}\n    licence  {5}\n    "
    "why      {6}\n",
    "{0}\n    tên         {1}\n    dung lượng  khoảng {2} MB cần tải\n    loại        {3}, {4}\n    giấy "
    "phép   {5}\n    điểm mạnh   {6}\n"};
inline constexpr Text libraryInList{"    library  {0}, licence {1}\n",
                                    "    thư viện    {0}, giấy phép {1}\n"};
inline constexpr Text defaultModel{"\nWithout a name, {0} is fetched.\n",
                                   "\nNếu không ghi tên thì {0} được tải.\n"};

// The options.
inline constexpr Text unknownModel{"no model is known as {0}", "không có mô hình nào tên là {0}"};
inline constexpr Text notASum{"{0} is not a SHA-256 checksum", "{0} không phải là mã kiểm SHA-256"};
inline constexpr Text notAWebAddress{"{0} must be an address that begins with http:// or https://",
                                     "{0} phải là một địa chỉ bắt đầu bằng http:// hoặc https://"};
inline constexpr Text isNotAFolder{"{0} is not a folder", "{0} không phải là thư mục"};
inline constexpr Text seeGetModelHelp{"tavelo: {0}; see “tavelo get-model --help”\n",
                                      "tavelo: {0}; xem “tavelo get-model --help”\n"};
inline constexpr Text noHome{"there is no home folder to install a model in",
                             "không có thư mục nhà để cài mô hình vào"};

// The steps.
inline constexpr Text megabytes{"{0} MB", "{0} MB"};
inline constexpr Text megabytesOf{"{0} of {1} MB", "{0} trên {1} MB"};
inline constexpr Text alreadyThere{"{0} is already there", "{0} đã có sẵn"};
inline constexpr Text usersOwnStays{
    "{0} is already there. We did not install it, so it stays; --replace replaces it",
    "{0} đã có sẵn. Nó không do chúng tôi cài nên được giữ nguyên; muốn thay thì thêm --replace"};
inline constexpr Text fetching{"Fetching {0}", "Đang tải {0}"};
inline constexpr Text resuming{"Fetching {0}, resuming where it stopped",
                               "Đang tải {0}, tiếp từ chỗ đã dừng"};
inline constexpr Text fetchingAgain{"The part of an earlier run does not fit; fetching it again",
                                    "Phần đã tải lần trước không khớp; đang tải lại"};
inline constexpr Text unpacking{"Checking and unpacking {0}", "Đang kiểm tra và giải nén {0}"};
inline constexpr Text installed{"Installed {0} ({1}, SHA-256 {2})", "Đã cài {0} ({1}, SHA-256 {2})"};
inline constexpr Text notCompared{
    "\n  There was no checksum to compare it with: it came whole, and its files fit.",
    "\n  Không có mã kiểm để đối chiếu: tệp tải về nguyên vẹn, và các tệp bên trong phù hợp."};
inline constexpr Text recognisesFromNow{
    "From its next start on, Tavelo recognises Vietnamese on this machine.\n",
    "Từ lần khởi động tới, Tavelo nhận dạng tiếng Việt ngay trên máy này.\n"};
inline constexpr Text stopped{"stopped; the next run resumes the download",
                              "đã dừng; lần chạy sau sẽ tải tiếp"};
/// The addresses stand between the two, one a line.
inline constexpr Text byHand{"By hand: on a machine that can reach them, download\n",
                             "Cách làm bằng tay: trên một máy vào được các địa chỉ này, hãy tải\n"};
inline constexpr Text byHandThen{
    "put both into one folder and run get-model again, with --from FOLDER {0}\nIf the publisher has moved, "
    "{1} and {2} name the folders where the files are now.\n",
    "để cả hai vào một thư mục rồi chạy lại get-model, với --from THƯ_MỤC {0}\nNếu nơi phát hành đã dời đi, "
    "đặt {1} và {2} là thư mục mới của các tệp.\n"};

// Downloads.
inline constexpr Text serverSendsTooMuch{"the server sends more than any model has",
                                         "máy chủ gửi nhiều hơn mọi mô hình có thể có"};
inline constexpr Text cannotWriteTo{"cannot write to {0}: {1}", "không ghi được vào {0}: {1}"};
inline constexpr Text cannotWriteInto{"cannot write to {0}", "không ghi được vào {0}"};
inline constexpr Text cannotLock{"cannot lock {0}", "không khóa được {0}"};
inline constexpr Text alreadyFetching{"a download is already running", "đang có một lần tải khác chạy"};
inline constexpr Text anotherPart{"the server sent another part than was asked for",
                                  "máy chủ gửi một phần khác với phần được yêu cầu"};
inline constexpr Text noSpace{"not enough space in {0}: {1} MB are needed, {2} MB are free",
                              "không đủ chỗ trong {0}: cần {1} MB, còn trống {2} MB"};
inline constexpr Text sizeChanges{"the server keeps changing the size of the file",
                                  "máy chủ cứ đổi kích thước của tệp"};
inline constexpr Text serverAnswered{"the server answered {0}", "máy chủ trả lời {0}"};
inline constexpr Text connectionBroke{"the connection broke", "kết nối bị đứt"};
inline constexpr Text cannotFetch{"cannot fetch {0}: {1}", "không tải được {0}: {1}"};
inline constexpr Text noLibraryForMachine{
    "the library's publisher builds it for x86_64 and aarch64, not for {0}",
    "nơi phát hành chỉ có thư viện cho x86_64 và aarch64, không có cho {0}"};
inline constexpr Text noteIsNoFile{"{0} is not a file; remove it and run this again",
                                   "{0} không phải là tệp; hãy xóa nó rồi chạy lại"};
inline constexpr Text noSuchArchive{"there is no {0}", "không có {0}"};
inline constexpr Text gave{"what {0} gave {1}", "thứ nhận được từ {0} {1}"};

// What is wrong with an archive. Each follows the archive's name.
inline constexpr Text unreadableArchive{"cannot be read", "không đọc được"};
inline constexpr Text otherSum{"has the {0} checksum {1}, not {2}", "có mã kiểm {0} là {1}, không phải {2}"};
inline constexpr Text otherThanPublished{"has the {0} checksum {1}, not the published {2}",
                                         "có mã kiểm {0} là {1}, không phải mã đã công bố {2}"};
inline constexpr Text otherThanKnown{"has the {0} checksum {1}, not the known {2}",
                                     "có mã kiểm {0} là {1}, không phải mã đã biết {2}"};
inline constexpr Text nameTooLong{"has a name in it that is too long", "chứa một tên quá dài"};
inline constexpr Text notWhole{"is not whole", "không nguyên vẹn"};
inline constexpr Text notAnArchive{"is not an archive (perhaps a page from a proxy)",
                                   "không phải là tệp nén (có lẽ là một trang báo của máy chủ trung gian)"};
inline constexpr Text tooManyFiles{"has too many files in it", "chứa quá nhiều tệp"};
inline constexpr Text leadsOutside{"has files that lead outside of it", "chứa tệp dẫn ra bên ngoài"};
inline constexpr Text neitherFileNorFolder{"has something in it that is neither a file nor a folder",
                                           "chứa thứ không phải tệp cũng không phải thư mục"};
inline constexpr Text nameTwice{"has a name twice", "có một tên hai lần"};
inline constexpr Text fileWithoutName{"has a file without a name", "có một tệp không tên"};
inline constexpr Text growsTooMuch{"would unpack to far more than its size allows for",
                                   "khi giải nén sẽ lớn hơn nhiều so với kích thước của nó"};
inline constexpr Text noModelInIt{"is whole, but there is no model in it",
                                  "nguyên vẹn, nhưng không có mô hình bên trong"};
inline constexpr Text unsoundModel{"is whole, but its model is not sound: {0}",
                                   "nguyên vẹn, nhưng mô hình bên trong bị lỗi: {0}"};
inline constexpr Text hasOrigin{"is whole, but there is already a {0} in it",
                                "nguyên vẹn, nhưng bên trong đã có sẵn {0}"};
inline constexpr Text noLibraryInIt{"is whole, but there is no {0} for this machine in it",
                                    "nguyên vẹn, nhưng không có {0} cho máy này bên trong"};

}  // namespace tavelo::language::words
