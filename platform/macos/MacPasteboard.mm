#import "platform/macos/MacPasteboard.h"

#include <chrono>
#include <utility>

#import <AppKit/AppKit.h>

#import "platform/macos/FoundationText.h"
#import "platform/macos/TextPromise.h"

namespace tavelo::macos {
namespace {

/// Clipboard histories leave out what bears this type, by common consent.
constexpr const char* concealedType = "org.nspasteboard.ConcealedType";

constexpr platform::Uptime readingTime = std::chrono::milliseconds(600);
constexpr std::size_t readingSize = std::size_t{64} << 20;

/// What the items of one reading may still deliver.
struct Allowance {
  explicit Allowance(const platform::Clock& clock) : clock(clock) {}

  const platform::Clock& clock;
  const platform::Uptime deadline = clock.uptime() + readingTime;
  std::size_t bytes = readingSize;
};

class Item final : public platform::PasteboardItem {
 public:
  /// `isOurText` says that the item is the dictated text; then its mark for histories is no type of it.
  Item(NSPasteboardItem* item, bool isOurText, std::shared_ptr<Allowance> allowance)
      : item_(item), isOurText_(isOurText), allowance_(std::move(allowance)) {}

  std::vector<std::string> types() const override {
    std::vector<std::string> types;
    for (NSPasteboardType type in item_.types) types.push_back(fromFoundation(type));
    if (isOurText_) std::erase(types, concealedType);
    return types;
  }

  std::optional<std::string> data(const std::string& type) const override {
    if (allowance_->clock.uptime() >= allowance_->deadline) return std::nullopt;
    NSData* data = [item_ dataForType:toFoundation(type)];
    if (data == nil || data.length > allowance_->bytes) return std::nullopt;
    allowance_->bytes -= data.length;
    return fromData(data);
  }

 private:
  NSPasteboardItem* const item_;
  const bool isOurText_;
  const std::shared_ptr<Allowance> allowance_;
};

NSPasteboardItem* itemOf(const platform::PasteboardItemContent& content) {
  NSPasteboardItem* item = [[NSPasteboardItem alloc] init];
  for (const auto& [type, data] : content.representations) {
    [item setData:toData(data) forType:toFoundation(type)];
  }
  return item;
}

}  // namespace

struct MacPasteboard::Promise {
  NSPasteboard* pasteboard = NSPasteboard.generalPasteboard;
  /// The change count that our own contents have; none before we wrote.
  std::optional<NSInteger> own;
  TaveloTextPromise* text = nil;
  bool wasFetchedBeforePaste = false;
};

MacPasteboard::MacPasteboard(const platform::Clock& clock)
    : clock_(clock), promise_(std::make_unique<Promise>()) {}

MacPasteboard::~MacPasteboard() = default;

std::optional<std::vector<std::shared_ptr<platform::PasteboardItem>>> MacPasteboard::pasteboardItems() {
  NSArray<NSPasteboardItem*>* items = promise_->pasteboard.pasteboardItems;
  if (items == nil) return std::nullopt;
  std::vector<std::shared_ptr<platform::PasteboardItem>> result;
  const bool isOurText = promise_->text != nil && hasOwnContents();
  const auto allowance = std::make_shared<Allowance>(clock_);
  for (NSPasteboardItem* item in items) result.push_back(std::make_shared<Item>(item, isOurText, allowance));
  return result;
}

void MacPasteboard::clearContents() {
  promise_->own = [promise_->pasteboard clearContents];
  promise_->text = nil;
  promise_->wasFetchedBeforePaste = false;
}

bool MacPasteboard::setString(const std::string& text, const std::string& type) {
  TaveloTextPromise* promised = [[TaveloTextPromise alloc] initWithText:text];
  NSPasteboardItem* item = [[NSPasteboardItem alloc] init];
  if (![item setDataProvider:promised forTypes:@[ toFoundation(type) ]]) return false;
  [item setData:toData({}) forType:toFoundation(concealedType)];
  if (![promise_->pasteboard writeObjects:@[ item ]]) return false;
  promise_->text = promised;
  return true;
}

bool MacPasteboard::writeObjects(const std::vector<platform::PasteboardItemContent>& items) {
  if (items.empty()) return true;
  NSMutableArray<NSPasteboardItem*>* all = [[NSMutableArray alloc] init];
  for (const auto& content : items) [all addObject:itemOf(content)];
  return [promise_->pasteboard writeObjects:all];
}

bool MacPasteboard::hasOwnContents() { return promise_->own == promise_->pasteboard.changeCount; }

bool MacPasteboard::holdsOnlyText(const std::string& text) {
  const auto items = pasteboardItems();
  if (!items || items->size() != 1) return false;
  platform::PasteboardItemContent content;
  for (const auto& type : items->front()->types()) {
    if (type == concealedType) continue;
    // Text of another application in any other type is not ours, and need not be delivered to be refused.
    if (type != platform::pasteboardTypeString) return false;
    if (auto data = items->front()->data(type)) content.representations.push_back({type, std::move(*data)});
  }
  return platform::isOnlyText(content, text);
}

platform::PasteboardFetch MacPasteboard::fetchSincePaste() {
  using platform::PasteboardFetch;
  if (promise_->text == nil || !hasOwnContents() || promise_->wasFetchedBeforePaste) {
    return PasteboardFetch::unknown;
  }
  return promise_->text.wasFetched ? PasteboardFetch::yes : PasteboardFetch::no;
}

void MacPasteboard::pasteFollows() {
  promise_->wasFetchedBeforePaste = promise_->text != nil && promise_->text.wasFetched;
}

}  // namespace tavelo::macos
