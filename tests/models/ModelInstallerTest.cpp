#include <QCoreApplication>
#include <QTcpServer>
#include <QTcpSocket>
#include <functional>

#include <gtest/gtest.h>

#include "models/ModelInstaller.h"
#include "tests/platform/recognizer/TemporaryFolder.h"

namespace tavelo::models {
namespace {

/// Sends half of what is asked of a file and then nothing more, until it is asked for the rest.
class HalvingServer final {
 public:
  explicit HalvingServer(QByteArray file) : file_(std::move(file)) {
    server_.listen(QHostAddress::LocalHost);
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
      auto* socket = server_.nextPendingConnection();
      QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { answer(*socket); });
      QObject::connect(socket, &QTcpSocket::disconnected, socket, [this] { ++closed; });
    });
  }
  std::string url() const { return "http://127.0.0.1:" + std::to_string(server_.serverPort()); }

  int closed = 0;

 private:
  void answer(QTcpSocket& socket) {
    const auto rest = file_.mid(file_.size() / 2);
    const auto range = "bytes=" + QByteArray::number(file_.size() - rest.size()) + "-";
    const auto size = QByteArray::number(file_.size());
    if (socket.readAll().contains(range)) {
      socket.write("HTTP/1.1 206 OK\r\nContent-Range: bytes " + range.mid(6) + "9/" + size +
                   "\r\nContent-Length: " + QByteArray::number(rest.size()) + "\r\n\r\n" + rest);
    } else {
      socket.write("HTTP/1.1 200 OK\r\nContent-Length: " + size + "\r\n\r\n" +
                   file_.left(file_.size() - rest.size()));
    }
  }

  QByteArray file_;
  QTcpServer server_;
};

void await(const std::function<bool()>& condition) {
  while (!condition()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

TEST(ModelInstaller, PausesResumesAndLetsNobodyInBeside) {
  int count = 1;
  char name[] = "test";
  char* arguments[] = {name, nullptr};
  const QCoreApplication application(count, arguments);
  const TemporaryFolder home;
  const Folders folders{home.path() / "data", home.path() / "cache"};
  HalvingServer publisher(QByteArray(20'000, 'x'));
  InstallationOrder order{.model = *findModel("vosk-small")};
  order.libraryUrl = publisher.url();
  ModelInstaller installer(folders, order);
  std::int64_t here = 0;
  std::optional<std::int64_t> whole;
  std::optional<ModelInstaller::Failure> failure;
  std::vector<InstallationStep> steps;
  installer.onProgress = [&](auto received, auto total) { here = received, whole = total; };
  installer.onStep = [&](auto step, const auto&, const auto&) { steps.push_back(step); };
  installer.onFinished = [&](const auto& end) { failure = end; };
  installer.start();
  await([&] { return here == 10'000; });
  EXPECT_EQ(whole, 20'000);

  ModelInstaller second(folders, order);
  std::optional<ModelInstaller::Failure> refused;
  second.onFinished = [&](const auto& end) { refused = end; };
  second.start();
  await([&] { return refused.has_value(); });
  EXPECT_EQ(refused->text, "a download is already running");

  installer.pause();
  await([&] { return publisher.closed == 1; });
  EXPECT_FALSE(failure);
  installer.resume();
  await([&] { return failure.has_value(); });
  EXPECT_EQ(here, 20'000);
  EXPECT_EQ(steps, (std::vector{InstallationStep::fetching, InstallationStep::unpacking}));
  EXPECT_EQ(failure->kind, ModelInstaller::Failure::Kind::publisher);
  EXPECT_NE(failure->text.find("is not an archive"), std::string::npos) << failure->text;

  // An object that goes while it works leaves nothing behind and calls nobody.
  auto third = std::make_unique<ModelInstaller>(folders, order);
  third->onFinished = [](const auto&) { FAIL(); };
  third->start();
  third.reset();
  QCoreApplication::processEvents();
}

}  // namespace
}  // namespace tavelo::models
