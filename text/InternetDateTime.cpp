#include "text/InternetDateTime.h"

#include <array>
#include <cstddef>
#include <cstdio>

namespace tavelo {
namespace {

using std::chrono::sys_seconds;

constexpr std::string_view utcForm = "dddd-dd-ddTdd:dd:ddZ";
constexpr std::string_view offsetForm = "dddd-dd-ddTdd:dd:dd+dd:dd";

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool hasForm(std::string_view text, std::string_view form) {
  if (text.size() != form.size()) return false;
  for (std::size_t i = 0; i < form.size(); ++i) {
    const bool sign = form[i] == '+' && text[i] == '-';
    if (form[i] == 'd' ? !isDigit(text[i]) : text[i] != form[i] && !sign) return false;
  }
  return true;
}

int number(std::string_view text, std::size_t offset, std::size_t count) {
  int value = 0;
  for (const char digit : text.substr(offset, count)) value = value * 10 + (digit - '0');
  return value;
}

/// Reads the time "dd:dd" at `offset`; absent if it is not a time of day.
std::optional<std::chrono::minutes> hoursAndMinutes(std::string_view text, std::size_t offset) {
  const int hours = number(text, offset, 2);
  const int minutes = number(text, offset + 3, 2);
  if (hours > 23 || minutes > 59) return std::nullopt;
  return std::chrono::hours(hours) + std::chrono::minutes(minutes);
}

bool isWrittenWithFourDigits(sys_seconds time) {
  const std::chrono::year_month_day date(std::chrono::floor<std::chrono::days>(time));
  return date.year() >= std::chrono::year(0) && date.year() <= std::chrono::year(9999);
}

}  // namespace

std::string internetDateTime(TranscriptCacheEntry::Time time) {
  const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
  const auto day = std::chrono::floor<std::chrono::days>(seconds);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(seconds - day);
  std::array<char, 64> text{};
  const int length =
      std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02ld:%02ld:%02ldZ",
                    static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                    static_cast<unsigned>(date.day()), static_cast<long>(clock.hours().count()),
                    static_cast<long>(clock.minutes().count()), static_cast<long>(clock.seconds().count()));
  return {text.data(), static_cast<std::size_t>(length)};
}

std::optional<TranscriptCacheEntry::Time> parseInternetDateTime(std::string_view text) {
  const bool utc = hasForm(text, utcForm);
  if (!utc && !hasForm(text, offsetForm)) return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year(number(text, 0, 4)),
                                         std::chrono::month(static_cast<unsigned>(number(text, 5, 2))),
                                         std::chrono::day(static_cast<unsigned>(number(text, 8, 2)))};
  const auto clock = hoursAndMinutes(text, 11);
  const int seconds = number(text, 17, 2);
  const auto offset = utc ? std::chrono::minutes(0) : hoursAndMinutes(text, 20);
  if (!date.ok() || !clock || seconds > 59 || !offset) return std::nullopt;
  const sys_seconds local = std::chrono::sys_days(date) + *clock + std::chrono::seconds(seconds);
  const sys_seconds time = text[19] == '-' ? local + *offset : local - *offset;
  if (!isWrittenWithFourDigits(time)) return std::nullopt;
  return time;
}

}  // namespace tavelo
