#include "platform/simulated/FieldBehaviour.h"

namespace tavelo::simulated {
namespace {

FieldBehaviour withWrites(WriteBehaviour writes) {
  return {.selectedText = writes, .value = writes, .selectedTextRange = writes};
}

}  // namespace

FieldBehaviour FieldBehaviour::valueOnly() { return {.selectedText = WriteBehaviour::refuses}; }

FieldBehaviour FieldBehaviour::pasteOnly() { return withWrites(WriteBehaviour::refuses); }

FieldBehaviour FieldBehaviour::terminal() {
  FieldBehaviour behaviour = pasteOnly();
  behaviour.showsValue = false;
  behaviour.rangeReading = RangeReading::absent;
  return behaviour;
}

FieldBehaviour FieldBehaviour::password() {
  return {.selectedText = WriteBehaviour::refuses,
          .value = WriteBehaviour::refuses,
          .showsValue = false,
          .isSecret = true};
}

FieldBehaviour FieldBehaviour::readOnly() {
  FieldBehaviour behaviour = pasteOnly();
  behaviour.takesPaste = false;
  return behaviour;
}

FieldBehaviour FieldBehaviour::falsePromise() { return withWrites(WriteBehaviour::pretends); }

}  // namespace tavelo::simulated
