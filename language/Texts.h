#pragma once

#include "language/CommandTexts.h"
#include "language/DoctorTexts.h"
#include "language/ModelTexts.h"
#include "language/RecognizerTexts.h"
#include "language/SettingsTexts.h"

/// What commands and errors say, in English and in Vietnamese side by side: one table in five files. Each
/// text stands here once.
///
/// A text without a full stop is a clause, which follows a name and a colon or stands within another text.
/// The English ones are part of the interface: scripts may look for them.
