#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace tavelo {

/// Makes an application object with `make`, and keeps GTK small meanwhile. On a GTK desktop Qt loads GTK to
/// follow its theme, and GTK would do more than that:
/// - It would join the accessibility bus beside Qt, and wait for as long as a bus does not answer.
/// - The first GTK program of an X server looks for OpenGL. That loads its driver: 54 MB and 40 ms.
/// Programs that are started later are not affected. Main thread.
template <class Make>
auto withSmallGtk(const Make& make) {
  class Variable final {
   public:
    Variable(const char* name, const char* value)
        : name_(name), wasSet_(qEnvironmentVariableIsSet(name)), before_(qgetenv(name)) {
      qputenv(name, value);
    }
    ~Variable() { wasSet_ ? qputenv(name_, before_) : qunsetenv(name_); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

   private:
    const char* name_;
    const bool wasSet_;
    const QByteArray before_;
  };
  const Variable bridge("NO_AT_BRIDGE", "1");
  const Variable drawing("GDK_GL", "disable");
  return make();
}

}  // namespace tavelo
