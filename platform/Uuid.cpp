#include "platform/Uuid.h"

#include <random>

namespace tavelo::platform {
namespace {

constexpr std::string_view hexDigits = "0123456789ABCDEF";

constexpr bool hyphenComesBefore(std::size_t byte) {
  return byte == 4 || byte == 6 || byte == 8 || byte == 10;
}

std::optional<std::uint8_t> hexValue(char digit) {
  if (digit >= '0' && digit <= '9') return static_cast<std::uint8_t>(digit - '0');
  if (digit >= 'A' && digit <= 'F') return static_cast<std::uint8_t>(digit - 'A' + 10);
  if (digit >= 'a' && digit <= 'f') return static_cast<std::uint8_t>(digit - 'a' + 10);
  return std::nullopt;
}

}  // namespace

Uuid Uuid::random() {
  std::random_device device;
  std::uniform_int_distribution<unsigned> byte(0, 255);
  Uuid uuid;
  for (auto& b : uuid.bytes_) b = static_cast<std::uint8_t>(byte(device));
  uuid.bytes_[6] = static_cast<std::uint8_t>((uuid.bytes_[6] & 0x0F) | 0x40);
  uuid.bytes_[8] = static_cast<std::uint8_t>((uuid.bytes_[8] & 0x3F) | 0x80);
  return uuid;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
  if (text.size() != 36) return std::nullopt;
  Uuid uuid;
  std::size_t at = 0;
  for (std::size_t i = 0; i < uuid.bytes_.size(); ++i) {
    if (hyphenComesBefore(i) && text[at++] != '-') return std::nullopt;
    const auto high = hexValue(text[at]);
    const auto low = hexValue(text[at + 1]);
    if (!high || !low) return std::nullopt;
    uuid.bytes_[i] = static_cast<std::uint8_t>(*high << 4 | *low);
    at += 2;
  }
  return uuid;
}

std::string Uuid::string() const {
  std::string text;
  text.reserve(36);
  for (std::size_t i = 0; i < bytes_.size(); ++i) {
    if (hyphenComesBefore(i)) text += '-';
    text += hexDigits[bytes_[i] >> 4];
    text += hexDigits[bytes_[i] & 0x0F];
  }
  return text;
}

}  // namespace tavelo::platform
