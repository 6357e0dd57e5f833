#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "app/SingleInstance.h"
#include "platform/MainQueue.h"
#include "platform/Platform.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "tests/platform/recognizer/TemporaryFolder.h"

namespace tavelo {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using namespace std::chrono_literals;

sockaddr_un addressOf(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  return address;
}

/// A connection that speaks as it likes.
class Peer final {
 public:
  Peer(const fs::path& path, const std::string& words) {
    const auto address = addressOf(path);
    EXPECT_EQ(connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    send(socket_, words.data(), words.size(), MSG_NOSIGNAL);
  }
  ~Peer() { close(socket_); }
  bool isDropped() const {
    char ignored = 0;
    const auto count = recv(socket_, &ignored, 1, MSG_DONTWAIT);
    return count == 0 || (count < 0 && errno != EAGAIN);
  }

 private:
  const int socket_ = socket(AF_UNIX, SOCK_STREAM, 0);
};

/// This thread plays the running program; another thread plays the second start of it.
class SingleInstanceTest : public testing::Test {
 protected:
  bool listen() { return owner_->claim() && receive(); }
  bool receive() {
    listening_ = owner_->listen(platform::current().mainQueue,
                                [this](InstanceMessage each, const std::string& argument) {
                                  EXPECT_TRUE(platform::current().mainQueue.isMainThread());
                                  received_.push_back(each);
                                  return each == InstanceMessage::examine ? words_ : argument;
                                });
    return listening_ != nullptr;
  }
  /// Runs the main loop until `done` holds. False if that takes more than 20 s.
  bool pump(const std::function<bool()>& done) {
    const auto deadline = std::chrono::steady_clock::now() + 20s;
    while (!done() && std::chrono::steady_clock::now() < deadline) desktop_.advance(platform::Seconds{0.01});
    return done();
  }
  InstanceReply send(InstanceMessage message, bool waitsForStart = false, const std::string& argument = {}) {
    auto sent = std::async(std::launch::async, [&] {
      return SingleInstance(folder_, 20s).send(message, waitsForStart, argument);
    });
    EXPECT_TRUE(pump([&] { return sent.wait_for(0s) == std::future_status::ready; }));
    return sent.get();
  }
  InstanceAnswer answerTo(InstanceMessage message) { return send(message).answer; }
  fs::path socketPath() const { return folder_ / "tavelo.socket"; }
  std::unique_ptr<Peer> peer(const std::string& words) const {
    return std::make_unique<Peer>(socketPath(), words);
  }

