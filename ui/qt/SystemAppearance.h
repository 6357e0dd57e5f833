#pragma once

#include <QColor>
#include <QFont>

class QPalette;

namespace tavelo {

/// The user's interface font, `size` device-independent pixels high; fractions count. Main thread.
QFont systemFont(double size, QFont::Weight weight = QFont::Normal);

/// Colours that follow the light or dark appearance that `palette` shows. Any thread.
QColor systemRed(const QPalette& palette);
QColor systemGreen(const QPalette& palette);
QColor systemBlue(const QPalette& palette);
/// For text that stands back behind the label colour, which is the palette's own for text.
QColor secondaryLabel(const QPalette& palette);

}  // namespace tavelo
