#include "platform/simulated/SimulatedPasteboard.h"

#include <utility>

#include "platform/simulated/World.h"

namespace tavelo::simulated {
namespace {

std::string countOf(std::size_t items) { return items == 1 ? "1 item" : std::to_string(items) + " items"; }

}  // namespace

/// An item as the program sees it; empty once the pasteboard has changed.
class SimulatedPasteboard::ItemView final : public platform::PasteboardItem {
 public:
  ItemView(const SimulatedPasteboard& pasteboard, std::size_t index)
      : pasteboard_(pasteboard), index_(index), changeCount_(pasteboard.changeCount_) {}

  std::vector<std::string> types() const override {
    pasteboard_.world_.requireMainThread("PasteboardItem::types");
    std::vector<std::string> types;
    if (!isCurrent()) return types;
    for (const auto& each : pasteboard_.items_[index_]) types.push_back(each.type);
    return types;
  }

  std::optional<std::string> data(const std::string& type) const override {
    pasteboard_.world_.requireMainThread("PasteboardItem::data");
    if (!isCurrent() || !pasteboard_.ownerAnswers_) return std::nullopt;
    for (const auto& each : pasteboard_.items_[index_]) {
      if (each.type == type) return each.data;
    }
    return std::nullopt;
  }

 private:
  bool isCurrent() const { return pasteboard_.changeCount_ == changeCount_; }

  const SimulatedPasteboard& pasteboard_;
  const std::size_t index_;
  const std::uint64_t changeCount_;
};

SimulatedPasteboard::SimulatedPasteboard(World& world) : world_(world) {}

std::optional<std::vector<std::shared_ptr<platform::PasteboardItem>>> SimulatedPasteboard::pasteboardItems() {
  world_.requireMainThread("Pasteboard::pasteboardItems");
  if (!ownerAnswers_) {
    world_.report(WorldEvent::Kind::pasteboard, "read: the owner does not answer");
    return std::nullopt;
  }
  world_.report(WorldEvent::Kind::pasteboard, "read " + countOf(items_.size()));
  std::vector<std::shared_ptr<platform::PasteboardItem>> views;
  for (std::size_t i = 0; i < items_.size(); ++i) views.push_back(std::make_shared<ItemView>(*this, i));
  return views;
}

void SimulatedPasteboard::clearContents() {
  world_.requireMainThread("Pasteboard::clearContents");
  items_.clear();
  ownedByProgram_ = true;
  changed();
  world_.report(WorldEvent::Kind::pasteboard, "cleared");
}

bool SimulatedPasteboard::setString(const std::string& text, const std::string& type) {
  world_.requireMainThread("Pasteboard::setString");
  if (!canWrite("string")) return false;
  if (items_.empty()) items_.emplace_back();
  Item& item = items_.front();
  std::erase_if(item, [&type](const Representation& each) { return each.type == type; });
  item.push_back({type, text});
  changed();
  world_.report(WorldEvent::Kind::pasteboard, "string " + quoted(text));
  return true;
}

bool SimulatedPasteboard::writeObjects(const std::vector<platform::PasteboardItemContent>& items) {
  world_.requireMainThread("Pasteboard::writeObjects");
  if (!canWrite("items")) return false;
  for (const auto& content : items) {
    Item& item = items_.emplace_back();
    for (const auto& each : content.representations) item.push_back({each.type, each.data});
  }
  changed();
  const auto text = string();
  world_.report(WorldEvent::Kind::pasteboard,
                "wrote " + countOf(items.size()) + (text ? " with string " + quoted(*text) : ""));
  return true;
}

bool SimulatedPasteboard::holdsOnlyText(const std::string& text) {
  return ownerAnswers_ && items_ == std::vector<Item>{Item{{platform::pasteboardTypeString, text}}};
}

void SimulatedPasteboard::copy(const std::string& text) {
  copy({Item{{platform::pasteboardTypeString, text}}});
}

void SimulatedPasteboard::copy(std::vector<Item> items) {
  world_.requireMainThread("SimulatedPasteboard::copy");
  items_ = std::move(items);
  ownedByProgram_ = false;
  changed();
  const auto text = string();
  world_.report(WorldEvent::Kind::pasteboard,
                "the user copied " + (text ? quoted(*text) : countOf(items_.size())));
}

std::optional<std::string> SimulatedPasteboard::string() const {
  if (!ownerAnswers_) return std::nullopt;
  for (const auto& item : items_) {
    for (const auto& each : item) {
      if (each.type == platform::pasteboardTypeString && each.data) return each.data;
    }
  }
  return std::nullopt;
}

platform::PasteboardFetch SimulatedPasteboard::fetchSincePaste() {
  world_.requireMainThread("Pasteboard::fetchSincePaste");
  if (!tellsFetches_) return platform::PasteboardFetch::unknown;
  return fetched_ ? platform::PasteboardFetch::yes : platform::PasteboardFetch::no;
}

std::optional<std::string> SimulatedPasteboard::fetch() {
  const bool isSecond = std::exchange(fetched_, true);
  if (isSecond && std::exchange(secondPasteFollows_, false)) return std::nullopt;
  return string();
}

void SimulatedPasteboard::changed() {
  ++changeCount_;
  fetched_ = false;
  secondPasteFollows_ = false;
  ownerAnswers_ = true;
}

bool SimulatedPasteboard::canWrite(const char* operation) const {
  if (!ownedByProgram_) world_.report(WorldEvent::Kind::pasteboard, std::string{operation} + " refused");
  return ownedByProgram_;
}

}  // namespace tavelo::simulated
