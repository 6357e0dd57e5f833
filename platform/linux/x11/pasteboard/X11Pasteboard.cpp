#include "platform/linux/x11/pasteboard/X11Pasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <algorithm>
#include <chrono>
#include <memory>
#include <utility>

namespace tavelo::linuxdesktop {
namespace {

using platform::PasteboardItem;

constexpr std::chrono::seconds handOverTime{1};
/// To see whether somebody else has our text. A clipboard manager answers in a few milliseconds.
constexpr std::chrono::milliseconds quickLook{150};

class Item final : public PasteboardItem {
 public:
  explicit Item(SelectionContents contents) : contents_(std::move(contents)) {}

  std::vector<std::string> types() const override {
    std::vector<std::string> types;
    for (const auto& each : contents_.representations) types.push_back(each.type);
    return types;
  }
  std::optional<std::string> data(const std::string& type) const override {
    const auto& all = contents_.representations;
    const auto found = std::ranges::find(all, type, &SelectionContents::Representation::type);
    if (found == all.end()) return std::nullopt;
    return *found->bytes;
  }

 private:
  SelectionContents contents_;
};

/// Whether the window belongs to this program's own toolkit, which cannot answer while we wait.
bool isOfToolkit(xcb_window_t window) {
  const auto* x11 =
      qGuiApp == nullptr ? nullptr : qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (x11 == nullptr) return false;
  const auto* setup = xcb_get_setup(x11->connection());
  return (window & ~setup->resource_id_mask) == setup->resource_id_base;
}

SelectionContents contentsOfToolkit() {
  SelectionContents contents;
  const QMimeData* data = QGuiApplication::clipboard()->mimeData();
  if (data == nullptr) return contents;
  for (const QString& format : data->formats()) {
    contents.add(format == "text/plain" ? platform::pasteboardTypeString : format.toStdString(),
                 data->data(format).toStdString());
  }
  return contents;
}

}  // namespace

X11Pasteboard::X11Pasteboard(SelectionBudget budget) : reader_(budget) {}

X11Pasteboard::~X11Pasteboard() {
  if (!reader_.isConnected() || reader_.owner() != owner_.window()) return;
  if (own_.momentary && users_) owner_.own(offeredTargets(*users_));
  owner_.handOver(std::chrono::steady_clock::now() + handOverTime);
}

std::optional<std::vector<std::shared_ptr<PasteboardItem>>> X11Pasteboard::pasteboardItems() {
  auto found = contents();
  if (!found || !found->momentary) users_ = found;
  if (!found) return std::nullopt;
  std::vector<std::shared_ptr<PasteboardItem>> items;
  if (!found->representations.empty()) items.push_back(std::make_shared<Item>(std::move(*found)));
  return items;
}

std::optional<SelectionContents> X11Pasteboard::contents() {
  if (!reader_.isConnected()) return std::nullopt;
  const auto owner = reader_.owner();
  if (owner == owner_.window()) return own_;
  if (isOfToolkit(owner)) return contentsOfToolkit();
  auto read = reader_.read();
  if (!read) return std::nullopt;
  SelectionContents contents;
  for (auto& each : read->representations) contents.add(std::move(each.type), std::move(each.data));
  return contents;
}

void X11Pasteboard::clearContents() { own({}); }

bool X11Pasteboard::setString(const std::string& text, const std::string& type) {
  auto contents = own_;
  contents.add(type, text);
  contents.momentary = true;
  return own(std::move(contents));
}

bool X11Pasteboard::writeObjects(const std::vector<platform::PasteboardItemContent>& items) {
  auto contents = own_;
  for (const auto& item : items) {
    for (const auto& [type, data] : item.representations) contents.add(type, data);
  }
  users_.reset();
  return own(std::move(contents));
}

bool X11Pasteboard::hasOwnContents() { return reader_.isConnected() && reader_.owner() == owner_.window(); }

bool X11Pasteboard::holdsOnlyText(const std::string& text) {
  // Other kinds of text are offered beside it, and markup of it would need room as well.
  SelectionReader reader({.time = quickLook, .bytes = 32 * text.size() + 65536});
  const auto owner = reader.owner();
  if (owner == XCB_WINDOW_NONE || owner == owner_.window() || isOfToolkit(owner)) return false;
  const auto read = reader.read();
  return read && platform::isOnlyText(*read, text);
}

bool X11Pasteboard::own(SelectionContents contents) {
  own_ = std::move(contents);
  return owner_.own(offeredTargets(own_));
}

}  // namespace tavelo::linuxdesktop
