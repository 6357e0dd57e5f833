#include "app/ApplicationServices.h"

#include "app/AppDelegateDefinition.h"

namespace tavelo {

static_assert(ReviewWindowContract<ReviewWindowController>);
static_assert(FloatingStatusContract<FloatingStatusWindowController>);
static_assert(StatusMenuContract<StatusMenuController>);

template class AppDelegate<ApplicationServices>;

}  // namespace tavelo
