#pragma once

#include <QNetworkAccessManager>
#include <memory>

namespace tavelo::models {

/// Ends a network manager and waits 200 ms for that at most; a thread sees to the rest. The destructor alone
/// waits for 5 s while a server sends headers without end, because Qt's own thread then hears nothing else.
struct EndNetwork {
  void operator()(QNetworkAccessManager* network) const;
};

using HeldNetwork = std::unique_ptr<QNetworkAccessManager, EndNetwork>;

}  // namespace tavelo::models
