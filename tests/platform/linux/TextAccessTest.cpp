#include <QDir>
#include <QFile>
#include <QStringList>
#include <QVariant>
#include <atomic>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/accessibility/AccessibilityTrust.h"
#include "platform/linux/accessibility/ElementReader.h"
#include "platform/linux/accessibility/TextAccess.h"
#include "platform/simulated/VirtualTimeLoop.h"
#include "tests/platform/linux/FakeToolkit.h"
#include "tests/platform/recognizer/CountedNotifications.h"

namespace tavelo::linuxdesktop {
namespace {

using platform::AXError;

class TextAccessTest : public testing::Test {
 protected:
  void SetUp() override {
    if (toolkit_ == nullptr) GTEST_SKIP() << "no dbus-daemon here";
    toolkit_->reset(U"một 😀 hai", 4, 5);
    access_.emplace(bus_.emplace(loop_, loop_));
  }
  AXError write(const std::string& text) { return access_->setSelectedText(toolkit_->field(), text); }

  FakeToolkit* toolkit_ = FakeToolkit::instance();
  simulated::VirtualTimeLoop loop_;
  std::optional<AccessibilityBus> bus_;
  std::optional<TextAccess> access_;
};

TEST_F(TextAccessTest, SelectionIsReplacedInTheUnitsOfAToolkitThatCountsCodePoints) {
  EXPECT_EQ(access_->selectedTextRange(toolkit_->field()), (platform::AXRange{4, 2}));
  EXPECT_EQ(write("🎉ế\nb"), AXError::success);
  EXPECT_EQ(toolkit_->text, U"một 🎉ế\nb hai");
  EXPECT_EQ(toolkit_->end, 8);
  EXPECT_EQ(access_->selectedTextRange(toolkit_->field()), (platform::AXRange{9, 0}));
  EXPECT_EQ(access_->setSelectedTextRange(toolkit_->field(), {6, 0}), AXError::success);
  EXPECT_EQ(toolkit_->end, 5) << "after the surrogate pair";
  EXPECT_EQ(toolkitOffset(u"a😀b", 2, TextUnit::utf16), 3) << "after the pair, too";
  EXPECT_EQ(textUnit(u"a😀", 3, TextUnit::codePoint), TextUnit::utf16)
      << "a toolkit that calls itself GTK but does not count like it";
}

TEST_F(TextAccessTest, NulsAreLeftOutAndIllFormedTextIsMended) {
  EXPECT_EQ(write(std::string("a\0b\xED\xA0\x80\xFF", 7)), AXError::success);
  EXPECT_TRUE(toolkit_->text.starts_with(U"một ab\uFFFD"));
  EXPECT_EQ(toolkit_->text.find(U'\0'), std::u32string::npos);
}

TEST_F(TextAccessTest, InsertionThatIsOnlyClaimedIsAFailureThoughTheSelectionWent) {
  toolkit_->answerAlways("InsertText", {true});
  EXPECT_EQ(write("mới"), AXError::failure);
}

TEST_F(TextAccessTest, InsertionThatIsDoneButDeniedIsASuccess) {
  toolkit_->answer("InsertText", [this](const auto&) {
    toolkit_->text += U"mới";
    return QVariantList{false};
  });
  EXPECT_EQ(write("mới"), AXError::success);
}

TEST_F(TextAccessTest, QtIsToldUtf16Units) {
  toolkit_->answerAlways("ToolkitName", {propertyValue("Qt")});
  int length = 0;
  toolkit_->answer("InsertText", [&](const QVariantList& insertion) {
    length = insertion[2].toInt();
    return QVariantList{true};
  });
  write("ế🎉");
  EXPECT_EQ(length, 3);
}

TEST_F(TextAccessTest, PasswordIsWrittenWithoutReadingAnyText) {
  toolkit_->answerAlways("GetRole", {40U});
  EXPECT_EQ(write("mật"), AXError::success);
  EXPECT_FALSE(access_->value(toolkit_->field()));
  EXPECT_FALSE(access_->selectedText(toolkit_->field()));
  EXPECT_NE(access_->setValue(toolkit_->field(), "x"), AXError::success);
  EXPECT_NE(access_->setSelectedTextRange(toolkit_->field(), {}), AXError::success);
  EXPECT_EQ(toolkit_->calls("GetText"), 0);
}

TEST_F(TextAccessTest, WriteIsNotBegunWhereItIsNotAllowed) {
  const auto refuse = [this](const char* what, const QString& member, const QVariantList& values) {
    toolkit_->reset(U"text", 0, 0);
    toolkit_->answerAlways(member, values);
    EXPECT_NE(write("x"), AXError::success) << what;
    EXPECT_NE(access_->setValue(toolkit_->field(), "x"), AXError::success) << what;
    EXPECT_EQ(toolkit_->calls("InsertText") + toolkit_->calls("SetTextContents"), 0) << what;
  };
  refuse("no interface to write", "GetInterfaces", {QStringList{"org.a11y.atspi.Text"}});
  refuse("not editable", "GetState", {QVariant::fromValue(QList<quint32>{1U << 12U, 0})});
  refuse("read-only", "GetState", {QVariant::fromValue(QList<quint32>{1U << 7U, 1U << 11U})});
  refuse("a terminal", "GetRole", {60U});
}

TEST_F(TextAccessTest, DocumentIsEnteredThoughItManagesItsParagraphsWhichTellNothingOfTheWholeText) {
  const quint32 showing = 1U << 25U;
  const quint32 managing = 1U << 31U;
  toolkit_->answerAlways("GetState", {QVariant::fromValue(QList<quint32>{showing | managing, 0})});
  toolkit_->answerAlways("ChildCount", {propertyValue(3)});
  const auto isEntered = [this](unsigned role) {
    toolkit_->answerAlways("GetRole", {role});
    return ElementReader(*bus_).describe({toolkit_->field()}).front().hasChildren;
  };
  EXPECT_TRUE(isEntered(94)) << "document text";
  EXPECT_FALSE(isEntered(92)) << "spreadsheet";
  EXPECT_FALSE(isEntered(55)) << "table";

  toolkit_->reset(U"một đoạn", 3, 3);
  toolkit_->answerAlways("GetRole", {73U});
  EXPECT_EQ(write(" hai\nba"), AXError::success);
  EXPECT_FALSE(access_->value(toolkit_->field()));
}

TEST_F(TextAccessTest, TextAroundOtherElementsIsNoValue) {
  toolkit_->reset(U"a\uFFFCb", 0, 0);
  EXPECT_EQ(access_->value(toolkit_->field()).error(), AXError::noValue);
}

TEST_F(TextAccessTest, LargeTextIsWrittenButNeverReadWhole) {
  const std::u32string large(1'500'000, U'x');
  toolkit_->reset(large, 0, 0);
  EXPECT_FALSE(access_->value(toolkit_->field()));
  EXPECT_NE(access_->setValue(toolkit_->field(), "x"), AXError::success);
  EXPECT_NE(access_->setSelectedTextRange(toolkit_->field(), {1, 0}), AXError::success);
  toolkit_->end = toolkit_->start = static_cast<int>(large.size());
  EXPECT_FALSE(access_->selectedTextRange(toolkit_->field()));
  EXPECT_EQ(toolkit_->calls("GetText"), 0);
  EXPECT_EQ(write("mới"), AXError::success);
  EXPECT_EQ(toolkit_->text.size(), large.size() + 3);

  toolkit_->reset(U"short", 0, 0);
  toolkit_->answerAlways("GetText", {QString(3'000'000, u'x')});
  EXPECT_FALSE(access_->value(toolkit_->field())) << "longer than it said";
}

TEST_F(TextAccessTest, AnswersOfAnyTypeAndSizeAreSurvived) {
  const auto most = std::numeric_limits<int>::max();
  const std::vector<QVariantList> hostile{{},
                                          {QString(1 << 20, u'x')},
                                          {most, -most},
                                          {QVariant::fromValue(QList<quint32>(100000, ~0U))},
                                          {propertyValue(most)},
                                          {propertyValue(-5)},
                                          {propertyValue(QStringList{"a", "b"})},
                                          {propertyValue(propertyValue(1))}};
  const QStringList members{"CharacterCount", "CaretOffset", "GetNSelections", "GetSelection", "GetText",
                            "GetState",       "GetRole",     "GetInterfaces",  "ToolkitName",  "InsertText"};
  const auto callAll = [&] {
    write("x");
    access_->value(toolkit_->field());
    access_->setValue(toolkit_->field(), "y");
    access_->selectedTextRange(toolkit_->field());
    access_->setSelectedTextRange(toolkit_->field(), {-most, most});
    ElementReader(*bus_).describe({toolkit_->field()});
    ElementReader(*bus_).children({toolkit_->field()});
    ElementReader(*bus_).titles({toolkit_->field()});
  };
  for (const auto& values : hostile) {
    for (const auto& member : members) {
      toolkit_->reset(U"text", 1, 2);
      toolkit_->answerAlways(member, values);
      callAll();
    }
    toolkit_->answerEverything(values);
    callAll();
    EXPECT_NE(write("x"), AXError::success);
  }
  // A text that grows beyond the largest number.
  toolkit_->reset(U"text", 1, 2);
  int asked = 0;
  toolkit_->answer("CharacterCount", [&](const auto&) {
    return QVariantList{propertyValue(++asked == 1 ? 4 : asked == 2 ? -most : most)};
  });
  write("x");
}

TEST_F(TextAccessTest, ChildrenBeyondReasonAreNotAskedForAndBrokenReferencesHarmNobody) {
  toolkit_->answerAlways("ChildCount", {propertyValue(1000000000)});
  ElementReader reader(*bus_);
  const auto described = reader.describe({toolkit_->field()});
  ASSERT_EQ(described.size(), 1U);
  EXPECT_FALSE(described.front().hasChildren);

  const auto field = toolkit_->field();
  toolkit_->answerAlways("GetChildren", {references({{field.service, "/org/a11y/atspi/null"},
                                                     {"", "/nobody"},
                                                     {"no bus name", "/nobody"},
                                                     {":1.99999", "/nobody"},
                                                     field})});
  const auto children = reader.children({field});
  EXPECT_EQ(children.size(), 3U);
  EXPECT_EQ(reader.describe(children).size(), 1U);
  EXPECT_EQ(reader.titles(children).size(), 3U);
}

TEST_F(TextAccessTest, WriteThatIsNotConfirmedInTimeCountsAndTheApplicationIsLeftAlone) {
  // Shared, because a request may still arrive after this test has ended.
  const auto hangs = std::make_shared<std::atomic<bool>>(false);
  toolkit_->answer("InsertText", [hangs](const auto&) {
    *hangs = true;
    return std::nullopt;
  });
  const QVariantList role{61U};
  toolkit_->answer("GetRole",
                   [hangs, role](const auto&) { return *hangs ? std::nullopt : std::optional(role); });
  EXPECT_EQ(write("mới"), AXError::success);
  const int asked = toolkit_->calls("GetInterfaces");
  EXPECT_EQ(write("mới"), AXError::cannotComplete);
  EXPECT_EQ(toolkit_->calls("InsertText"), 1);
  EXPECT_EQ(toolkit_->calls("GetInterfaces"), asked);
}

TEST_F(TextAccessTest, WriteThatIsClaimedBeforeTheApplicationHangsCounts) {
  const auto hangs = std::make_shared<std::atomic<bool>>(false);
  toolkit_->answer("InsertText", [hangs](const auto&) {
    *hangs = true;
    return QVariantList{true};
  });
  toolkit_->answer("CharacterCount", [hangs](const auto&) {
    return *hangs ? std::nullopt : std::optional(QVariantList{propertyValue(9)});
  });
  EXPECT_EQ(write("mới"), AXError::success);
}

TEST_F(TextAccessTest, PromptSaysWhatIsLeftToDoAndSwitchesOnOnlyWhereThatHelps) {
  CountedNotifications notifications;
  bool hasKeys = true;
  AccessibilityTrust trust(*bus_, notifications, [&] { return hasKeys; });
  qputenv("XDG_SESSION_TYPE", "x11");
  toolkit_->answerAlways("IsEnabled", {propertyValue(true)});
  EXPECT_TRUE(trust.facts().isTrusted());
  hasKeys = false;
  EXPECT_FALSE(trust.facts().isTrusted());

  qputenv("XDG_SESSION_TYPE", "wayland");
  hasKeys = true;
  toolkit_->answerAlways("IsEnabled", {propertyValue(false)});
  toolkit_->answerAlways("Set", {});
  trust.prompt(trust.facts());
  EXPECT_EQ(notifications.posted, 1);
  EXPECT_THAT(notifications.last, testing::HasSubstr("X11"));
  qputenv("XDG_SESSION_TYPE", "x11");
  trust.prompt(trust.facts());
  EXPECT_THAT(notifications.last, testing::HasSubstr("khởi động lại"));
  // Makes sure that the request to switch on has arrived.
  EXPECT_FALSE(trust.facts().isTrusted());
  EXPECT_EQ(toolkit_->calls("Set"), 1);
}

TEST_F(TextAccessTest, AddressThatStartsAProgramIsRefused) {
  const QString proof = QDir::tempPath() + QStringLiteral("/tavelo-started-%1").arg(::getpid());
  const QString program = "unixexec:path=touch,argv1=" + proof;
  for (const QString& address : {program, toolkit_->address() + ";" + program, "unix:path=/no/bus;" + program,
                                 QStringLiteral("autolaunch:"), QStringLiteral(";"), QString()}) {
    toolkit_->answerAlways("GetAddress", {address});
    EXPECT_FALSE(bus_.emplace(loop_, loop_).isAnswering()) << address.toStdString();
  }
  // The program would have started, but perhaps not yet run, when the connection failed.
  toolkit_->reset(U"", 0, 0);
  EXPECT_TRUE(bus_.emplace(loop_, loop_).isAnswering());
  EXPECT_FALSE(QFile::remove(proof)) << "the program ran";
}

TEST_F(TextAccessTest, ABusThatIsLateIsFoundWithoutADictation) {
  toolkit_->answerAlways("GetAddress", {QStringLiteral("unix:path=/no/bus")});
  EXPECT_FALSE(bus_->isAnswering());
  EXPECT_FALSE(bus_->isAnswering());
  toolkit_->reset(U"", 0, 0);
  loop_.advance(platform::Seconds{5});
  EXPECT_EQ(bus_->connectionNumber(), 1);
}

}  // namespace
}  // namespace tavelo::linuxdesktop
