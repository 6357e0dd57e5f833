#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

// A small Objective-C run time for tests: just enough of the GNUstep 2.0 ABI to run the product's ARC code on
// Linux. Objects count their references exactly, weak references become nil, and a method that a fake class
// does not implement goes to the recorder. Unknown to it: `+load`, `+initialize`, protocols as objects,
// `@synchronized`.

namespace tavelo::fakes {

/// The layouts that the compiler emits.
struct Object;
struct Selector {
  const char* name;
  const char* types;
};
using Implementation = void (*)();
struct Method {
  Implementation implementation;
  Selector* selector;
  const char* types;
};
struct MethodList {
  MethodList* next;
  int count;
  std::size_t size;
  Method methods[1];
};
struct IvarList;
struct Class {
  Class* isa;
  Class* superclass;
  const char* name;
  long version;
  unsigned long info;
  /// Negative as emitted: the size of the class's own instance variables.
  long instanceSize;
  IvarList* ivars;
  MethodList* methods;
  void* table;
  void* unused[6];
  long abiVersion;
  void* properties;

  bool isMetaclass() const { return (info & 1) != 0; }
};

/// The class of an object, a class or a block; null for nil.
Class* classOf(const void* object);
/// The class of this name; stops the program if no fake implements it.
Class* classNamed(std::string_view name);
/// The method of `type` or a superclass; null if there is none.
Implementation implementationOf(Class* type, std::string_view selector);
bool isKindOf(const void* object, const Class* type);
bool isBlock(const void* object);

/// A new instance with one reference, zeroed and constructed.
void* makeInstance(Class* type);

/// The instances of all classes that exist now. Any thread.
std::size_t liveObjects();
/// How many exist of each class, for the message of a failed test.
std::string describeLiveObjects();

/// The function that answers calls of `selector` which no class implements. Set by the recorder.
extern Implementation (*unimplemented)(const Selector& selector);

}  // namespace tavelo::fakes

extern "C" {
void* objc_retain(void* object);
void objc_release(void* object);
void* objc_autoreleasePoolPush();
void objc_autoreleasePoolPop(void* pool);
[[noreturn]] void objc_exception_throw(void* exception);
}
