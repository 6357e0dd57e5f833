#pragma once

#include <QTranslator>

namespace tavelo {

/// Says in Vietnamese what Qt itself writes into this program's windows: the items of context menus. Qt has
/// no Vietnamese translation of its own. Applies to the whole program while it lives. Main thread, with an
/// application object.
class ToolkitTexts final : public QTranslator {
 public:
  ToolkitTexts();

  bool isEmpty() const override { return false; }
  QString translate(const char* context, const char* sourceText, const char* disambiguation,
                    int n) const override;
};

}  // namespace tavelo
