// The clipboard on a real X server, with well-behaved and faulty owners.

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

#include <gmock/gmock.h>

#include "platform/linux/x11/pasteboard/SelectionContents.h"
#include "platform/linux/x11/pasteboard/X11Pasteboard.h"
#include "tests/contract/PasteboardContract.h"

namespace tavelo {
namespace contract {
namespace {

/// The pasteboard beside another application, which offers exactly what was copied in it.
class X11 final : public PasteboardBackend {
 public:
  platform::Pasteboard& pasteboard() override { return pasteboard_; }
  void copy(const platform::PasteboardItemContent& item) override {
    std::vector<linuxdesktop::OfferedTarget> targets;
    for (const auto& [type, data] : item.representations)
      targets.push_back({linuxdesktop::targetOf(type), linuxdesktop::targetOf(type),
                         std::make_shared<const std::string>(data)});
    EXPECT_TRUE(application_.own(std::move(targets)));
  }

 private:
  linuxdesktop::SelectionOwner application_;
  linuxdesktop::X11Pasteboard pasteboard_;
};

INSTANTIATE_TEST_SUITE_P(X11, PasteboardContract, (only<PasteboardBackend, X11>("X11")),
                         nameOfParameter<PasteboardBackend>);

}  // namespace
}  // namespace contract

namespace linuxdesktop {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;

/// Owns a selection and answers each request as the test says.
class ScriptedOwner final {
 public:
  using Behaviour = std::function<void(ScriptedOwner&, const xcb_selection_request_event_t&)>;

  explicit ScriptedOwner(Behaviour behaviour, const char* selection = "CLIPBOARD")
      : behaviour_(std::move(behaviour)) {
    xcb_set_selection_owner(connection_.get(), window_, connection_.atom(selection), XCB_CURRENT_TIME);
    connection_.atom("done");
    thread_ = std::thread([this] { run(); });
  }
  ~ScriptedOwner() {
    ends_ = true;
    thread_.join();
  }

  void put(const xcb_selection_request_event_t& to, const char* type, int format, const std::string& bytes) {
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, to.requestor, to.property,
                        connection_.atom(type), static_cast<std::uint8_t>(format),
                        static_cast<std::uint32_t>(bytes.size() * 8) / static_cast<std::uint32_t>(format),
                        bytes.data());
  }
  void notify(const xcb_selection_request_event_t& to, xcb_atom_t property) {
    char wire[32] = {};
    auto& notice = reinterpret_cast<xcb_selection_notify_event_t&>(wire);
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.requestor = to.requestor;
    notice.selection = to.selection;
    notice.target = to.target;
    notice.property = property;
    xcb_send_event(connection_.get(), 0, to.requestor, 0, wire);
    xcb_flush(connection_.get());
  }
  void answer(const xcb_selection_request_event_t& to, const char* type, int format,
              const std::string& bytes) {
    put(to, type, format, bytes);
    notify(to, to.property);
  }
  /// Answers a request for the target list with text and one more type. False for other requests.
  bool listed(const xcb_selection_request_event_t& request) {
    if (request.target != connection_.atom("TARGETS")) return false;
    const xcb_atom_t list[] = {connection_.atom("a/hostile"), connection_.atom("UTF8_STRING")};
    answer(request, "ATOM", 32, std::string(reinterpret_cast<const char*>(list), sizeof list));
    return true;
  }
  /// As `listed`, and also answers a request for the text.
  bool behaved(const xcb_selection_request_event_t& request) {
    if (listed(request)) return true;
    if (request.target != connection_.atom("UTF8_STRING")) return false;
    answer(request, "UTF8_STRING", 8, "chào");
    return true;
  }
  /// Delivers `part` again each time the reader has taken it.
  void feed(const xcb_selection_request_event_t& to, const std::string& part) {
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection_.get(), to.requestor, XCB_CW_EVENT_MASK, &events);
    answer(to, "INCR", 32, "1234");
    while (!ends_) {
      const auto event = nextEvent();
      if (event && kindOf(*event) == XCB_PROPERTY_NOTIFY &&
          as<xcb_property_notify_event_t>(*event).state == XCB_PROPERTY_DELETE)
        put(to, "a/hostile", 8, part);
    }
  }
  void vanish() {
    xcb_destroy_window(connection_.get(), window_);
    xcb_flush(connection_.get());
  }