  simulated::SimulatedDesktop desktop_{{.time = simulated::DesktopOptions::Time::realTime}};
  const TemporaryFolder temporary_;
  const fs::path folder_ = temporary_.path();
  std::unique_ptr<SingleInstance> owner_ = std::make_unique<SingleInstance>(folder_, 20s);
  std::shared_ptr<const void> listening_;
  std::vector<InstanceMessage> received_;
  std::string words_;
};

TEST_F(SingleInstanceTest, OneHoldsTheClaimAndTakesTheOthersMessages) {
  ASSERT_TRUE(listen());
  SingleInstance second(folder_);
  EXPECT_FALSE(second.claim());
  EXPECT_EQ(second.errorText(), "");
  std::vector<InstanceMessage> sent;
  for (int each = 0; each <= static_cast<int>(InstanceMessage::examine); ++each) {
    sent.push_back(static_cast<InstanceMessage>(each));
    EXPECT_EQ(answerTo(sent.back()), InstanceAnswer::taken);
  }
  EXPECT_EQ(received_, sent);
  EXPECT_EQ(answerTo(InstanceMessage::forgetHistory), InstanceAnswer::silent) << "how many?";
  EXPECT_EQ(send(InstanceMessage::showMenu, false, "all").answer, InstanceAnswer::silent);
  EXPECT_EQ(received_, sent) << "a message that is not known has no effect";
  EXPECT_EQ(send(InstanceMessage::forgetHistory, false, "12").words, "12");
  words_ = std::string(60'000, 'w') + "\n";
  EXPECT_EQ(send(InstanceMessage::examine).words, words_) << "longer than a socket takes at once";
  words_ += words_;
  EXPECT_EQ(answerTo(InstanceMessage::examine), InstanceAnswer::silent) << "without a bound";
  for (const auto& file : {socketPath(), folder_ / "tavelo.lock"}) {
    EXPECT_EQ(fs::status(file).permissions() & (fs::perms::group_all | fs::perms::others_all),
              fs::perms::none);
  }
  listening_.reset();
  EXPECT_FALSE(fs::exists(socketPath()));
  owner_.reset();
  EXPECT_TRUE(second.claim());
}

TEST_F(SingleInstanceTest, SocketOfADeadOwnerIsTakenOver) {
  close(open(socketPath().c_str(), O_CREAT | O_WRONLY, 0600));
  EXPECT_EQ(answerTo(InstanceMessage::insertLastText), InstanceAnswer::nobody);
  ASSERT_TRUE(listen());
  EXPECT_EQ(answerTo(InstanceMessage::showMenu), InstanceAnswer::taken);
}

TEST_F(SingleInstanceTest, LaterStartWaitsForAnOwnerThatIsOnlyStarting) {
  ASSERT_TRUE(owner_->claim());
  auto sent = std::async(std::launch::async, [&] {
    return SingleInstance(folder_, 20s).send(InstanceMessage::showMenu, true).answer;
  });
  EXPECT_EQ(sent.wait_for(50ms), std::future_status::timeout);
  ASSERT_TRUE(receive());
  ASSERT_TRUE(pump([&] { return sent.wait_for(0s) == std::future_status::ready; }));
  EXPECT_EQ(sent.get(), InstanceAnswer::taken);
}

TEST_F(SingleInstanceTest, HostileAndHungPeersAreDroppedAndTheOthersServed) {
  owner_ = std::make_unique<SingleInstance>(folder_, 500ms);
  ASSERT_TRUE(listen());
  const std::array peers{peer(std::string(100'000, 'x')), peer("open-sesame\n"),
                         peer(std::string("\0\xff\n", 3)), peer(""), peer("show-me")};
  peer("show-menu\n");  // gone before its answer
  EXPECT_EQ(answerTo(InstanceMessage::showMenu), InstanceAnswer::taken);
  EXPECT_TRUE(
      pump([&] { return std::ranges::all_of(peers, [](const auto& each) { return each->isDropped(); }); }));
  EXPECT_THAT(received_, testing::Each(InstanceMessage::showMenu));
}

TEST_F(SingleInstanceTest, CrowdIsCutToAFewAndLeavesAPlaceWhenItGoes) {
  constexpr int most = 8;
  ASSERT_TRUE(listen());
  std::vector<std::unique_ptr<Peer>> crowd;
  for (int i = 0; i < 3 * most; ++i) crowd.push_back(peer(""));
  EXPECT_TRUE(pump([&] {
    return std::ranges::count_if(crowd, [](const auto& each) { return each->isDropped(); }) == 2L * most;
  }));
  crowd.clear();
  EXPECT_EQ(answerTo(InstanceMessage::insertLastText), InstanceAnswer::taken);
}

TEST_F(SingleInstanceTest, SenderGivesUpOnAnOwnerThatDoesNotAnswer) {
  ASSERT_TRUE(listen());
  // Nobody runs the main loop.
  EXPECT_EQ(SingleInstance(folder_, 50ms).send(InstanceMessage::showMenu, true).answer,
            InstanceAnswer::silent);
  desktop_.advance(platform::Seconds{0.01});
  EXPECT_EQ(answerTo(InstanceMessage::insertLastText), InstanceAnswer::taken);
}

TEST_F(SingleInstanceTest, FolderThatAllowsNothingIsSaid) {
  SingleInstance nowhere{fs::path()};
  EXPECT_FALSE(nowhere.claim());
  EXPECT_THAT(nowhere.errorText(), testing::HasSubstr("XDG_RUNTIME_DIR"));
  EXPECT_EQ(nowhere.send(InstanceMessage::showMenu, true).answer, InstanceAnswer::nobody);
  SingleInstance missing(folder_ / "none");
  EXPECT_FALSE(missing.claim());
  EXPECT_THAT(missing.errorText(), testing::StartsWith(folder_.string()));
  const fs::path deep = folder_ / std::string(100, 'x');
  fs::create_directory(deep);
  owner_ = std::make_unique<SingleInstance>(deep);
  EXPECT_FALSE(listen()) << "a socket's path has about a hundred characters";
  EXPECT_NE(owner_->errorText(), "");
  ASSERT_EQ(chmod(folder_.c_str(), 0720), 0);
  SingleInstance shared(folder_);
  EXPECT_FALSE(shared.claim()) << "others may write there";
  EXPECT_NE(shared.errorText(), "");
}

}  // namespace
}  // namespace tavelo
