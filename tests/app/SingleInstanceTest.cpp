#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>
#include <QTemporaryDir>
#include <QThread>
#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include <gmock/gmock.h>

#include "app/SingleInstance.h"
#include "tests/platform/qt/OffscreenApplication.h"

namespace tavelo {
namespace {

using testing::ElementsAre;

/// This thread plays the running program; another thread plays the second start of it.
class SingleInstanceTest : public testing::Test {
 protected:
  SingleInstanceTest() { offscreenApplication(); }
  bool listen() {
    return owner_->claim() && owner_->listen([this](InstanceMessage each) { received_.push_back(each); });
  }
  /// Runs the event loop until `done` holds. False if that takes more than 10 s.
  static bool pump(const std::function<bool()>& done) {
    const QDeadlineTimer deadline(10'000);
    while (!done() && !deadline.hasExpired()) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 50);
    }
    return done();
  }
  InstanceAnswer send(InstanceMessage message, bool waitsForStart = false) {
    InstanceAnswer answer{};
    const std::unique_ptr<QThread> sender(QThread::create(
        [&] { answer = SingleInstance(folder_.path(), longPatience).send(message, waitsForStart); }));
    sender->start();
    EXPECT_TRUE(pump([&] { return sender->isFinished(); }));
    sender->wait();
    return answer;
  }
  /// A peer that has connected and sent `words`.
  std::unique_ptr<QLocalSocket> peer(const QByteArray& words) const {
    auto socket = std::make_unique<QLocalSocket>();
    socket->connectToServer(socketPath());
    EXPECT_TRUE(socket->waitForConnected(1000));
    socket->write(words);
    socket->flush();
    return socket;
  }
  QString socketPath() const { return folder_.path() + "/tavelo.socket"; }

  static constexpr std::chrono::seconds longPatience{20};
  QTemporaryDir folder_;
  std::unique_ptr<SingleInstance> owner_ = std::make_unique<SingleInstance>(folder_.path(), longPatience);
  std::vector<InstanceMessage> received_;
};

TEST_F(SingleInstanceTest, OneHoldsTheClaimAndTakesTheOthersMessages) {
  ASSERT_TRUE(listen());
  SingleInstance second(folder_.path());
  EXPECT_FALSE(second.claim());
  EXPECT_TRUE(second.errorText().isEmpty());
  EXPECT_EQ(send(InstanceMessage::showMenu), InstanceAnswer::taken);
  EXPECT_EQ(send(InstanceMessage::insertLastText), InstanceAnswer::taken);
  EXPECT_THAT(received_, ElementsAre(InstanceMessage::showMenu, InstanceMessage::insertLastText));
  const auto others = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup |
                      QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther;
  EXPECT_FALSE(QFileInfo(socketPath()).permissions() & others);
  EXPECT_FALSE(QFileInfo(folder_.path() + "/tavelo.lock").permissions() & others);

  owner_.reset();
  EXPECT_TRUE(second.claim());
}

TEST_F(SingleInstanceTest, SocketOfADeadOwnerIsTakenOver) {
  QFile leftover(socketPath());
  ASSERT_TRUE(leftover.open(QIODevice::WriteOnly));
  leftover.close();
  EXPECT_EQ(send(InstanceMessage::insertLastText), InstanceAnswer::nobody);
  ASSERT_TRUE(listen());
  EXPECT_EQ(send(InstanceMessage::showMenu), InstanceAnswer::taken);
}

TEST_F(SingleInstanceTest, LaterStartWaitsForAnOwnerThatIsOnlyStarting) {
  ASSERT_TRUE(owner_->claim());
  InstanceAnswer answer{};
  const std::unique_ptr<QThread> sender(QThread::create(
      [&] { answer = SingleInstance(folder_.path(), longPatience).send(InstanceMessage::showMenu, true); }));
  sender->start();
  ASSERT_TRUE(owner_->listen([this](InstanceMessage each) { received_.push_back(each); }));
  ASSERT_TRUE(pump([&] { return sender->isFinished(); }));
  sender->wait();
  EXPECT_EQ(answer, InstanceAnswer::taken);
}

TEST_F(SingleInstanceTest, HostileAndHungPeersAreDroppedAndTheOthersServed) {
  owner_ = std::make_unique<SingleInstance>(folder_.path(), std::chrono::milliseconds(100));
  ASSERT_TRUE(listen());
  const auto mute = peer("");
  const auto halfLine = peer("show-me");
  const auto endless = peer(QByteArray(100'000, 'x'));
  const auto stranger = peer("open-sesame\n");
  const auto binary = peer(QByteArray("\0\xff\n", 3));
  EXPECT_EQ(send(InstanceMessage::showMenu), InstanceAnswer::taken);
  const auto dropped = [](const auto& each) { return each->state() == QLocalSocket::UnconnectedState; };
  EXPECT_TRUE(pump([&] { return dropped(endless) && dropped(stranger) && dropped(binary); }));
  EXPECT_TRUE(pump([&] { return dropped(mute) && dropped(halfLine); })) << "these by the clock";
  EXPECT_THAT(received_, ElementsAre(InstanceMessage::showMenu));
}

TEST_F(SingleInstanceTest, CrowdIsCutToAFewAndLeavesAPlaceWhenItGoes) {
  ASSERT_TRUE(listen());
  std::vector<std::unique_ptr<QLocalSocket>> crowd;
  for (int i = 0; i < 3 * SingleInstance::mostPeers; ++i) crowd.push_back(peer(""));
  const auto gone = [&] {
    return std::ranges::count_if(
        crowd, [](const auto& each) { return each->state() == QLocalSocket::UnconnectedState; });
  };
  EXPECT_TRUE(pump([&] { return gone() == 2 * SingleInstance::mostPeers; }));
  crowd.clear();
  EXPECT_EQ(send(InstanceMessage::insertLastText), InstanceAnswer::taken);
}

TEST_F(SingleInstanceTest, SenderGivesUpOnAnOwnerThatDoesNotAnswer) {
  QLocalServer hung;
  ASSERT_TRUE(hung.listen(socketPath()));
  const QDeadlineTimer deadline(10'000);
  EXPECT_EQ(
      SingleInstance(folder_.path(), std::chrono::milliseconds(50)).send(InstanceMessage::showMenu, true),
      InstanceAnswer::silent);
  EXPECT_FALSE(deadline.hasExpired());
}

TEST_F(SingleInstanceTest, FolderThatAllowsNothingIsSaid) {
  SingleInstance nowhere{QString()};
  EXPECT_FALSE(nowhere.claim());
  EXPECT_TRUE(nowhere.errorText().contains("XDG_RUNTIME_DIR"));
  SingleInstance missing(folder_.path() + "/none");
  EXPECT_FALSE(missing.claim());
  EXPECT_TRUE(missing.errorText().startsWith(folder_.path()));
  SingleInstance deep(folder_.path() + "/" + QString(100, 'x'));
  ASSERT_TRUE(QDir(folder_.path()).mkdir(QString(100, 'x')));
  ASSERT_TRUE(deep.claim());
  EXPECT_FALSE(deep.listen([](InstanceMessage) {})) << "a socket's path has about a hundred characters";
  EXPECT_FALSE(deep.errorText().isEmpty());
  QFile(folder_.path()).setPermissions(QFile(folder_.path()).permissions() | QFileDevice::WriteOther);
  EXPECT_FALSE(owner_->claim()) << "others may write there";
  EXPECT_FALSE(owner_->errorText().isEmpty());
}

}  // namespace
}  // namespace tavelo
