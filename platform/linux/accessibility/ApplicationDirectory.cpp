#include "platform/linux/accessibility/ApplicationDirectory.h"

#include <QStringList>
#include <utility>

#include <unistd.h>

#include "platform/linux/accessibility/RequestBurst.h"
#include "platform/linux/session/ProcessHandle.h"

namespace tavelo::linuxdesktop {
namespace {

QDBusMessage busRequest(const char* method, const QVariantList& arguments = {}) {
  return atspi::request({QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus")},
                        "org.freedesktop.DBus", method, arguments);
}

}  // namespace

std::vector<QString> ApplicationDirectory::servicesOf(platform::ProcessIdentifier process) {
  std::vector<QString> result;
  if (process == ::getpid()) return result;
  refresh();
  for (const auto& [service, owner] : processes_)
    if (owner == process) result.push_back(service);
  return result;
}

std::vector<platform::ProcessIdentifier> ApplicationDirectory::processes() {
  refresh();
  std::vector<platform::ProcessIdentifier> result;
  for (const auto& [service, owner] : processes_)
    if (owner != ::getpid()) result.push_back(owner);
  return result;
}

std::vector<QString> ApplicationDirectory::services() {
  refresh();
  std::vector<QString> result;
  for (const auto& [service, owner] : processes_)
    if (owner != ::getpid() && !isStopped(owner)) result.push_back(service);
  return result;
}

std::optional<platform::ProcessIdentifier> ApplicationDirectory::processOf(const QString& service) {
  refresh();
  const auto found = processes_.find(service);
  return found == processes_.end() ? std::nullopt : std::optional(found->second);
}

void ApplicationDirectory::refresh() {
  const auto names = atspi::readStrings(bus_.call(busRequest("ListNames")));
  if (std::exchange(connectionNumber_, bus_.connectionNumber()) != bus_.connectionNumber())
    processes_.clear();
  std::map<QString, platform::ProcessIdentifier> current;
  RequestBurst burst(bus_);
  std::map<QString, RequestBurst::Reply<std::uint32_t>> unknown;
  for (const auto& name : names.valueOr({})) {
    if (!name.startsWith(QLatin1Char(':'))) continue;
    if (const auto known = processes_.find(name); known != processes_.end()) {
      current.insert(*known);
    } else {
      unknown.emplace(name, burst.add(busRequest("GetConnectionUnixProcessID", {name}), atspi::readUnsigned));
    }
  }
  burst.send();
  for (const auto& [name, reply] : unknown) {
    if (const auto process = burst.read(reply))
      current.emplace(name, static_cast<platform::ProcessIdentifier>(*process));
  }
  processes_ = std::move(current);
}

}  // namespace tavelo::linuxdesktop
