#include "platform/linux/x11/pasteboard/SelectionOwner.h"

#include <algorithm>
#include <cstring>
#include <future>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace tavelo::linuxdesktop {
namespace {

/// How long to wait for the X server.
constexpr std::chrono::seconds serverPatience{1};
/// The most targets that one MULTIPLE request may name.
constexpr std::uint32_t mostAtOnce = 256;

}  // namespace

SelectionOwner::SelectionOwner()
    : window_(connection_.isConnected() ? connection_.createWindow() : xcb_window_t{XCB_WINDOW_NONE}),
      clipboard_(connection_.atom("CLIPBOARD")),
      targetsAtom_(connection_.atom("TARGETS")),
      multiple_(connection_.atom("MULTIPLE")),
      timestamp_(connection_.atom("TIMESTAMP")),
      saveTargets_(connection_.atom("SAVE_TARGETS")),
      atomPair_(connection_.atom("ATOM_PAIR")),
      manager_(connection_.atom("CLIPBOARD_MANAGER")),
      scratch_(connection_.atom("TAVELO_SELECTION")),
      transfers_(connection_),
      wakeUp_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      thread_([this] { run(); }) {}

SelectionOwner::~SelectionOwner() {
  {
    const std::lock_guard lock(mutex_);
    ends_ = true;
  }
  eventfd_write(wakeUp_, 1);
  thread_.join();
  close(wakeUp_);
}

bool SelectionOwner::own(std::vector<OfferedTarget> targets) {
  return onThread([this, targets = std::move(targets)] { return take(targets); }, 2 * serverPatience);
}

void SelectionOwner::expectPaste(xcb_window_t window) {
  onThread([this, window] { return beginPaste(window); }, serverPatience);
}

void SelectionOwner::expectSecondPaste() {
  const auto begin = [this] {
    expected_.expectSecond();
    return true;
  };
  onThread(begin, serverPatience);
}

void SelectionOwner::handOver(XcbConnection::Instant deadline) {
  onThread([this, deadline] { return passOn(deadline); },
           deadline - std::chrono::steady_clock::now() + serverPatience);
}

bool SelectionOwner::onThread(std::function<bool()> work, std::chrono::steady_clock::duration patience) {
  const auto result = std::make_shared<std::promise<bool>>();
  auto answer = result->get_future();
  {
    const std::lock_guard lock(mutex_);
    tasks_.emplace_back([result, work = std::move(work)] { result->set_value(work()); });
  }
  eventfd_write(wakeUp_, 1);
  return answer.wait_for(patience) == std::future_status::ready && answer.get();
}

void SelectionOwner::run() {
  for (;;) {
    {
      const std::lock_guard lock(mutex_);
      if (ends_) return;
    }
    runTasks();
    // Events that a task left in the connection's queue do not make its descriptor readable.
    while (const auto event = connection_.nextEvent({})) handle(*event);
    sleep();
  }
}

void SelectionOwner::runTasks() {
  std::vector<std::function<void()>> tasks;
  {
    const std::lock_guard lock(mutex_);
    tasks.swap(tasks_);
  }
  for (const auto& task : tasks) task();
}

void SelectionOwner::sleep() {
  auto until = transfers_.expire();
  const auto pasteUntil = expirePaste();
  if (!until || (pasteUntil && *pasteUntil < *until)) until = pasteUntil;
  // `poll` waits for ever when the time is negative.
  const auto left =
      until
          ? std::max(std::chrono::milliseconds{0},
                     std::chrono::ceil<std::chrono::milliseconds>(*until - std::chrono::steady_clock::now()))
          : std::chrono::milliseconds{-1};
  pollfd awaited[] = {{.fd = wakeUp_, .events = POLLIN, .revents = 0},
                      {.fd = connection_.fileDescriptor(), .events = POLLIN, .revents = 0}};
  // Once the server has gone, its descriptor stays readable for ever.
  poll(awaited, connection_.isConnected() ? 2 : 1, static_cast<int>(left.count()));
  eventfd_t count = 0;
  eventfd_read(wakeUp_, &count);
}

