#pragma once

#include "language/Text.h"

/// What is said of the settings, and of starting at log-in; see Texts.h.
namespace tavelo::language::words {

// Where a value comes from: a variable or a file.
inline constexpr Text fromThere{"from {0}", "lấy từ {0}"};
inline constexpr Text theDefault{"the default", "mặc định"};

// The settings file. These follow its name and a colon.
inline constexpr Text isAFolder{"is a folder", "là một thư mục"};
inline constexpr Text largerThanMegabyte{"is larger than a megabyte", "lớn hơn một megabyte"};
inline constexpr Text unreadable{"cannot be read", "không đọc được"};
inline constexpr Text damagedLine{"line {0} is not NAME=value, and is skipped",
                                  "dòng {0} không có dạng TÊN=giá_trị nên bị bỏ qua"};
inline constexpr Text damagedLines{"line {0} and {1} more are not NAME=value, and are skipped",
                                   "dòng {0} và {1} dòng khác không có dạng TÊN=giá_trị nên bị bỏ qua"};

// Writing it.
inline constexpr Text fileAndReason{"{0}: {1}", "{0}: {1}"};
inline constexpr Text noHomeFolder{"there is no home folder", "không có thư mục nhà"};
inline constexpr Text unwritableValue{"a value has characters that a line of the settings file cannot hold",
                                      "một giá trị có ký tự mà tệp thiết lập không ghi được trên một dòng"};

// The doctor's line.
inline constexpr Text settingsFile{"settings", "tệp thiết lập"};
inline constexpr Text settingsDamaged{"{0}: {1}; correct it, or remove it",
                                      "{0}: {1}; hãy sửa hoặc xóa tệp này"};

// Starting at log-in.
inline constexpr Text autostartOn{"on: your session starts {0}",
                                  "bật: khi bạn đăng nhập, {0} được khởi động"};
inline constexpr Text autostartElsewhere{
    "on, but your session starts {0}; “tavelo autostart on” has it start this program",
    "bật, nhưng khi bạn đăng nhập thì {0} được khởi động; “tavelo autostart on” đổi thành chương trình này"};
inline constexpr Text autostartForeign{"off: {0} starts another program, {1}",
                                       "tắt: {0} khởi động một chương trình khác, {1}"};
inline constexpr Text autostartOff{"off", "tắt"};
inline constexpr Text ownFileUnknown{"the system does not say where this program is",
                                     "hệ thống không cho biết tệp của chương trình này ở đâu"};
inline constexpr Text entryOfAnother{"{0} is for another program, {1}; move it away first",
                                     "{0} là của một chương trình khác, {1}; hãy dời nó đi trước"};
inline constexpr Text aboutAutostart{"Start the program when you log in, or not",
                                     "Khởi động chương trình khi bạn đăng nhập, hoặc không"};
inline constexpr Text aboutAutostartAction{"on, off or status",
                                           "on (bật), off (tắt) hoặc status (cho biết đang bật hay tắt)"};

}  // namespace tavelo::language::words
