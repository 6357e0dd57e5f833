#include "models/Download.h"

#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tavelo::models {
namespace {

constexpr int mostFailures = 5;
constexpr std::chrono::seconds pauseAfterFailure{1};
/// A server that sends nothing for so long has gone.
constexpr int silenceInMilliseconds = 60'000;
constexpr qint64 bufferSize = 1 << 20;
/// An attempt that brought so much counts as progress.
constexpr std::int64_t progress = 1 << 20;
/// No model is as large; a server that sends more sends something else.
constexpr std::int64_t largest = std::int64_t{2} << 30;

constexpr const char* tooMuch = "the server sends more than any model has";

constexpr int partialContent = 206;
constexpr int rangeNotSatisfiable = 416;

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
  if (!openPart()) return fail("cannot write to " + part_.string() + ": " + std::strerror(errno), true);
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
  if (status == partialContent && !continues) return fail("the server sent another part than was asked for");
  // A server without ranges sends everything again.
  if (!continues && !begin()) return;
  const auto length = reply_->header(QNetworkRequest::ContentLengthHeader);
  total_.reset();
  if (length.isValid()) total_ = received_ + length.toLongLong();
  if (continues && whole >= 0) total_ = whole;
  if (total_ && *total_ > received_) {
    if (auto problem = spaceProblem(*total_ - received_); !problem.empty())
      return fail(std::move(problem), true);
    if (*total_ > largest) return fail(tooMuch);
  }
  isBody_ = true;
}

/// Empties the part.
bool Download::begin() {
  isResumed_ = false;
  received_ = before_ = 0;
  if (::ftruncate(file_, 0) == 0) return true;
  fail("cannot write to " + part_.string() + ": " + std::strerror(errno), true);
  return false;
}

std::string Download::spaceProblem(std::int64_t missing) const {
  std::error_code error;
  const auto space = std::filesystem::space(part_.parent_path(), error);
  if (error || static_cast<std::uintmax_t>(missing) <= space.available) return {};
  return "not enough space in " + part_.parent_path().string() + ": " + std::to_string((missing >> 20) + 1) +
         " MB are needed, " + std::to_string(space.available >> 20) + " MB are free";
}

void Download::readBody() {
  if (!isBody_) return;
  while (reply_->bytesAvailable() > 0) {
    const QByteArray bytes = reply_->read(bufferSize);
    for (qsizetype at = 0; at < bytes.size();) {
      const auto written =
          ::write(file_, bytes.constData() + at, static_cast<std::size_t>(bytes.size() - at));
      if (written < 0 && errno != EINTR)
        return fail("cannot write to " + part_.string() + ": " + std::strerror(errno), true);
      if (written > 0) at += written;
    }
    received_ += bytes.size();
    if (received_ > largest) return fail(tooMuch);
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
    if (++failures_ >= mostFailures) return fail("the server keeps changing the size of the file");
    if (begin()) nextAttempt_.start(0);
    return;
  }
  std::string reason =
      status >= 400 ? "the server answered " + std::to_string(status) : reply_->errorString().toStdString();
  if (isComplete) reason = "the connection broke";
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
