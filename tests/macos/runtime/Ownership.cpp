// Reference counts, weak references, autorelease pools, properties: what ARC calls.
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>
#include <set>
#include <vector>

#include <Block.h>

#include "tests/macos/runtime/Runtime.h"

namespace tavelo::fakes {
namespace {

/// Stands before each object.
struct alignas(16) Header {
  std::atomic<long> references;
};

struct Objects {
  std::mutex mutex;
  std::set<void*> live;
  /// The weak references to each object.
  std::map<void*, std::set<void**>> weak;
};
Objects& objects() {
  static auto* const instance = new Objects;
  return *instance;
}

Header& headerOf(void* object) { return static_cast<Header*>(object)[-1]; }

/// Constants and classes are not counted.
bool isCounted(void* object) {
  if (object == nullptr || (reinterpret_cast<std::uintptr_t>(object) & 7) != 0) return false;
  const Class* const type = classOf(object);
  return !type->isMetaclass() && std::strcmp(type->name, "NSConstantString") != 0;
}

void construct(Class* type, void* object, bool up) {
  if (type == nullptr) return;
  if (up) construct(type->superclass, object, true);
  const auto own = implementationOf(type, up ? ".cxx_construct" : ".cxx_destruct");
  const auto inherited = type->superclass != nullptr
                             ? implementationOf(type->superclass, up ? ".cxx_construct" : ".cxx_destruct")
                             : nullptr;
  if (own != nullptr && own != inherited) reinterpret_cast<void (*)(void*, void*)>(own)(object, nullptr);
  if (!up) construct(type->superclass, object, false);
}

void* assigned(void** slot, void* value) {
  auto& [mutex, live, weak] = objects();
  if (*slot != nullptr && isCounted(*slot)) weak[*slot].erase(slot);
  if (value != nullptr && isCounted(value)) {
    if (headerOf(value).references <= 0) value = nullptr;
    if (value != nullptr) weak[value].insert(slot);
  }
  return *slot = value;
}

thread_local std::vector<void*> pool;

}  // namespace

void* makeInstance(Class* type) {
  void* const memory = std::calloc(1, sizeof(Header) + static_cast<std::size_t>(type->instanceSize));
  void* const object = static_cast<Header*>(memory) + 1;
  headerOf(object).references = 1;
  *static_cast<Class**>(object) = type;
  {
    const std::lock_guard lock{objects().mutex};
    objects().live.insert(object);
  }
  construct(type, object, true);
  return object;
}

std::size_t liveObjects() {
  const std::lock_guard lock{objects().mutex};
  return objects().live.size();
}

std::string describeLiveObjects() {
  const std::lock_guard lock{objects().mutex};
  std::map<std::string, int> counts;
  for (void* object : objects().live) ++counts[classOf(object)->name];
  std::string text;
  for (const auto& [name, count] : counts) text += name + " " + std::to_string(count) + "\n";
  return text;
}

/// Ends an object whose last reference is gone; the root class's `dealloc`.
extern "C" void fakeDealloc(void* object) {
  construct(classOf(object), object, false);
  {
    const std::lock_guard lock{objects().mutex};
    objects().live.erase(object);
  }
  std::free(&headerOf(object));
}

extern "C" {

void* objc_retain(void* object) {
  if (isBlock(object)) return _Block_copy(object);
  if (isCounted(object)) ++headerOf(object).references;
  return object;
}

void objc_release(void* object) {
  if (isBlock(object)) return _Block_release(object);
  if (!isCounted(object) || --headerOf(object).references != 0) return;
  {
    auto& [mutex, live, weak] = objects();
    const std::lock_guard lock{mutex};
    if (const auto found = weak.find(object); found != weak.end()) {
      for (void** slot : found->second) *slot = nullptr;
      weak.erase(found);
    }
  }
  reinterpret_cast<void (*)(void*, const Selector*)>(implementationOf(classOf(object), "dealloc"))(object,
                                                                                                   nullptr);
}

void* objc_autorelease(void* object) {
  if (object != nullptr) pool.push_back(object);
  return object;
}

void* objc_retainBlock(void* block) { return _Block_copy(block); }
void* objc_autoreleaseReturnValue(void* object) { return objc_autorelease(object); }
void* objc_retainAutorelease(void* object) { return objc_autorelease(objc_retain(object)); }
void* objc_retainAutoreleaseReturnValue(void* object) { return objc_retainAutorelease(object); }
void* objc_retainAutoreleasedReturnValue(void* object) { return objc_retain(object); }

void objc_storeStrong(void** slot, void* value) {
  void* const old = *slot;
  *slot = objc_retain(value);
  objc_release(old);
}

void* objc_autoreleasePoolPush() { return reinterpret_cast<void*>(pool.size() + 1); }

void objc_autoreleasePoolPop(void* mark) {
  const auto size = reinterpret_cast<std::size_t>(mark) - 1;
  while (pool.size() > size) {
    void* const object = pool.back();
    pool.pop_back();
    objc_release(object);
  }
}

void* objc_storeWeak(void** slot, void* value) {
  const std::lock_guard lock{objects().mutex};
  return assigned(slot, value);
}
void* objc_initWeak(void** slot, void* value) {
  *slot = nullptr;
  return objc_storeWeak(slot, value);
}
void objc_destroyWeak(void** slot) { objc_storeWeak(slot, nullptr); }
void* objc_loadWeakRetained(void** slot) {
  const std::lock_guard lock{objects().mutex};
  return *slot != nullptr && (!isCounted(*slot) || headerOf(*slot).references > 0) ? objc_retain(*slot)
                                                                                   : nullptr;
}
void objc_copyWeak(void** to, void** from) {
  const std::lock_guard lock{objects().mutex};
  *to = nullptr;
  assigned(to, *from);
}
void objc_moveWeak(void** to, void** from) {
  objc_copyWeak(to, from);
  objc_destroyWeak(from);
}

void* objc_getProperty(void* self, void*, std::ptrdiff_t offset, bool) {
  return objc_retainAutorelease(*reinterpret_cast<void**>(static_cast<char*>(self) + offset));
}
void objc_setProperty_atomic(void* self, void*, void* value, std::ptrdiff_t offset) {
  objc_storeStrong(reinterpret_cast<void**>(static_cast<char*>(self) + offset), value);
}
void objc_setProperty_nonatomic_copy(void* self, void*, void* value, std::ptrdiff_t offset) {
  const auto copy = isBlock(value) || value == nullptr ? nullptr : implementationOf(classOf(value), "copy");
  void* const kept =
      copy == nullptr ? objc_retain(value) : reinterpret_cast<void* (*)(void*, void*)>(copy)(value, nullptr);
  objc_setProperty_atomic(self, nullptr, kept, offset);
  objc_release(kept);
}
void objc_setProperty_atomic_copy(void* self, void* selector, void* value, std::ptrdiff_t offset) {
  objc_setProperty_nonatomic_copy(self, selector, value, offset);
}
void objc_getPropertyStruct(void* to, const void* from, std::ptrdiff_t size, bool, bool) {
  std::memcpy(to, from, static_cast<std::size_t>(size));
}
void objc_setPropertyStruct(void* to, const void* from, std::ptrdiff_t size, bool, bool) {
  std::memcpy(to, from, static_cast<std::size_t>(size));
}
void objc_enumerationMutation(void*) { std::abort(); }

}  // extern "C"

}  // namespace tavelo::fakes
