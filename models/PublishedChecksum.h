#pragma once

#include <QByteArray>
#include <QObject>
#include <QUrl>
#include <functional>
#include <string>

#include "models/HeldReply.h"

class QNetworkAccessManager;

namespace tavelo::models {

/// The checksum that a list of a publisher has for a file; empty if it has none that we can read.
///
/// Takes lists as JSON, an array of objects with "name" and "md5", and as text, with a file's name and its
/// checksum on one line.
std::string checksumIn(const QByteArray& list, const std::string& fileName);

/// Asks a publisher's list for the checksum of a file. Main thread, with an application object.
class PublishedChecksum final {
 public:
  /// Calls `answer` once, from the event loop: with an empty text if the list cannot be had within 15 s, is
  /// larger than 5 MB or lacks the file. Does not call it after this object is gone. `network` must outlive
  /// this object.
  PublishedChecksum(QNetworkAccessManager& network, const QUrl& list, std::string fileName,
                    std::function<void(std::string)> answer);
  PublishedChecksum(const PublishedChecksum&) = delete;
  PublishedChecksum& operator=(const PublishedChecksum&) = delete;
  ~PublishedChecksum() = default;

 private:
  /// Receives the signals.
  QObject context_;
  HeldReply reply_{nullptr, DropReply{&context_}};
};

}  // namespace tavelo::models
