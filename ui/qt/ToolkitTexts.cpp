#include "ui/qt/ToolkitTexts.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <string_view>

namespace tavelo {
namespace {

struct Translation {
  std::string_view original;
  const char* vietnamese;
};

/// Of a text area and of a link.
constexpr std::array<Translation, 8> menuItems{{{"&Undo", "&Hoàn tác"},
                                                {"&Redo", "&Làm lại"},
                                                {"Cu&t", "&Cắt"},
                                                {"&Copy", "&Sao chép"},
                                                {"Copy &Link Location", "&Sao chép địa chỉ liên kết"},
                                                {"&Paste", "&Dán"},
                                                {"Delete", "&Xóa"},
                                                {"Select All", "Chọn &tất cả"}}};

}  // namespace

ToolkitTexts::ToolkitTexts() { QCoreApplication::installTranslator(this); }

QString ToolkitTexts::translate(const char* context, const char* sourceText, const char*, int) const {
  if (context == nullptr || sourceText == nullptr) return {};
  if (std::string_view(context) != "QWidgetTextControl") return {};
  const auto* const found =
      std::ranges::find(menuItems, std::string_view(sourceText), &Translation::original);
  return found == menuItems.end() ? QString() : QString(found->vietnamese);
}

}  // namespace tavelo
