#include "models/PublishedChecksum.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QTimer>
#include <utility>

#include "models/ArchiveCheck.h"

namespace tavelo::models {
namespace {

constexpr int patienceInMilliseconds = 15'000;
constexpr qint64 largest = 5'000'000;

QByteArray entryInJson(const QJsonArray& list, const QString& fileName) {
  for (const auto& each : list) {
    const auto name = each[QLatin1String("name")].toString();
    // The list leaves the ending out.
    if (name == fileName || name + QLatin1String(".zip") == fileName)
      return each[QLatin1String("md5")].toString().toLatin1();
  }
  return {};
}

QByteArray entryInText(const QByteArray& list, const QByteArray& fileName) {
  for (const auto& line : list.split('\n')) {
    const auto words = line.simplified().split(' ');
    // Some tools put a "*" before the names of binary files.
    if (words.size() != 2 || (!words.contains(fileName) && !words.contains('*' + fileName))) continue;
    return words.at(words.at(0).endsWith(fileName) ? 1 : 0);
  }
  return {};
}

}  // namespace

std::string checksumIn(const QByteArray& list, const std::string& fileName) {
  const auto json = QJsonDocument::fromJson(list);
  const auto name = QString::fromStdString(fileName);
  auto entry = json.isArray() ? entryInJson(json.array(), name) : entryInText(list, name.toUtf8());
  auto checksum = entry.toLower().toStdString();
  return isChecksum(checksum) ? checksum : std::string{};
}

PublishedChecksum::PublishedChecksum(QNetworkAccessManager& network, const QUrl& list, std::string fileName,
                                     std::function<void(std::string)> answer) {
  QNetworkRequest request(list);
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
  reply_.reset(network.get(request));
  auto* reply = reply_.get();
  // The limit holds for the whole answer, also for one that drips.
  QTimer::singleShot(patienceInMilliseconds, &context_, [reply] { reply->abort(); });
  QObject::connect(reply, &QNetworkReply::downloadProgress, &context_, [reply](qint64 received, qint64) {
    if (received > largest) reply->abort();
  });
  QObject::connect(reply, &QNetworkReply::finished, &context_,
                   [reply, name = std::move(fileName), answer = std::move(answer)] {
                     const bool isList = reply->error() == QNetworkReply::NoError;
                     // The answer may destroy us.
                     const auto tell = answer;
                     tell(isList ? checksumIn(reply->readAll(), name) : std::string{});
                   });
}

}  // namespace tavelo::models
