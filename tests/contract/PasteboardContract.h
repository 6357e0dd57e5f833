#pragma once

#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "platform/Pasteboard.h"
#include "tests/contract/MainQueueContract.h"

namespace tavelo::contract {

class PasteboardBackend {
 public:
  virtual ~PasteboardBackend() = default;
  virtual platform::Pasteboard& pasteboard() = 0;
  /// The person copies in another application.
  virtual void copy(const platform::PasteboardItemContent& item) = 0;
};

class PasteboardContract : public BackendTest<PasteboardBackend> {
 protected:
  platform::Pasteboard& pasteboard() { return backend().pasteboard(); }
  void copy(const platform::PasteboardItemContent& item) { backend().copy(item); }
  /// Everything on the pasteboard; fails the test if there is no item list.
  std::vector<platform::PasteboardItemContent> contents();
};

}  // namespace tavelo::contract
