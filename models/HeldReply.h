#pragma once

#include <QNetworkReply>
#include <memory>

namespace tavelo::models {

/// Lets a reply go: its receiver hears of it no more, and its connection closes.
struct DropReply {
  /// What receives the reply's signals. Without it, `disconnect` would also take away Qt's own receiver,
  /// which closes the connection.
  QObject* receiver;

  void operator()(QNetworkReply* reply) const {
    reply->disconnect(receiver);
    reply->abort();
    reply->deleteLater();
  }
};

using HeldReply = std::unique_ptr<QNetworkReply, DropReply>;

}  // namespace tavelo::models
