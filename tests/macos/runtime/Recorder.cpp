#include "tests/macos/runtime/Recorder.h"

#include <cctype>
#include <cstring>
#include <deque>
#include <map>
#include <mutex>
#include <string_view>
#include <utility>

#include <ffi.h>

#include "tests/macos/runtime/Runtime.h"

namespace tavelo::fakes {
namespace {

struct State {
  std::mutex mutex;
  std::vector<std::string> calls;
  std::map<std::string, std::function<void(Call&)>> answers;
  std::vector<std::function<void()>> atEnd;
};
State& state() {
  static auto* const instance = new State;
  return *instance;
}

/// A type that the compiler encoded, and its first letter.
struct Type {
  ffi_type* ffi;
  char letter;
};

struct Signature {
  std::string selector;
  Type result;
  std::vector<Type> arguments;
  std::vector<ffi_type*> ffiArguments;
  ffi_cif cif;
};

ffi_type* scalarType(char letter) {
  static const std::map<char, ffi_type*> types{
      {'v', &ffi_type_void},   {'c', &ffi_type_sint8},  {'C', &ffi_type_uint8},  {'B', &ffi_type_uint8},
      {'s', &ffi_type_sint16}, {'S', &ffi_type_uint16}, {'i', &ffi_type_sint32}, {'I', &ffi_type_uint32},
      {'l', &ffi_type_sint64}, {'q', &ffi_type_sint64}, {'L', &ffi_type_uint64}, {'Q', &ffi_type_uint64},
      {'f', &ffi_type_float},  {'d', &ffi_type_double}};
  const auto found = types.find(letter);
  return found == types.end() ? &ffi_type_pointer : found->second;
}

Type takeType(std::string_view& text);

ffi_type* takeStruct(std::string_view& text) {
  static auto* const structs = new std::deque<std::pair<ffi_type, std::vector<ffi_type*>>>;
  auto& [type, members] = structs->emplace_back();
  text.remove_prefix(text.find('=') + 1);
  while (text.front() != '}') members.push_back(takeType(text).ffi);
  members.push_back(nullptr);
  text.remove_prefix(1);
  type = {.size = 0, .alignment = 0, .type = FFI_TYPE_STRUCT, .elements = members.data()};
  return &type;
}

/// Reads a type and the offset behind it.
Type takeType(std::string_view& text) {
  while (std::strchr("rnNoORVA^", text.front()) != nullptr) {
    const bool isPointer = text.front() == '^';
    text.remove_prefix(1);
    if (!isPointer) continue;
    takeType(text);
    return {&ffi_type_pointer, '^'};
  }
  const char letter = text.front();
  Type type{nullptr, letter};
  if (letter == '{') {
    type.ffi = takeStruct(text);
  } else {
    text.remove_prefix(1);
    type.ffi = scalarType(letter);
    if (letter == '@' && !text.empty() && text.front() == '?') text.remove_prefix(1);
    if (letter == '@' && !text.empty() && text.front() == '"') text.remove_prefix(text.find('"', 1) + 1);
  }
  while (!text.empty() && std::isdigit(static_cast<unsigned char>(text.front())) != 0) text.remove_prefix(1);
  return type;
}

void describe(const Type& type, const void* value, std::ostream& out) {
  switch (type.letter) {
    case '@':
      out << fakes::describe(*static_cast<void* const*>(value));
      return;
    case 'f':
      out << *static_cast<const float*>(value);
      return;
    case 'd':
      out << *static_cast<const double*>(value);
      return;
    case '#':
      out << (*static_cast<Class* const*>(value))->name;
      return;
    case '{': {
      // All structs of the declarations hold numbers of one kind.
      const ffi_type* first = type.ffi->elements[0];
      while (first->type == FFI_TYPE_STRUCT) first = first->elements[0];
      for (std::size_t i = 0; i < type.ffi->size / 8; ++i) {
        out << (i == 0 ? "{" : ", ");
        if (first->type == FFI_TYPE_DOUBLE)
          out << static_cast<const double*>(value)[i];
        else
          out << static_cast<const std::int64_t*>(value)[i];
      }
      out << "}";
      return;
    }
    case '*':
    case '^':
    case ':':
      out << "<pointer>";
      return;
    case 'i':
      out << *static_cast<const std::int32_t*>(value);
      return;
    default: {
      std::int64_t number = 0;
      std::memcpy(&number, value, type.ffi->size);
      out << number;
    }
  }
}

std::string describe(const Signature& signature, void* const* arguments) {
  void* const receiver = *static_cast<void**>(arguments[0]);
  const bool isClass = classOf(receiver)->isMetaclass();
  std::ostringstream text;
  text << (isClass ? "+[" : "-[") << (isClass ? static_cast<Class*>(receiver) : classOf(receiver))->name
       << " ";
  std::string_view rest = signature.selector;
  for (std::size_t i = 2; i < signature.arguments.size(); ++i) {
    const auto end = rest.find(':') + 1;
    text << (i == 2 ? "" : " ") << rest.substr(0, end);
    describe(signature.arguments[i], arguments[i], text);
    rest.remove_prefix(end);
  }
  text << rest << "]";
  return text.str();
}

bool belongsTo(std::string_view selector, std::string_view family) {
  return selector.starts_with(family) &&
         (selector.size() == family.size() ||
          std::islower(static_cast<unsigned char>(selector[family.size()])) == 0);
}

void call(ffi_cif*, void* result, void** arguments, void* data) {
  const auto& signature = *static_cast<const Signature*>(data);
  void* const receiver = *static_cast<void**>(arguments[0]);
  if (signature.result.letter != 'v')
    std::memset(result, 0, std::max<std::size_t>(8, signature.result.ffi->size));
  const bool isInitialiser = belongsTo(signature.selector, "init");
  if (isInitialiser) *static_cast<void**>(result) = receiver;
  Call made{describe(signature, arguments), receiver,
            std::vector<void*>(arguments + 2, arguments + signature.arguments.size()), result};
  record(made.text);
  std::function<void(Call&)> function;
  {
    const std::lock_guard lock{state().mutex};
    if (const auto found = state().answers.find(signature.selector); found != state().answers.end())
      function = found->second;
  }
  if (function) function(made);
  // What ARC expects to own.
  void* const given = signature.result.letter == '@' ? *static_cast<void**>(result) : nullptr;
  for (const char* family : {"new", "copy", "mutableCopy"}) {
    if (belongsTo(signature.selector, family)) objc_retain(given);
  }
  if (isInitialiser && given != receiver) {
    objc_retain(given);
    objc_release(receiver);
  }
}

Implementation makeImplementation(const Selector& selector) {
  static auto* const signatures = new std::deque<Signature>;
  auto& signature = signatures->emplace_back();
  signature.selector = selector.name;
  std::string_view types = selector.types;
  signature.result = takeType(types);
  while (!types.empty()) {
    signature.arguments.push_back(takeType(types));
    signature.ffiArguments.push_back(signature.arguments.back().ffi);
  }
  void* code = nullptr;
  auto* const closure = static_cast<ffi_closure*>(ffi_closure_alloc(sizeof(ffi_closure), &code));
  ffi_prep_cif(&signature.cif, FFI_DEFAULT_ABI, static_cast<unsigned>(signature.ffiArguments.size()),
               signature.result.ffi, signature.ffiArguments.data());
  ffi_prep_closure_loc(closure, &signature.cif, call, &signature, code);
  return reinterpret_cast<Implementation>(code);
}

const bool isInstalled = (unimplemented = makeImplementation, true);

}  // namespace

void answer(const std::string& selector, std::function<void(Call&)> function) {
  const std::lock_guard lock{state().mutex};
  state().answers[selector] = std::move(function);
}

std::vector<std::string> takeCalls() {
  const std::lock_guard lock{state().mutex};
  return std::exchange(state().calls, {});
}

void record(std::string text) {
  const std::lock_guard lock{state().mutex};
  state().calls.push_back(std::move(text));
}

std::string describe(const void* object) {
  if (object == nullptr) return "nil";
  if (isBlock(object)) return "<block>";
  if (isKindOf(object, classNamed("NSString"))) {
    const auto text = implementationOf(classOf(object), "UTF8String");
    return "\"" + std::string(reinterpret_cast<const char* (*)(const void*, void*)>(text)(object, nullptr)) +
           "\"";
  }
  const Class* const type = classOf(object);
  return std::string("<") + (type->isMetaclass() ? static_cast<const Class*>(object) : type)->name + ">";
}

void atEndOfTest(std::function<void()> function) {
  const std::lock_guard lock{state().mutex};
  state().atEnd.push_back(std::move(function));
}

void resetRecorder() {
  // Ended outside the lock: they may hold objects whose end is recorded.
  std::map<std::string, std::function<void(Call&)>> answers;
  std::vector<std::function<void()>> atEnd;
  {
    const std::lock_guard lock{state().mutex};
    answers.swap(state().answers);
    atEnd.swap(state().atEnd);
    state().calls.clear();
  }
  for (const auto& each : atEnd) each();
}

}  // namespace tavelo::fakes
