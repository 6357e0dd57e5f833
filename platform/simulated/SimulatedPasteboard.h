#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Pasteboard.h"

namespace tavelo::simulated {

class World;

/// The general pasteboard of the simulated desktop. Main thread.
class SimulatedPasteboard final : public platform::Pasteboard {
 public:
  /// A type that an item offers; the data is absent if the owner does not deliver it.
  struct Representation {
    std::string type;
    std::optional<std::string> data;

    bool operator==(const Representation&) const = default;
  };
  using Item = std::vector<Representation>;

  explicit SimulatedPasteboard(World& world);

  std::optional<std::vector<std::shared_ptr<platform::PasteboardItem>>> pasteboardItems() override;
  void clearContents() override;
  bool setString(const std::string& text, const std::string& type) override;
  bool writeObjects(const std::vector<platform::PasteboardItemContent>& items) override;
  bool hasOwnContents() override { return ownedByProgram_; }
  bool holdsOnlyText(const std::string& text) override;
  /// `unknown` unless `setTellsFetches` was called.
  platform::PasteboardFetch fetchSincePaste() override;
  void prepareForSecondPaste() override { secondPasteFollows_ = tellsFetches_; }

  /// The person copies in another application, which then owns the pasteboard.
  void copy(const std::string& text);
  void copy(std::vector<Item> items);

  /// The current owner stops answering: there is no item list until the contents change.
  void silenceOwner() { ownerAnswers_ = false; }

  /// Whether the pasteboard sees who reads it, as those of real desktops may. Each `fetch` since the program
  /// last wrote then counts as one by the target of the paste command.
  void setTellsFetches(bool tells) { tellsFetches_ = tells; }

  /// An application pastes: returns what `string` does, unless this is the second paste of one text.
  std::optional<std::string> fetch();

  /// What is on the pasteboard.
  const std::vector<Item>& items() const { return items_; }
  /// What a paste takes: the plain text of the first item that has some.
  std::optional<std::string> string() const;
  /// The number of changes, including clearing.
  std::uint64_t changeCount() const { return changeCount_; }

 private:
  class ItemView;

  void changed();
  bool canWrite(const char* operation) const;

  World& world_;
  std::vector<Item> items_;
  bool ownedByProgram_ = false;
  bool ownerAnswers_ = true;
  bool tellsFetches_ = false;
  bool fetched_ = false;
  bool secondPasteFollows_ = false;
  std::uint64_t changeCount_ = 0;
};

}  // namespace tavelo::simulated
