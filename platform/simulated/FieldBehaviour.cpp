#include "platform/simulated/FieldBehaviour.h"

namespace tavelo::simulated::tempers {
namespace {

FieldBehaviour withWrites(WriteBehaviour writes) {
  FieldBehaviour behaviour;
  behaviour.selectedText = writes;
  behaviour.value = writes;
  behaviour.selectedTextRange = writes;
  return behaviour;
}

}  // namespace

FieldBehaviour ordinary() { return {}; }

FieldBehaviour valueOnly() {
  FieldBehaviour behaviour;
  behaviour.selectedText = WriteBehaviour::refuses;
  return behaviour;
}

FieldBehaviour readOnly() {
  FieldBehaviour behaviour = withWrites(WriteBehaviour::refuses);
  behaviour.takesPaste = false;
  return behaviour;
}

FieldBehaviour hidesValue() {
  FieldBehaviour behaviour = withWrites(WriteBehaviour::refuses);
  behaviour.valueReading = ValueReading::refused;
  behaviour.rangeReading = RangeReading::absent;
  return behaviour;
}

FieldBehaviour terminal() { return withWrites(WriteBehaviour::refuses); }

FieldBehaviour password() {
  FieldBehaviour behaviour;
  behaviour.valueReading = ValueReading::refused;
  behaviour.isSecret = true;
  return behaviour;
}

FieldBehaviour pretends() { return withWrites(WriteBehaviour::pretends); }

}  // namespace tavelo::simulated::tempers
