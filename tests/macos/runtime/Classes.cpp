// Classes, methods and messages.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>
#include <unordered_map>

#include <Block.h>
#include <Block_private.h>

#include "tests/macos/runtime/Runtime.h"

namespace tavelo::fakes {

struct IvarList {
  int count;
  std::size_t size;
  struct Ivar {
    const char* name;
    const char* type;
    int* offset;
    std::uint32_t size;
    std::uint32_t flags;
  } ivars[1];
};

Implementation (*unimplemented)(const Selector& selector) = nullptr;

namespace {

struct Category {
  const char* name;
  const char* className;
  MethodList* methods;
  MethodList* classMethods;
  void* rest[3];
};
struct Slot {
  void* owner = nullptr;
  void* cachedFor = nullptr;
  const char* types = nullptr;
  int version = 0;
  Implementation method = nullptr;
};
struct Image {
  std::uint64_t version;
  Selector *selectors, *selectorsEnd;
  Class **classes, **classesEnd;
  Class **classReferences, **classReferencesEnd;
  Category *categories, *categoriesEnd;
};

/// Filled before `main`, then only read.
struct Loaded {
  std::map<std::string, Class*, std::less<>> classes;
  std::map<const Class*, std::unordered_map<std::string_view, Implementation>> methods;
};
Loaded& loaded() {
  static auto* const instance = new Loaded;
  return *instance;
}

[[noreturn]] void stop(const char* what, std::string_view name) {
  std::fprintf(stderr, "fake run time: %s %.*s\n", what, static_cast<int>(name.size()), name.data());
  std::abort();
}

void addMethods(const Class* type, const MethodList* list) {
  for (; list != nullptr; list = list->next) {
    for (int i = 0; i < list->count; ++i)
      loaded().methods[type][list->methods[i].selector->name] = list->methods[i].implementation;
  }
}

/// Lays the instance variables of a class out behind those of its superclasses.
void resolve(Class* type) {
  constexpr unsigned long resolved = 1UL << 20;
  if ((type->info & resolved) != 0) return;
  type->info |= resolved;
  const long inherited =
      type->superclass != nullptr ? (resolve(type->superclass), type->superclass->instanceSize) : 0;
  for (int i = 0; type->ivars != nullptr && i < type->ivars->count; ++i)
    *type->ivars->ivars[i].offset += static_cast<int>(inherited);
  type->instanceSize = inherited - type->instanceSize;
}

void load(Class* type) {
  loaded().classes.emplace(type->name, type);
  addMethods(type, type->methods);
  addMethods(type->isa, type->isa->methods);
  // Class methods of a root class are also its instance methods.
  type->isa->superclass = type->superclass != nullptr ? type->superclass->isa : type;
}

const Slot* slotFor(void* receiver, const Selector* selector, Class* type) {
  static auto* const mutex = new std::mutex;
  static auto* const slots = new std::map<std::pair<Class*, std::string>, Slot>;
  static const Slot nil{.method = reinterpret_cast<Implementation>(+[]() -> void* { return nullptr; })};
  if (receiver == nullptr) return &nil;
  const std::lock_guard lock{*mutex};
  Slot& slot =
      (*slots)[{type, std::string(selector->name) + (selector->types != nullptr ? selector->types : "")}];
  if (slot.method == nullptr) slot.method = implementationOf(type, selector->name);
  if (slot.method == nullptr && unimplemented != nullptr && selector->types != nullptr)
    slot.method = unimplemented(*selector);
  if (slot.method == nullptr) stop("no method", std::string(type->name) + " " + selector->name);
  return &slot;
}

}  // namespace

bool isBlock(const void* object) {
  if (object == nullptr || (reinterpret_cast<std::uintptr_t>(object) & 7) != 0) return false;
  const void* const isa = *static_cast<void* const*>(object);
  return isa == _NSConcreteStackBlock || isa == _NSConcreteMallocBlock || isa == _NSConcreteGlobalBlock;
}

Class* classOf(const void* object) {
  if (object == nullptr) return nullptr;
  // The compiler packs short ASCII literals into the pointer.
  if ((reinterpret_cast<std::uintptr_t>(object) & 7) != 0) return classNamed("NSTinyString");
  if (isBlock(object)) return classNamed("NSBlock");
  return *static_cast<Class* const*>(object);
}

Class* classNamed(std::string_view name) {
  const auto found = loaded().classes.find(name);
  if (found == loaded().classes.end()) stop("no class", name);
  return found->second;
}

Implementation implementationOf(Class* type, std::string_view selector) {
  for (; type != nullptr; type = type->superclass) {
    const auto methods = loaded().methods.find(type);
    if (methods == loaded().methods.end()) continue;
    if (const auto found = methods->second.find(selector); found != methods->second.end())
      return found->second;
  }
  return nullptr;
}

bool isKindOf(const void* object, const Class* type) {
  for (const Class* each = classOf(object); each != nullptr; each = each->superclass) {
    if (each == type) return true;
  }
  return false;
}

extern "C" {

void __objc_load(Image* image) {
  for (Class** each = image->classes; each != image->classesEnd; ++each) {
    if (*each != nullptr) load(*each);
  }
  for (Class** each = image->classes; each != image->classesEnd; ++each) {
    if (*each != nullptr) resolve(*each);
  }
  for (Category* each = image->categories; each != image->categoriesEnd; ++each) {
    if (each->className == nullptr) continue;
    addMethods(classNamed(each->className), each->methods);
    addMethods(classNamed(each->className)->isa, each->classMethods);
  }
}

const Slot* objc_msg_lookup_sender(void** receiver, const Selector* selector, void*) {
  return slotFor(*receiver, selector, classOf(*receiver));
}

struct Super {
  void* receiver;
  Class* superclass;
};
Implementation objc_msg_lookup_super(const Super* to, const Selector* selector) {
  return slotFor(to->receiver, selector, to->superclass)->method;
}

}  // extern "C"

}  // namespace tavelo::fakes