bool SelectionOwner::take(const std::vector<OfferedTarget>& targets) {
  if (!connection_.isConnected()) return false;
  const auto now = serverTime();
  if (!now) return false;
  if (std::ranges::any_of(targets, &OfferedTarget::isHint)) endPaste();
  expected_.cover();
  offers_.clear();
  for (const auto& each : targets)
    offers_.push_back({connection_.atom(each.name), connection_.atom(each.type), each.bytes, each.isHint});
  ownedSince_ = *now;
  xcb_set_selection_owner(connection_.get(), window_, clipboard_, *now);
  return connection_.selectionOwner(clipboard_) == window_;
}

std::optional<xcb_timestamp_t> SelectionOwner::serverTime() {
  // Each property event carries the server's time.
  xcb_change_property(connection_.get(), XCB_PROP_MODE_APPEND, window_, scratch_, XCB_ATOM_STRING, 8, 0, "");
  while (const auto event = connection_.nextEvent(std::chrono::steady_clock::now() + serverPatience)) {
    if (kindOf(*event) == XCB_PROPERTY_NOTIFY) {
      const auto& change = as<xcb_property_notify_event_t>(*event);
      if (change.window == window_ && change.atom == scratch_) return change.time;
    }
    handle(*event);
  }
  return std::nullopt;
}

bool SelectionOwner::passOn(XcbConnection::Instant deadline) {
  if (offers_.empty() || connection_.selectionOwner(clipboard_) != window_ ||
      connection_.selectionOwner(manager_) == XCB_WINDOW_NONE)
    return false;
  std::vector<std::uint32_t> targets;
  for (const auto& each : offers_) targets.push_back(each.target);
  replace(window_, scratch_, XCB_ATOM_ATOM, targets);
  xcb_convert_selection(connection_.get(), window_, manager_, saveTargets_, scratch_, ownedSince_);
  while (std::chrono::steady_clock::now() < deadline) {
    const auto event = connection_.nextEvent(deadline);
    if (!event) return false;
    if (kindOf(*event) == XCB_SELECTION_NOTIFY) {
      const auto& answer = as<xcb_selection_notify_event_t>(*event);
      if (answer.selection == manager_) return answer.property != XCB_ATOM_NONE;
    }
    handle(*event);
  }
  return false;
}

void SelectionOwner::handle(const xcb_generic_event_t& event) {
  transfers_.handle(event);
  if (expected_.isExpected() && target_.hasNewWindows(event)) {
    const auto now = std::chrono::steady_clock::now();
    target_.updateDialogs(expected_.mayBringUpDialog(now));
    expected_.setDialogOpen(target_.hasDialog(), now);
  }
  switch (kindOf(event)) {
    case XCB_SELECTION_REQUEST:
      answer(as<xcb_selection_request_event_t>(event));
      break;
    case XCB_SELECTION_CLEAR:
      // The event may be about an earlier loss, after which we took ownership again.
      if (connection_.selectionOwner(clipboard_) == window_) break;
      offers_.clear();
      // The target may fetch from the new owner now, unseen.
      endPaste();
      break;
    default:
      break;
  }
}

void SelectionOwner::answer(const xcb_selection_request_event_t& request) {
  // Very old clients name no property; the target's name is used then.
  const xcb_atom_t property = request.property == XCB_ATOM_NONE ? request.target : request.property;
  const Asker asker{request.requestor, isTarget(request)};
  const bool delivered = request.selection == clipboard_ && (!offers_.empty() || !text_.empty()) &&
                         (request.target == multiple_ ? deliverSeveral(asker, property)
                                                      : deliver(asker, request.target, property));
  xcb_selection_notify_event_t notice{};
  notice.response_type = XCB_SELECTION_NOTIFY;
  notice.time = request.time;
  notice.requestor = request.requestor;
  notice.selection = request.selection;
  notice.target = request.target;
  notice.property = delivered ? property : xcb_atom_t{XCB_ATOM_NONE};
  // libxcb sends 32 bytes, and this event is shorter.
  char wire[32] = {};
  std::memcpy(wire, &notice, sizeof notice);
  xcb_send_event(connection_.get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, wire);
  xcb_flush(connection_.get());
}

