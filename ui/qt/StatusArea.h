#pragma once

#include <QObject>
#include <functional>

namespace tavelo {

/// Finds out whether the program that watches the desktop's status items answers, without waiting for it. Qt
/// waits up to 25 s for each answer when it makes a status item.
///
/// Calls `then(true)` once it has answered or ended, and inside this call if there is none; `then(false)`
/// when it was silent for `patience` milliseconds, which may be `noPatienceLimit`. Never calls it after
/// `context` is gone. Main thread.
void askStatusArea(QObject& context, int patience, std::function<void(bool answers)> then);

/// D-Bus's number for a call without a time limit; no timer runs for it.
inline constexpr int noPatienceLimit = 0x7FFFFFFF;

}  // namespace tavelo
