#pragma once

#include <QColor>
#include <QFont>

class QPalette;

namespace tavelo {

/// The user's interface font, `size` device-independent pixels high, which may be fractional. Main thread.
QFont systemFont(double size, QFont::Weight weight = QFont::Normal);

/// Colours for a light or dark appearance, whichever `palette` has. Any thread.
QColor systemRed(const QPalette& palette);
QColor systemGreen(const QPalette& palette);
QColor systemBlue(const QPalette& palette);
/// For less important text: the palette's text colour, fainter.
QColor secondaryLabel(const QPalette& palette);

}  // namespace tavelo
