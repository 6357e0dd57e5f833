#include "recognizer/SharedLibrary.h"

#include <dlfcn.h>

#include "language/Language.h"
#include "language/Texts.h"

namespace tavelo::recognition {

SharedLibrary::Opening SharedLibrary::open(const std::string& file) {
  void* handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle != nullptr) return {std::unique_ptr<const SharedLibrary>{new SharedLibrary{handle}}, {}};
  const char* reason = dlerror();
  // The loader knows English only.
  const bool says = reason != nullptr && language::current() == language::Language::english;
  return {nullptr, says ? reason : language::say(language::words::cannotBeLoaded, {file})};
}

SharedLibrary::~SharedLibrary() { dlclose(handle_); }

void* SharedLibrary::address(const char* name) const { return dlsym(handle_, name); }

}  // namespace tavelo::recognition
