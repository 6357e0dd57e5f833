#include "rehearsal/RehearsalServices.h"

#include "app/AppDelegateDefinition.h"

namespace tavelo {

template class AppDelegate<rehearsal::RehearsalServices>;

}  // namespace tavelo
