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
  /// A type that an item offers; without data when the owner does not deliver it.
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

  /// The person copies in some application, which owns the pasteboard from now on.
  void copy(const std::string& text);
  void copy(std::vector<Item> items);

  /// The present owner does not answer any more: there is no item list until the contents change.
  void silenceOwner() { ownerAnswers_ = false; }

  /// The platform refuses what the program writes; clearing works.
  void setRefusesWrites(bool refuses) { refusesWrites_ = refuses; }

  /// What is on the pasteboard.
  const std::vector<Item>& items() const { return items_; }
  /// The plain text of the first item that has some, as a paste takes it.
  std::optional<std::string> string() const;
  /// Counts the changes, clearing included.
  std::uint64_t changeCount() const { return changeCount_; }

 private:
  class ItemView;

  void changed();
  bool canWrite(const char* operation) const;

  World& world_;
  std::vector<Item> items_;
  bool ownedByProgram_ = false;
  bool ownerAnswers_ = true;
  bool refusesWrites_ = false;
  std::uint64_t changeCount_ = 0;
};

}  // namespace tavelo::simulated
