#include <QProcess>
#include <chrono>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include "platform/recognizer/server/VoskServer.h"
#include "platform/recognizer/server/VoskServerSpeech.h"
#include "tests/platform/qt/OffscreenApplication.h"
#include "tests/platform/recognizer/CountedNotifications.h"
#include "tests/platform/recognizer/PumpedMainQueue.h"
#include "tests/platform/recognizer/ReportedDictation.h"
#include "tests/platform/recognizer/server/HostileServer.h"

namespace tavelo::recognizer {
namespace {

using testing::AnyOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::chrono::seconds patience{20};
constexpr qint64 mebibyte = qint64{1024} * 1024;

/// Loud 16 kHz mono sound.
platform::AudioBuffer sound(double seconds) {
  return {{16000, 1}, std::vector<std::int16_t>(static_cast<std::size_t>(seconds * 16000), 3000)};
}

/// A rehearsal server process. It spreads four words over two seconds of sound.
class Server final {
 public:
  explicit Server(const QStringList& faults = {}) {
    start(QStringList{"--transcript", "anh phú chưa ạ", "--duration", "2"} + faults);
  }
  ~Server() { stop(); }

  /// Kills it; another one listens on the same port.
  void restart() {
    const auto port = QString::fromStdString(address_).section(':', -1);
    stop();
    start({"--transcript", "anh phú chưa ạ", "--duration", "2", "--port", port});
  }

  const std::string& address() const { return address_; }
  /// While it pauses, it accepts connections but greets no client.
  void pause(bool pauses) const {
    kill(static_cast<pid_t>(process_.processId()), pauses ? SIGSTOP : SIGCONT);
  }
  void stop() {
    process_.kill();
    process_.waitForFinished();
  }

 private:
  void start(const QStringList& arguments) {
    process_.start(TAVELO_REHEARSAL_SERVER, arguments);
    process_.waitForReadyRead();
    address_ = "ws://127.0.0.1:" + process_.readLine().trimmed().toStdString();
  }

  QProcess process_;
  std::string address_;
};

/// The main queue is not a Qt event loop: recognition must not need one on the main thread.
class VoskServerSpeechTest : public testing::Test {
 protected:
  VoskServerSpeechTest() { offscreenApplication(); }

  /// The reports of a dictation of that much sound, in buffers of 20 ms.
  std::vector<std::string> reportsOf(const std::string& address, double seconds) {
    VoskServerSpeech speech{queue_, address};
    const ReportedDictation dictation{speech};
    for (int i = 0; i < static_cast<int>(seconds * 50); ++i) dictation.request->append(sound(0.02));
    return dictation.finish(queue_);
  }

  /// Asks whether a recogniser is available, and checks that the answer comes in time. The limit allows for a
  /// busy machine.
  static bool isAvailable(VoskServerSpeech& speech) {
    const auto asked = std::chrono::steady_clock::now();
    const bool available = speech.makeRecognizer("vi_VN")->isAvailable();
    EXPECT_LT(std::chrono::steady_clock::now() - asked, std::chrono::seconds{1});
    return available;
  }

