#pragma once

#include <QIcon>
#include <functional>
#include <optional>
#include <string>

#include "platform/Names.h"

namespace tavelo {

/// Shows the modal panel that says what the program is and who made it; returns when the user has closed it.
/// `portrait` holds the bytes of a picture; if it is absent or unreadable, its place stays empty. `openLink`
/// gets the address that the user clicked, if it is valid. Main thread.
void showAboutPanel(const platform::Names& names, const QIcon& icon,
                    const std::optional<std::string>& portrait,
                    const std::function<void(const std::string&)>& openLink);

}  // namespace tavelo