bool SelectionOwner::deliver(const Asker& asker, xcb_atom_t target, xcb_atom_t property) {
  const auto serving = servingFor(asker, target);
  const auto& offers = serving == ExpectedPaste::Serving::text ? text_ : offers_;
  if (serving == ExpectedPaste::Serving::nothing || offers.empty()) return false;
  const auto requestor = asker.window;
  if (target == targetsAtom_) {
    std::vector<std::uint32_t> list{targetsAtom_, multiple_, timestamp_, saveTargets_};
    for (const auto& each : offers) list.push_back(each.target);
    replace(requestor, property, XCB_ATOM_ATOM, list);
    return true;
  }
  if (target == timestamp_) {
    replace(requestor, property, XCB_ATOM_INTEGER, {ownedSince_});
    return true;
  }
  const auto offer = std::ranges::find(offers, target, &Offer::target);
  if (offer == offers.end()) return false;
  if (offer->bytes->size() > largestPart)
    return transfers_.begin(requestor, property, offer->type, offer->bytes);
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, requestor, property, offer->type, 8,
                      static_cast<std::uint32_t>(offer->bytes->size()), offer->bytes->data());
  return true;
}

bool SelectionOwner::deliverSeveral(const Asker& asker, xcb_atom_t property) {
  const auto list = connection_.property(asker.window, property, 2 * mostAtOnce, atomPair_);
  if (!list || list->format != 32) return false;
  auto pairs = valuesOf(*list);
  for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
    if (!deliver(asker, pairs[i], pairs[i + 1])) pairs[i + 1] = XCB_ATOM_NONE;
  }
  replace(asker.window, property, atomPair_, pairs);
  return true;
}

ExpectedPaste::Serving SelectionOwner::servingFor(const Asker& asker, xcb_atom_t target) {
  using Serving = ExpectedPaste::Serving;
  using platform::PasteboardFetch;
  const auto offer = std::ranges::find(text_, target, &Offer::target);
  const bool isText = offer != text_.end() && !offer->isHint;
  if (!asker.isTarget && isText && fetch_ == PasteboardFetch::no) fetch_ = PasteboardFetch::unknown;
  if (!asker.isTarget.value_or(false)) return Serving::clipboard;
  const auto now = std::chrono::steady_clock::now();
  const auto serving = isText ? expected_.fetch(target, now) : expected_.listing(now);
  if (isText && serving == Serving::text) fetch_ = PasteboardFetch::yes;
  targetIsMisled_ = targetIsMisled_ || (expected_.isCovered() && serving != Serving::clipboard);
  return serving;
}

void SelectionOwner::replace(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type,
                             const std::vector<std::uint32_t>& values) {
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, requestor, property, type, 32,
                      static_cast<std::uint32_t>(values.size()), values.data());
}

bool SelectionOwner::beginPaste(xcb_window_t window) {
  endPaste();
  const bool holdsText = std::ranges::any_of(offers_, &Offer::isHint);
  const auto now = holdsText ? serverTime() : std::nullopt;
  if (!now || window == XCB_WINDOW_NONE) return false;
  target_.set(window, *now);
  text_ = offers_;
  expected_.begin(std::chrono::steady_clock::now());
  fetch_ = platform::PasteboardFetch::no;
  return true;
}

void SelectionOwner::endPaste() {
  expected_.end();
  target_.clear();
  text_.clear();
  fetch_ = platform::PasteboardFetch::unknown;
  // The notice of a new owner makes the target ask again.
  if (std::exchange(targetIsMisled_, false))
    xcb_set_selection_owner(connection_.get(), window_, clipboard_, ownedSince_);
}

std::optional<XcbConnection::Instant> SelectionOwner::expirePaste() {
  const auto end = expected_.endsAt();
  if (!end || *end > std::chrono::steady_clock::now()) return end;
  endPaste();
  xcb_flush(connection_.get());
  return std::nullopt;
}

std::optional<bool> SelectionOwner::isTarget(const xcb_selection_request_event_t& request) const {
  if (!expected_.isExpected()) return false;
  return target_.obeysCommand(request, expected_.isCovered() ? std::optional(ownedSince_) : std::nullopt);
}

}  // namespace tavelo::linuxdesktop