 private:
  XcbOwned<xcb_generic_event_t> nextEvent() {
    return connection_.nextEvent(std::chrono::steady_clock::now() + milliseconds(20));
  }
  void run() {
    while (!ends_) {
      const auto event = nextEvent();
      if (event && kindOf(*event) == XCB_SELECTION_REQUEST)
        behaviour_(*this, as<xcb_selection_request_event_t>(*event));
    }
  }

  XcbConnection connection_;
  const xcb_window_t window_ = connection_.createWindow();
  const Behaviour behaviour_;
  std::atomic<bool> ends_ = false;
  std::thread thread_;
};

using Request = xcb_selection_request_event_t;

struct Fault {
  const char* name;
  ScriptedOwner::Behaviour behaviour;
  /// The types that are saved; absent when the owner counts as not answering.
  std::optional<std::vector<std::string>> saved;
  /// Whether the reader can notice the fault at once. Otherwise it waits until its time is up.
  bool atOnce;
};

const std::vector<std::string> justText{platform::pasteboardTypeString};
const std::vector<std::string> nothing;

const std::vector<Fault> faults{
    {"silent", [](ScriptedOwner&, const Request&) {}, std::nullopt, false},
    {"refuses all", [](ScriptedOwner& o, const Request& r) { o.notify(r, XCB_ATOM_NONE); }, nothing, true},
    {"silent after the list", [](ScriptedOwner& o, const Request& r) { o.listed(r); }, std::nullopt, false},
    {"silent after the text", [](ScriptedOwner& o, const Request& r) { o.behaved(r); }, justText, false},
    {"answers in another property",
     [](ScriptedOwner& o, const Request& r) { o.behaved(r) ? void() : o.notify(r, XCB_ATOM_WM_NAME); },
     justText, true},
    {"says it answered and did not",
     [](ScriptedOwner& o, const Request& r) { o.behaved(r) ? void() : o.notify(r, r.property); }, justText,
     true},
    {"sends numbers",
     [](ScriptedOwner& o, const Request& r) {
       if (!o.behaved(r)) o.answer(r, "INTEGER", 32, "1234");
     },
     justText, true},
    {"lists rubbish",
     [](ScriptedOwner& o, const Request& r) {
       if (r.target == XCB_ATOM_STRING) return o.notify(r, XCB_ATOM_NONE);
       o.answer(r, "STRING", 8, "no list");
     },
     justText, true},
    {"lists what is no atom",
     [](ScriptedOwner& o, const Request& r) { o.answer(r, "ATOM", 32, std::string(400000, '\xee')); },
     nothing, true},
    {"never ends",
     [](ScriptedOwner& o, const Request& r) {
       if (!o.behaved(r)) o.feed(r, "more");
     },
     justText, false},
    {"is too large",
     [](ScriptedOwner& o, const Request& r) {
       if (!o.behaved(r)) o.answer(r, "a/hostile", 8, std::string(2 << 20, 'x'));
     },
     justText, true},
    {"gets too large",
     [](ScriptedOwner& o, const Request& r) {
       if (!o.behaved(r)) o.feed(r, std::string(100000, 'x'));
     },
     justText, true},
    {"ends midway",
     [](ScriptedOwner& o, const Request& r) {
       if (o.behaved(r)) return;
       o.answer(r, "INCR", 32, "1234");
       o.vanish();
     },
     justText, true},
};

TEST(SelectionReaderTest, NoOwnerCanHoldUpOrMisleadTheReader) {
  for (const auto& fault : faults) {
    SCOPED_TRACE(fault.name);
    // Long enough that "at once" is clearly shorter even on a busy machine; short when the test has to wait.
    const milliseconds time{fault.atOnce ? 4000 : 600};
    X11Pasteboard pasteboard({.time = time, .bytes = 1 << 20});
    const ScriptedOwner owner(fault.behaviour);
    const auto begin = std::chrono::steady_clock::now();
    const auto items = pasteboard.pasteboardItems();
    const auto taken = std::chrono::steady_clock::now() - begin;
    EXPECT_LT(taken, fault.atOnce ? time : time + milliseconds(2000));
    ASSERT_EQ(items.has_value(), fault.saved.has_value());
    if (!items) continue;
    EXPECT_EQ(items->empty() ? nothing : items->front()->types(), *fault.saved);
  }
}