  PumpedMainQueue queue_;
};

struct Kind {
  const char* name;
  QStringList switches;
};
void PrintTo(const Kind& kind, std::ostream* stream) { *stream << kind.name; }

class VoskServerKind : public VoskServerSpeechTest, public testing::WithParamInterface<Kind> {};

TEST_P(VoskServerKind, OnlyTheAnswerToTheEndIsFinal) {
  const Server server{GetParam().switches};
  auto reports = reportsOf(server.address(), 1.0);
  EXPECT_EQ(reports.back(), "[anh phú]");
  reports.pop_back();
  EXPECT_THAT(reports, Each(AnyOf("anh", "anh phú")));
  EXPECT_THAT(reportsOf(server.address(), 0), ElementsAre("[]"));
}

INSTANTIATE_TEST_SUITE_P(Of, VoskServerKind,
                         testing::Values(Kind{"Reference", {}}, Kind{"Arrays", {"--arrays"}},
                                         Kind{"NoConfig", {"--no-config"}},
                                         Kind{"Slow", {"--delay-ms", "50"}}),
                         [](const auto& kind) { return std::string{kind.param.name}; });

TEST_F(VoskServerSpeechTest, AFailureIsReportedOnceAfterTheTranscripts) {
  EXPECT_THAT(reportsOf(Server{{"--rubbish"}}.address(), 1), ElementsAre("error"));
  const Server dropping{{"--drop-after", "1"}};
  VoskServerSpeech speech{queue_, dropping.address()};
  const ReportedDictation dropped{speech};
  dropped.request->append(sound(0.5));
  ASSERT_TRUE(queue_.pumpUntil([&] { return !dropped.reports->empty(); }));
  for (int i = 0; i < 50; ++i) dropped.request->append(sound(0.1));
  ASSERT_TRUE(queue_.pumpUntil([&] { return dropped.over(); }));
  EXPECT_EQ(dropped.reports->front(), "anh");
  // The connection is cut after the end is sent and before it is answered.
  EXPECT_THAT(reportsOf(Server{{"--drop-after", "1", "--delay-ms", "100"}}.address(), 0.1),
              ElementsAre("error"));
  Server gone;
  gone.stop();
  EXPECT_THAT(reportsOf(gone.address(), 1), ElementsAre("error"));
}

TEST_F(VoskServerSpeechTest, ALostServerThatComesBackHearsTheSoundOnceMore) {
  Server server;
  VoskServerSpeech speech{queue_, server.address()};
  CountedNotifications notifications;
  speech.notifyThrough(notifications);
  const ReportedDictation dictation{speech};
  dictation.request->append(sound(1.1));
  ASSERT_TRUE(queue_.pumpUntil(
      [&] { return !dictation.reports->empty() && dictation.reports->back() == "anh phú"; }));
  server.restart();
  dictation.request->append(sound(0.5));
  EXPECT_EQ(dictation.finish(queue_).back(), "[anh phú chưa]");
  EXPECT_THAT(*dictation.reports, testing::Not(testing::Contains("error")));
  EXPECT_EQ(notifications.posted, 0);
}

TEST_F(VoskServerSpeechTest, WaitingSoundIsSentInFramesThatTheServerAccepts) {
  const Server server;
  VoskServerSpeech speech{queue_, server.address()};
  const ReportedDictation dictation{speech};
  dictation.request->append({{32000, 2}, std::vector<std::int16_t>(32000, 3000)});  // half a second
  const ReportedDictation longOne{speech};
  longOne.request->append(sound(50));  // 1.6 MB
  EXPECT_EQ(dictation.finish(queue_).back(), "[anh]");
  EXPECT_EQ(longOne.finish(queue_).back(), "[anh phú chưa ạ]");
}

TEST_F(VoskServerSpeechTest, NothingIsReportedAfterACancelOrAfterTheSpeechIsGone) {
  const Server server;
  auto speech = std::make_unique<VoskServerSpeech>(queue_, server.address());
  const ReportedDictation cancelled{*speech};
  const ReportedDictation running{*speech};
  cancelled.request->append(sound(1));
  running.request->append(sound(1));
  // Both have been answered: their reports are waiting in the queue.
  ASSERT_TRUE(queue_.waitForPost());
  cancelled.task->cancel();
  ASSERT_TRUE(queue_.pumpUntil([&] { return !running.reports->empty(); }));
  running.request->append(sound(1));
  ASSERT_TRUE(queue_.waitForPost());
  speech.reset();
  queue_.drain();
  EXPECT_EQ(running.reports->size(), 1U);
  EXPECT_THAT(*cancelled.reports, IsEmpty());
  running.request->append(sound(1));
  running.task->cancel();
}

TEST_F(VoskServerSpeechTest, AServerIsAvailableWhileItAnswersAndIsAskedEachTime) {
  Server server;
  VoskServerSpeech speech{queue_, server.address()};
  EXPECT_TRUE(isAvailable(speech));
  EXPECT_EQ(speech.failure("vi_VN", patience), "");
  server.stop();
  EXPECT_FALSE(isAvailable(speech));
  EXPECT_THAT(speech.failure("vi_VN", patience), HasSubstr("refused"));
  EXPECT_EQ(speech.makeRecognizer("en_US"), nullptr);
}

TEST_F(VoskServerSpeechTest, AServerThatIsStillOnItsWayGetsTheSoundFromBefore) {
  const Server server;
  VoskServerSpeech speech{queue_, server.address()};
  CountedNotifications notifications;
  speech.notifyThrough(notifications);
  server.pause(true);
  EXPECT_TRUE(isAvailable(speech));
  EXPECT_THAT(speech.failure("vi_VN", std::chrono::milliseconds{100}), HasSubstr("no answer"));
  const ReportedDictation released{speech};
  const ReportedDictation held{speech};
  released.request->append(sound(1));
  held.request->append(sound(1));
  released.request->endAudio();
  released.task->cancel();
  EXPECT_EQ(notifications.posted, 1) << "its words are lost";
  server.pause(false);
  EXPECT_EQ(held.finish(queue_).back(), "[anh phú]");
  EXPECT_EQ(notifications.posted, 1);
}

TEST_F(VoskServerSpeechTest, AServerThatIsLostBeforeItAnswersIsTold) {
  auto server = std::make_unique<Server>();
  VoskServerSpeech speech{queue_, server->address()};
  CountedNotifications notifications;
  speech.notifyThrough(notifications);
  server->pause(true);
  const ReportedDictation dictation{speech};
  dictation.request->append(sound(1));
  server.reset();
  ASSERT_TRUE(queue_.pumpUntil([&] { return dictation.over(); }));
  dictation.request->endAudio();
  dictation.task->cancel();
  EXPECT_EQ(notifications.posted, 1);
}

TEST_F(VoskServerSpeechTest, AServerWithoutTlsIsNotReachedByWss) {
  const Server server;
  VoskServerSpeech speech{queue_, "wss" + server.address().substr(2)};
  // Such a server waits for more of what it takes for a greeting.
  EXPECT_NE(speech.failure("vi_VN", std::chrono::milliseconds{250}), "");
}

struct Attack {
  const char* name;
  QByteArray once;
  QByteArray again;
};
void PrintTo(const Attack& attack, std::ostream* stream) { *stream << attack.name; }

class VoskServerAttack : public VoskServerSpeechTest, public testing::WithParamInterface<Attack> {};

TEST_P(VoskServerAttack, EndsTheConnectionBeforeItTakesMuchMemory) {
  HostileServer server{GetParam().once, GetParam().again, 64 * mebibyte};
  VoskServerSpeech speech{queue_, server.address()};
  const ReportedDictation dictation{speech};
  dictation.request->append(sound(0.5));
  ASSERT_TRUE(queue_.pumpUntil([&] { return dictation.over(); }));
  EXPECT_EQ(dictation.reports->back(), "error");
  // The system's own buffers hold up to 10 MiB.
  EXPECT_LT(server.sentUntilHangUp().value_or(64 * mebibyte), 32 * mebibyte);
}

INSTANTIATE_TEST_SUITE_P(
    By, VoskServerAttack,
    testing::Values(Attack{"UnaskedAnswers", HostileServer::handshake,
                           HostileServer::frame(0x1, R"({"partial": "anh"})").repeated(3000)},
                    Attack{"HugeFrame",
                           HostileServer::handshake + QByteArray("\x81\x7f\0\0\0\0\x7f\0\0\0", 10),
                           QByteArray(65536, ' ')},
                    Attack{"HugeMessage", HostileServer::handshake + QByteArray("\x01\0", 2),
                           HostileServer::frame(0x0, QByteArray(120, ' '), false).repeated(500)},
                    Attack{"PingsWhoseAnswersAreNotRead", HostileServer::handshake,
                           HostileServer::frame(0x9, QByteArray(120, 'a')).repeated(500)}),
    [](const auto& attack) { return std::string{attack.param.name}; });

TEST_F(VoskServerSpeechTest, ACancelHangsUpOnAServerThatKeepsSending) {
  HostileServer server{HostileServer::handshake,
                       HostileServer::frame(0x2, QByteArray(120, 'a')).repeated(500), 1000 * mebibyte};
  VoskServerSpeech speech{queue_, server.address()};
  ASSERT_TRUE(isAvailable(speech));
  const ReportedDictation dictation{speech};
  dictation.request->append(sound(0.5));
  dictation.task->cancel();
  EXPECT_TRUE(server.sentUntilHangUp());
}

TEST_F(VoskServerSpeechTest, AnInvalidAddressGivesNoRecognizerAndSaysWhy) {
  for (const char* address : {"http://host:2700", "ws://", "ws://:2700", "ws://host:0", "ws://host:99999",
                              "host:2700", "ws://ho st", "ws://[::1", "ws://host/#part", "\xff\xfe", "\n"}) {
    VoskServerSpeech speech{queue_, address};
    EXPECT_THAT(speech.failure("vi_VN", patience), HasSubstr("no recogniser's address")) << address;
  }
  EXPECT_EQ(VoskServerSpeech(queue_, "http://host").makeRecognizer("vi_VN"), nullptr);
  EXPECT_EQ(VoskServerAddress::parse("ws://host").url->port(), 2700);
  EXPECT_EQ(VoskServerAddress::parse("wss://[::1]/vi?key=1").url->toString(), "wss://[::1]:443/vi?key=1");
}

}  // namespace
}  // namespace tavelo::recognizer
