#include "ui/qt/setup/ModelTexts.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "ui/qt/setup/FilledText.h"
#include "ui/qt/setup/SetupTexts.h"

namespace tavelo {
namespace {

struct Words {
  std::string_view model;
  const char* title;
  const char* merit;
};

constexpr std::array words{
    Words{"zipformer-30M", "Zipformer nhỏ (nên dùng)",
          "Học từ hơn 6000 giờ tiếng nói; nhỏ, và nhanh trên mọi máy."},
    Words{"zipformer", "Zipformer lớn", "Bản lớn hơn: cần nhiều bộ nhớ và sức máy hơn."},
    Words{"vosk-small", "Vosk nhỏ", "Mô hình cũ hơn; hiện từng từ ngay khi nghe."},
    Words{"vosk-big", "Vosk lớn", "Mô hình cũ hơn, biết nhiều từ hơn, cần nhiều bộ nhớ hơn."},
};

constexpr const char* unknownLicence =
    "giấy phép chưa rõ: hãy đọc README trong tệp nén trước khi dùng cho công việc";

/// A licence that is known has a name without blanks; anything else is a sentence.
std::string licenceOf(const models::KnownModel& model) {
  if (model.licence.find(' ') != std::string_view::npos) return unknownLicence;
  return filled(setuptexts::modelLicence, std::string(model.licence));
}

}  // namespace

ModelText textOf(const models::KnownModel& model) {
  const auto facts =
      filled(setuptexts::modelFacts, std::to_string(model.megabytes),
             filled(setuptexts::modelKind, std::string(nameOf(model.engine))), licenceOf(model));
  const auto* const found = std::ranges::find(words, model.shortName, &Words::model);
  if (found == words.end())
    return {.title = std::string(model.shortName), .facts = facts, .merit = std::string(model.merit)};
  return {.title = found->title, .facts = facts, .merit = found->merit, .isTranslated = true};
}

}  // namespace tavelo
