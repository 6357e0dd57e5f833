#include "platform/linux/session/LinuxWorkspace.h"

#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>
#include <filesystem>
#include <fstream>
#include <utility>

#include <unistd.h>

#include "platform/linux/session/ProcessHandle.h"

namespace tavelo::linuxdesktop {
namespace {

std::optional<std::string> unlessEmpty(std::string text) {
  return text.empty() ? std::nullopt : std::optional(std::move(text));
}

/// The name of the process's program; empty if unknown.
std::string programOf(platform::ProcessIdentifier process) {
  std::ifstream stream("/proc/" + std::to_string(process) + "/cmdline", std::ios::binary);
  std::string program;
  std::getline(stream, program, '\0');
  return std::filesystem::path(program).filename().string();
}

class LinuxApplication final : public platform::RunningApplication {
 public:
  LinuxApplication(LinuxWorkspace& workspace, ActiveWindow& windows, platform::ProcessIdentifier process,
                   WindowIdentifier window, std::optional<std::string> name,
                   std::optional<std::string> identifier)
      : workspace_(workspace),
        windows_(windows),
        process_(process),
        window_(window),
        name_(std::move(name)),
        identifier_(std::move(identifier)) {}

  std::optional<std::string> localizedName() const override { return name_; }
  std::optional<std::string> bundleIdentifier() const override { return identifier_; }
  platform::ProcessIdentifier processIdentifier() const override { return process_.identifier(); }
  bool isTerminated() const override {
    if (!process_.hasEnded()) return false;
    // Nobody asks an ended application to come to the front, and what is there instead is not its own.
    tell(noWindow);
    return true;
  }

  bool activate(platform::ActivationOptions) override {
    if (isTerminated()) return false;
    // The window that the user was in, or another one of the application if it is gone.
    const bool stillExists = windows_.process(window_) == process_.identifier();
    const auto window = stillExists ? std::optional(window_) : windows_.windowOf(process_.identifier());
    const bool isAsked = window && windows_.activate(*window);
    if (isAsked || !window) tell(window.value_or(noWindow));
    return isAsked;
  }

 private:
  void tell(WindowIdentifier window) const {
    if (workspace_.onActivate) workspace_.onActivate(process_.identifier(), window);
  }

  LinuxWorkspace& workspace_;
  ActiveWindow& windows_;
  const ProcessHandle process_;
  const WindowIdentifier window_;
  const std::optional<std::string> name_;
  const std::optional<std::string> identifier_;
};

}  // namespace

std::shared_ptr<platform::RunningApplication> LinuxWorkspace::frontmostApplication() {
  const auto window = windows_.activeWindow();
  const auto process = window ? windows_.process(*window) : std::nullopt;
  if (!process) return nullptr;
  if (*process == ::getpid()) {
    return std::make_shared<LinuxApplication>(
        *this, windows_, *process, *window,
        unlessEmpty(QGuiApplication::applicationDisplayName().toStdString()),
        unlessEmpty(QGuiApplication::desktopFileName().toStdString()));
  }
  const auto windowClass = windows_.windowClass(*window).value_or(WindowClass{});
  const auto program = programOf(*process);
  if (const auto* entry = entries_.find(windowClass, program)) {
    return std::make_shared<LinuxApplication>(*this, windows_, *process, *window, entry->name,
                                              entry->identifier);
  }
  return std::make_shared<LinuxApplication>(
      *this, windows_, *process, *window, unlessEmpty(windowClass.name.empty() ? program : windowClass.name),
      std::nullopt);
}

bool LinuxWorkspace::open(const std::string& url) {
  const QUrl parsed(QString::fromStdString(url), QUrl::StrictMode);
  return parsed.isValid() && QDesktopServices::openUrl(parsed);
}

}  // namespace tavelo::linuxdesktop
