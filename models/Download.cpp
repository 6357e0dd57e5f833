#include "models/Download.h"

#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <cerrno>
#include <chrono>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "language/Language.h"
#include "language/SystemErrors.h"
#include "language/Texts.h"

namespace tavelo::models {
namespace {

using language::say;
namespace words = language::words;

constexpr int mostFailures = 5;
constexpr std::chrono::seconds pauseAfterFailure{1};
/// A server that sends nothing for so long has gone.
constexpr int silenceInMilliseconds = 60'000;
constexpr qint64 bufferSize = 1 << 20;
/// An attempt that brought so much counts as progress.
constexpr std::int64_t progress = 1 << 20;
/// No model is as large; a server that sends more sends something else.
constexpr std::int64_t largest = std::int64_t{2} << 30;

constexpr int partialContent = 206;
constexpr int rangeNotSatisfiable = 416;

std::string cannotWrite(const std::filesystem::path& file) {
  return say(words::cannotWriteTo, {file.string(), language::systemError(errno)});
}

/// Why there was no answer. Qt knows English only.
std::string connectionError(const QNetworkReply& reply) {
  if (language::current() == language::Language::english) return reply.errorString().toStdString();
  using Reply = QNetworkReply;
  switch (reply.error()) {
    case Reply::ConnectionRefusedError:
      return say(words::connectionRefused);
    case Reply::HostNotFoundError:
      return say(words::hostNotFound);
    case Reply::RemoteHostClosedError:
      return say(words::connectionClosed);
    case Reply::TimeoutError:
    case Reply::OperationCanceledError:
      return say(words::connectionTimedOut);
    case Reply::SslHandshakeFailedError:
      return say(words::notSecure);
    case Reply::TemporaryNetworkFailureError:
    case Reply::NetworkSessionFailedError:
    case Reply::UnknownNetworkError:
      return say(words::noNetwork);
    case Reply::TooManyRedirectsError:
    case Reply::InsecureRedirectError:
    case Reply::ProtocolUnknownError:
      return say(words::badRedirect);
    case Reply::ProxyConnectionRefusedError:
    case Reply::ProxyConnectionClosedError:
    case Reply::ProxyNotFoundError:
    case Reply::ProxyTimeoutError:
    case Reply::ProxyAuthenticationRequiredError:
      return say(words::proxyFailed);
    default:
      return say(words::networkFailure, {std::to_string(reply.error())});
  }
}

int statusOf(const QNetworkReply& reply) {
  return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

/// The first and the total number of a "Content-Range" such as "bytes 5-9/10" or "bytes */10"; -1 where it
/// has none.
std::pair<std::int64_t, std::int64_t> contentRange(const QNetworkReply& reply) {
  const QByteArray range = reply.rawHeader("Content-Range");
  if (!range.startsWith("bytes ")) return {-1, -1};
  bool hasFirst = false;
  bool hasTotal = false;
  const auto first = range.mid(6, range.indexOf('-') - 6).toLongLong(&hasFirst);
  const auto total = range.mid(range.indexOf('/') + 1).toLongLong(&hasTotal);
  return {hasFirst ? first : -1, hasTotal ? total : -1};
}

/// Whether the same request may work a second later.
bool mayPass(const QNetworkReply& reply) {
  switch (reply.error()) {
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::TimeoutError:
    // The request's own limit on silence.
    case QNetworkReply::OperationCanceledError:
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::ServiceUnavailableError:
    case QNetworkReply::UnknownNetworkError:
      return true;
    default:
      return false;
  }
}

}  // namespace

Download::Download(QNetworkAccessManager& network, QUrl url, std::filesystem::path part)
    : network_(network), url_(std::move(url)), part_(std::move(part)) {
  nextAttempt_.setSingleShot(true);
  QObject::connect(&nextAttempt_, &QTimer::timeout, &context_, [this] { attempt(); });
}

Download::~Download() { drop(); }

void Download::drop() {
  nextAttempt_.stop();
  reply_.reset();
  if (file_ >= 0) ::close(std::exchange(file_, -1));
}

void Download::start() {
  isRunning_ = true;
  nextAttempt_.start(0);
}

void Download::pause() {
  if (isRunning_) drop();
}

void Download::resume() {
  if (isRunning_ && !reply_) nextAttempt_.start(0);
}

bool Download::openPart() {
  constexpr int flags = O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  file_ = ::open(part_.c_str(), flags, 0600);
  if (file_ < 0 && errno == ELOOP) {
    // Somebody's link: what it leads to is none of our business.
    ::unlink(part_.c_str());
    file_ = ::open(part_.c_str(), flags, 0600);
  }
  struct stat about {};
  if (file_ < 0 || ::fstat(file_, &about) != 0) return false;
  errno = EINVAL;
  received_ = about.st_size;
  return S_ISREG(about.st_mode);
}

void Download::attempt() {
  drop();
  if (!openPart()) return fail(cannotWrite(part_), true);
  if (!std::exchange(hasBegun_, true)) isResumed_ = received_ > 0;
  before_ = received_;
  isBody_ = false;
  QNetworkRequest request(url_);
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
  request.setTransferTimeout(silenceInMilliseconds);
  // Otherwise Qt asks for compression, and the ranges would count other bytes.
  request.setRawHeader("Accept-Encoding", "identity");
  if (received_ > 0) request.setRawHeader("Range", "bytes=" + QByteArray::number(qint64{received_}) + "-");
  reply_.reset(network_.get(request));
  reply_->setReadBufferSize(bufferSize);
  QObject::connect(reply_.get(), &QNetworkReply::metaDataChanged, &context_, [this] { readHeaders(); });
  QObject::connect(reply_.get(), &QNetworkReply::readyRead, &context_, [this] { readBody(); });
  QObject::connect(reply_.get(), &QNetworkReply::finished, &context_, [this] { finishAttempt(); });
}

void Download::readHeaders() {
  const int status = statusOf(*reply_);
  if (status < 200 || status >= 300) return;
  const auto [first, whole] = contentRange(*reply_);
  const bool continues = status == partialContent && first == received_;
  if (status == partialContent && !continues) return fail(say(words::anotherPart));
  // A server without ranges sends everything again.
  if (!continues && !begin()) return;
  const auto length = reply_->header(QNetworkRequest::ContentLengthHeader);
  total_.reset();
  if (length.isValid()) total_ = received_ + length.toLongLong();
  if (continues && whole >= 0) total_ = whole;
  if (total_ && *total_ > received_) {
    if (auto problem = spaceProblem(*total_ - received_); !problem.empty())
      return fail(std::move(problem), true);
    if (*total_ > largest) return fail(say(words::serverSendsTooMuch));
  }
  isBody_ = true;
}

/// Empties the part.
bool Download::begin() {
  isResumed_ = false;
  received_ = before_ = 0;
  if (::ftruncate(file_, 0) == 0) return true;
  fail(cannotWrite(part_), true);
  return false;
}

std::string Download::spaceProblem(std::int64_t missing) const {
  std::error_code error;
  const auto space = std::filesystem::space(part_.parent_path(), error);
  if (error || static_cast<std::uintmax_t>(missing) <= space.available) return {};
  return say(words::noSpace, {part_.parent_path().string(), std::to_string((missing >> 20) + 1),
                              std::to_string(space.available >> 20)});
}

void Download::readBody() {
  if (!isBody_) return;
  while (reply_->bytesAvailable() > 0) {
    const QByteArray bytes = reply_->read(bufferSize);
    for (qsizetype at = 0; at < bytes.size();) {
      const auto written =
          ::write(file_, bytes.constData() + at, static_cast<std::size_t>(bytes.size() - at));
      if (written < 0 && errno != EINTR) return fail(cannotWrite(part_), true);
      if (written > 0) at += written;
    }
    received_ += bytes.size();
    if (received_ > largest) return fail(say(words::serverSendsTooMuch));
  }
  if (onProgress) onProgress(received_, total_);
}

void Download::finishAttempt() {
  // Some errors come with bytes that were not signalled before.
  if (isBody_) readBody();
  if (!isRunning_ || !reply_) return;
  const int status = statusOf(*reply_);
  const bool isComplete = reply_->error() == QNetworkReply::NoError && isBody_;
  if (isComplete && (!total_ || received_ == *total_)) return finish(std::nullopt);
  if (status == rangeNotSatisfiable && received_ > 0) {
    if (contentRange(*reply_).second == received_) return finish(std::nullopt);
    // There is more here than the server has.
    if (++failures_ >= mostFailures) return fail(say(words::sizeChanges));
    if (begin()) nextAttempt_.start(0);
    return;
  }
  std::string reason =
      status >= 400 ? say(words::serverAnswered, {std::to_string(status)}) : connectionError(*reply_);
  if (isComplete) reason = say(words::connectionBroke);
  if (received_ - before_ >= progress) failures_ = 0;
  if ((!isComplete && !mayPass(*reply_)) || ++failures_ >= mostFailures) return fail(std::move(reason));
  nextAttempt_.start(pauseAfterFailure);
}

void Download::fail(std::string reason, bool isLocal) { finish(Failure{std::move(reason), isLocal}); }

void Download::finish(const std::optional<Failure>& failure) {
  isRunning_ = false;
  drop();
  // In a turn of its own, since the callback may destroy this object.
  QTimer::singleShot(0, &context_, [this, failure] {
    const auto finished = onFinished;
    if (finished) finished(failure);
  });
}

}  // namespace tavelo::models
