#pragma once

#include <memory>
#include <string>

namespace tavelo::recognition {

/// A shared library, loaded at run time. Any thread.
class SharedLibrary final {
 public:
  /// The library, or why it cannot be loaded, in the loader's words.
  struct Opening;

  /// Loads `file`; a bare name is looked up on the loader's path.
  static Opening open(const std::string& file);

  ~SharedLibrary();
  SharedLibrary(const SharedLibrary&) = delete;
  SharedLibrary& operator=(const SharedLibrary&) = delete;

  /// Sets `function` to the library's function of that name. Returns false when there is none.
  template <class Function>
  bool find(const char* name, Function*& function) const {
    function = reinterpret_cast<Function*>(address(name));
    return function != nullptr;
  }

 private:
  explicit SharedLibrary(void* handle) : handle_(handle) {}
  void* address(const char* name) const;

  void* handle_;
};

struct SharedLibrary::Opening {
  std::unique_ptr<const SharedLibrary> library;
  std::string failure;
};

}  // namespace tavelo::recognition