TEST(X11PasteboardTest, TheProgramsOwnToolkitAndThePasteboardReadEachOtherAtOnce) {
  X11Pasteboard pasteboard;
  auto* rich = new QMimeData;
  rich->setText("chép");
  rich->setHtml("<b>chép</b>");
  QGuiApplication::clipboard()->setMimeData(rich);
  const auto items = pasteboard.pasteboardItems();
  ASSERT_EQ(items->size(), 1U);
  EXPECT_THAT(items->front()->types(), ElementsAre(platform::pasteboardTypeString, "text/html"));
  EXPECT_EQ(items->front()->data("text/html"), "<b>chép</b>");

  const std::string large(3 << 20, 'x');
  EXPECT_TRUE(
      pasteboard.writeObjects({{{{"a/a", "1"}}}, {{{"a/a", "2"}, {platform::pasteboardTypeString, large}}}}));
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), large);
  EXPECT_EQ(QGuiApplication::clipboard()->mimeData()->data("a/a"), QByteArray("1"));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
}

/// What a clipboard manager gets when the program ends with dictated text on the clipboard.
std::vector<platform::PasteboardItemContent> handedOver(bool userHadCopied) {
  std::vector<platform::PasteboardItemContent> got;
  SelectionOwner application;
  if (userHadCopied) application.own({{"a/a", "a/a", std::make_shared<const std::string>(1 << 20, 'u')}});
  const ScriptedOwner manager(
      [&got, reader = std::make_shared<SelectionReader>()](ScriptedOwner& o, const Request& r) {
        got.push_back(reader->read().value_or(platform::PasteboardItemContent{}));
        o.notify(r, r.property);
      },
      "CLIPBOARD_MANAGER");
  auto pasteboard = std::make_unique<X11Pasteboard>();
  if (userHadCopied) pasteboard->pasteboardItems();
  pasteboard->clearContents();
  pasteboard->setString("đọc", platform::pasteboardTypeString);
  pasteboard.reset();
  return got;
}

TEST(X11PasteboardTest, AtTheEndTheManagerGetsTheUsersContentsInsteadOfMomentaryText) {
  EXPECT_THAT(handedOver(true),
              ElementsAre(platform::PasteboardItemContent{{{"a/a", std::string(1 << 20, 'u')}}}));
  const auto unknown = handedOver(false);
  ASSERT_EQ(unknown.size(), 1U);
  EXPECT_EQ(unknown.front().representations.front(),
            (platform::PasteboardRepresentation{platform::pasteboardTypeString, "đọc"}));
}

TEST(X11PasteboardTest, AManagerThatTakesNothingHoldsTheEndUpForASecondOnly) {
  const ScriptedOwner manager([](ScriptedOwner&, const Request&) {}, "CLIPBOARD_MANAGER");
  auto pasteboard = std::make_unique<X11Pasteboard>();
  pasteboard->clearContents();
  pasteboard->writeObjects({{{{"a/a", "1"}}}});
  const auto begin = std::chrono::steady_clock::now();
  pasteboard.reset();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, milliseconds(1300));
}

TEST(SelectionTargetsTest, TextComesFirstRequestsNeverAndThePicturesAreOne) {
  const std::vector<std::string> targets{
      "TARGETS",     "a/rest",    "image/jpeg", "image/png", "image/svg+xml", "text/plain", "SAVE_TARGETS",
      "UTF8_STRING", "text/html", "PIXMAP",     ""};
  EXPECT_THAT(fetchingSteps(targets), ElementsAre(ElementsAre(5), ElementsAre(7), ElementsAre(8),
                                                  ElementsAre(3, 2), ElementsAre(1), ElementsAre(4)));
}

}  // namespace
}  // namespace linuxdesktop
}  // namespace tavelo

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  const QGuiApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
