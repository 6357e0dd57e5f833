#include "platform/qt/QtResources.h"

#include <QFile>
#include <QFileInfo>
#include <QString>

// The linker drops a static library's resources unless they are registered. The macro must be outside a
// namespace.
static void registerResources() { Q_INIT_RESOURCE(resources); }

namespace tavelo::qt {

QtResources::QtResources() { registerResources(); }

std::optional<std::string> QtResources::data(const std::string& name, const std::string& type) const {
  QFile file(":/tavelo/" + QString::fromStdString(name) + "." + QString::fromStdString(type));
  // Opening a folder succeeds too, and reads nothing.
  if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) return std::nullopt;
  return file.readAll().toStdString();
}

}  // namespace tavelo::qt
