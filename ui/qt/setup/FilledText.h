#pragma once

#include <QString>
#include <string>

namespace tavelo {

/// A text of the set-up window with `%1`, `%2` … replaced. What is put in is taken as it is. UTF-8; any
/// thread.
template <class... Arguments>
std::string filled(const char* text, const Arguments&... arguments) {
  const QString pattern = QString::fromUtf8(text);
  // Qt complains of a text that has no place for an argument.
  if (!pattern.contains('%')) return text;
  return pattern.arg(QString::fromStdString(arguments)...).toStdString();
}

}  // namespace tavelo
