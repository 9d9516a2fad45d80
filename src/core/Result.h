#pragma once

#include <cassert>
#include <string>
#include <utility>
#include <variant>

namespace quorvex {

// What went wrong, in the user's words.
struct Failure {
  std::string Message;
};

// A value, or the reason why there is none. For outcomes that are ordinary, such as an unreadable file.
template <typename T>
class Result {
 public:
  Result(T value) : content_(std::move(value)) {}
  Result(Failure failure) : content_(std::move(failure)) {}

  explicit operator bool() const { return std::holds_alternative<T>(content_); }
  T& operator*() { return std::get<T>(content_); }
  const T& operator*() const { return std::get<T>(content_); }
  T* operator->() { return &std::get<T>(content_); }
  const T* operator->() const { return &std::get<T>(content_); }
  const std::string& error() const { return std::get<Failure>(content_).Message; }

 private:
  std::variant<T, Failure> content_;
};

}  // namespace quorvex
