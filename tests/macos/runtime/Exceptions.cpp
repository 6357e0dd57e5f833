// Objective-C exceptions as C++ exceptions that hold an object.
#include <cstddef>
#include <typeinfo>

#include <cxxabi.h>
#include <unwind.h>

#include "tests/macos/runtime/Runtime.h"

extern "C" {
extern std::type_info __objc_id_type_info;
_Unwind_Reason_Code __gxx_personality_v0(int, _Unwind_Action, std::uint64_t, _Unwind_Exception*,
                                         _Unwind_Context*);
_Unwind_Reason_Code __gnustep_objcxx_personality_v0(int version, _Unwind_Action actions, std::uint64_t kind,
                                                    _Unwind_Exception* exception, _Unwind_Context* context) {
  return __gxx_personality_v0(version, actions, kind, exception, context);
}
}

// The compiler refers to these classes by their names.
namespace gnustep::libobjc {

class __objc_type_info : public std::type_info {
 public:
  explicit __objc_type_info(const char* name) : std::type_info(name) {}
  ~__objc_type_info() override = default;
  bool __do_catch(const std::type_info* thrown, void** object, unsigned) const override {
    if (thrown != &__objc_id_type_info) return false;
    if (!accepts(**reinterpret_cast<void***>(object))) return false;
    *object = **reinterpret_cast<void***>(object);
    return true;
  }

 private:
  virtual bool accepts(void*) const { return true; }
};

class __objc_class_type_info : public __objc_type_info {
 public:
  explicit __objc_class_type_info(const char* name) : __objc_type_info(name) {}
  ~__objc_class_type_info() override;

 private:
  bool accepts(void* object) const override {
    return tavelo::fakes::isKindOf(object, tavelo::fakes::classNamed(name()));
  }
};
__objc_class_type_info::~__objc_class_type_info() = default;

}  // namespace gnustep::libobjc

extern "C" {
gnustep::libobjc::__objc_type_info idTypeInfo asm("__objc_id_type_info"){"id"};

void objc_exception_throw(void* exception) {
  auto* const thrown = static_cast<void**>(abi::__cxa_allocate_exception(sizeof(void*)));
  *thrown = objc_retain(exception);
  abi::__cxa_throw(thrown, &__objc_id_type_info,
                   [](void* object) { objc_release(*static_cast<void**>(object)); });
}
}
