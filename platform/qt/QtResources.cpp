#include "platform/qt/QtResources.h"

#include <QFile>
#include <QFileInfo>
#include <QString>

// A static library's resources are linked only where somebody asks for them; the macro wants no namespace.
static void registerResources() { Q_INIT_RESOURCE(resources); }

namespace tavelo::qt {

QtResources::QtResources() { registerResources(); }

std::optional<std::string> QtResources::data(const std::string& name, const std::string& type) const {
  QFile file(":/tavelo/" + QString::fromStdString(name) + "." + QString::fromStdString(type));
  // The folder itself opens too, and reads as nothing.
  if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) return std::nullopt;
  return file.readAll().toStdString();
}

}  // namespace tavelo::qt
