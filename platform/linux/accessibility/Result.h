#pragma once

#include <optional>
#include <utility>

#include "platform/Accessibility.h"

namespace tavelo::linuxdesktop {

/// A value, or the error that prevented it; a plain value that any thread may use. To pass an error on:
/// `if (!result) return result.error();`
template <class Value>
class Result final {
 public:
  Result(Value value) : value_(std::move(value)) {}
  /// `error` must not be `success`.
  Result(platform::AXError error) : error_(error) {}
  /// The same result as a wider type.
  template <class Other>
  Result(Result<Other> other) : error_(other.error()) {
    if (other) value_.emplace(std::move(*other));
  }

  explicit operator bool() const { return value_.has_value(); }
  Value& operator*() { return *value_; }
  const Value& operator*() const { return *value_; }
  const Value* operator->() const { return &*value_; }
  Value valueOr(Value fallback) const { return value_.value_or(std::move(fallback)); }

  /// `success` if there is a value.
  platform::AXError error() const { return error_; }

  /// Values are compared, not why there is none.
  bool operator==(const Result& other) const { return value_ == other.value_; }

 private:
  std::optional<Value> value_;
  platform::AXError error_ = platform::AXError::success;
};

}  // namespace tavelo::linuxdesktop
